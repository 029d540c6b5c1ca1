#include "ui/controls/pull_down_list.h"

#include <string>
#include <utility>

namespace hushpane {

namespace {

using namespace declarative;

// Points.
constexpr double rowHeight = 22, margin = 5;
constexpr double checkWidth = 16, rowEnd = 10;
constexpr platform::Font titleFont{.size = 13};
constexpr platform::Font checkFont{.size = 10, .weight = platform::FontWeight::bold};

struct Row {
  std::string title;
  bool isChecked = false;
  std::function<void()> choose;

  Element body(Context& context) const {
    const auto isHighlighted = context.state("isHighlighted", false);
    const Element check = isChecked ? symbol({.name = "checkmark", .font = checkFont}) : spacer(0);
    const Element label =
        horizontalStack({.spacing = 0}, {check.frame({.width = checkWidth}), text(title, titleFont).fixedSize()})
            .padding({.leading = 4, .trailing = rowEnd})
            .frame({.height = rowHeight, .maxWidth = infinity, .alignment = alignment::leading})
            .foreground(isHighlighted.get() ? white : primary)
            .background(fill(RoundedRectangle{5}, isHighlighted.get() ? context.environment().accent : clear))
            .contentShape(Rectangle{});
    return button(choose, label)
        .onFocus([isHighlighted](bool isFocused) { isHighlighted.set(isFocused); })
        .accessibility({.role = AccessibilityRole::button, .label = title, .isOn = isChecked});
  }
};

}  // namespace

Element PullDownList::body(Context&) const {
  std::vector<Element> rows;
  for (std::size_t index = 0; index < entries.size(); ++index) {
    const auto& entry = entries[index];
    if (entry.isDivider)
      rows.push_back(divider().padding({margin, rowEnd, margin, rowEnd}));
    else
      rows.push_back(Row{entry.title, entry.isChecked, [choose = choose, index] { choose(index); }});
  }
  return verticalStack({.alignment = HorizontalAlignment::leading, .spacing = 0, .fillsWidth = true}, std::move(rows))
      .focusGroup(FocusGroupStyle::menu)
      .padding(margin)
      .scrolling();
}

}  // namespace hushpane
