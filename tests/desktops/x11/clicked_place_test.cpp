#include "desktops/x11/clicked_place.h"

#include <gtest/gtest.h>

#include "desktops/sim/sim_platform.h"

namespace hushpane::x11::tests {
namespace {

using platform::Point;

// Two displays side by side; the left one has bars at its top and bottom.
TEST(ClickedPlace, IsTheHostsUnlessThePointerIsSurelyAtTheIcon) {
  sim::Storage storage;
  sim::SimPlatform desktop(storage, {{{0, 0, 1000, 800}, 1, "Left", 1}, {{1000, 0, 800, 800}, 2, "Right", 1}});
  desktop.screens().setBars(30, 40);
  const Point onDesktop{500, 400}, inTopBar{900, 10}, inBottomBar{900, 780}, onRightDisplay{1400, 5};
  const struct {
    const char* what;
    Point told, pointer, place;
  } cases[]{
      {"the middle of the icon", {890, 15}, inTopBar, {890, 15}},
      {"the icon, clicked by keys", {890, 15}, onDesktop, {890, 15}},
      {"keys, with the pointer on a display without a bar", {890, 15}, onRightDisplay, {890, 15}},
      {"a place within the bar", {24, 0}, inBottomBar, inBottomBar},
      {"the same where it is 0", {0, 3}, inTopBar, inTopBar},
      {"points for pixels", {450, 390}, inBottomBar, inBottomBar},
      {"a place on no display", {-5000, 20}, onDesktop, onDesktop},
      {"a place below all displays", {900, 4000}, inTopBar, inTopBar},
  };
  for (const auto& [what, told, pointer, place] : cases)
    EXPECT_EQ(clickedPlace(told, pointer, desktop.screens()), place) << what;
}

}  // namespace
}  // namespace hushpane::x11::tests
