#include "ui/preferences/section_card.h"

#include <string>
#include <utility>

namespace hushpane {

using namespace declarative;

namespace {

constexpr Shape outline = RoundedRectangle{10};
constexpr platform::Font titleFont{.size = 10, .weight = platform::FontWeight::semibold, .tracking = 0.8};

}  // namespace

Element sectionCard(std::string_view title, std::vector<Element> rows) {
  const Element card = verticalStack({.alignment = HorizontalAlignment::leading, .spacing = 8}, std::move(rows))
                           .padding(12)
                           .frame({.maxWidth = infinity, .alignment = alignment::leading})
                           .background(fill(outline, primary.opacity(0.04)));
  return verticalStack({.alignment = HorizontalAlignment::leading, .spacing = 10},
                       {text(std::string(title), titleFont).foreground(secondary), card});
}

}  // namespace hushpane
