#include "ui/welcome/welcome_logo_view.h"

namespace hushpane {

using namespace declarative;

namespace {

constexpr double side = 100, paneSide = 74, shift = 10;  // points
constexpr Shape pane = RoundedRectangle{18};
constexpr double breathDelay = 0.6;  // seconds
constexpr Animation breath = repeatingForever(easeInOut(2.4));

Element backPane(bool isBlurred) {
  return fill(pane, white)
      .frame({.width = paneSide, .height = paneSide})
      .shadow(opaqueBlack.opacity(0.1), 5, {0, 2})
      .offset(-shift, -shift)
      .blur(isBlurred ? 2.2 : 0.3);
}

Element frontPane(const WelcomeLogoView& logo) {
  const AdaptiveGradient gradient{logo.purpleTop, logo.purpleBottom, unit::topLeading, unit::bottomTrailing};
  return fill(pane, gradient)
      .frame({.width = paneSide, .height = paneSide})
      .overlay(stroke(pane, logo.purpleBorder.opacity(0.35), 1, 0.5))
      .offset(shift, shift);
}

// A logo looks the same to everybody.
void keepsItsDirection(Environment& environment) {
  environment.direction = platform::LayoutDirection::leftToRight;
}

}  // namespace

Element WelcomeLogoView::body(Context& context) const {
  const auto pulsing = context.state("pulsing", false);
  const auto breathe = [pulsing, updates = context.updates()] {
    updates.after(breathDelay, [pulsing, updates] { updates.withAnimation(breath, [&] { pulsing.set(true); }); });
  };
  return overlaidStack(alignment::center, {backPane(pulsing.get()), frontPane(*this)})
      .frame({.width = side, .height = side})
      .environment(keepsItsDirection)
      .onAppear(breathe)
      .accessibility({.role = AccessibilityRole::image, .isHidden = true});
}

}  // namespace hushpane
