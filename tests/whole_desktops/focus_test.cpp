#include "tests/whole_desktops/whole_desktop.h"

namespace hushpane::x11_tests {
namespace {

class FocusIn : public WholeDesktop {
 protected:
  void switchesBy(const std::function<void(const Application&)>& bringForward);
};
HUSHPANE_RUN_IN_ALL_DESKTOPS(FocusIn);

void FocusIn::switchesBy(const std::function<void(const Application&)>& bringForward) {
  const Applications& open = applications();
  for (const Application* next : {&open.gtkEditor, &open.qtEditor, &open.files, &open.terminal}) {
    bringForward(*next);
    EXPECT_TRUE(waitUntil([&] { return x().activeWindow() == next->window(); }, 5s)) << next->name() << " stays back";
    EXPECT_TRUE(seesClear({next}));
  }
}

TEST_P(FocusIn, EveryDesktop) {
  start();
  use("focus");
  runCase("focus", [this] {
    EXPECT_TRUE(seesClear({&applications().terminal}));
    EXPECT_TRUE(barsAreClear());
    for (const xcb_window_t cover : covers()) {
      const auto states = x().numbers(cover, "_NET_WM_STATE");
      EXPECT_EQ(std::count(states.begin(), states.end(), x().atom("_NET_WM_STATE_FULLSCREEN")), 0)
          << "the cover counts as a full-screen window";
    }
  });
  runCase("switch by click",
          [this] { switchesBy([this](const Application& next) { session().click(center(next.inside())); }); });
  runCase("switch by request", [this] { switchesBy([this](const Application& next) { activate(next); }); });
}

}  // namespace
}  // namespace hushpane::x11_tests
