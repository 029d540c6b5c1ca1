#include "ui/welcome/welcome_view.h"

#include "ui/controls/prominent_button.h"
#include "ui/localized.h"
#include "ui/welcome/welcome_logo_view.h"

namespace hushpane {

using namespace declarative;
using platform::FontWeight;

namespace {

constexpr double width = 300, taglineWidth = 240;  // points

constexpr WelcomeLogoView logo{.purpleTop = fixed({0.76, 0.58, 0.86, 1}),
                               .purpleBottom = fixed({0.65, 0.47, 0.76, 1}),
                               .purpleBorder = fixed({0.54, 0.38, 0.68, 1})};

Element centred(LocalizationKey key, platform::Font font, double lineSpacing = 0) {
  return text(localized(key), {.font = font, .alignment = platform::TextAlignment::center, .lineSpacing = lineSpacing});
}

Element tagline() {
  return verticalStack({}, {centred("The calm between windows."_key, {.size = 15, .weight = FontWeight::medium}),
                            centred("Quieter screens, sharper focus."_key, {.size = 12}, 2)
                                .foreground(secondary)
                                .frame({.maxWidth = taglineWidth})
                                .fixedSize(false, true)});
}

}  // namespace

Element WelcomeView::body(Context&) const {
  const Element title = centred("Hushpane"_key, {.size = 24, .weight = FontWeight::semibold})
                            .accessibility({.role = AccessibilityRole::header});
  const ProminentButton start{localized("Get started"_key), onContinue, voltGreen, 110};
  return verticalStack({.spacing = 18}, {Element(logo).padding({.top = 6, .bottom = 6}), title, tagline(),
                                         Element(start).padding({.top = 8})})
      .padding({.top = 30, .leading = 32, .bottom = 30, .trailing = 32})
      .frame({.width = width});
}

}  // namespace hushpane
