#include "app/panel_chrome.h"

namespace hushpane {

using namespace declarative;

namespace {
// A line that parts the panel from what lies around it; in the dark it has to be light.
constexpr AdaptiveColor edge{{0, 0, 0, 0.16}, {1, 1, 1, 0.14}};
}  // namespace

Element PanelChrome::around(const Element& page) const {
  const Shape shape = outline();
  const Element ground = fill(shape, windowBackground).shadow(shadow.color, shadow.radius, shadow.offset);
  return page.clip(shape).background(ground).overlay(stroke(shape, edge, 1, 0.5)).padding(margin);
}

}  // namespace hushpane
