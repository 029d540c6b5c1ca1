#include "tests/managers/managed_desktop.h"

namespace hushpane::x11_tests {
namespace {

class FocusUnder : public ManagedDesktop {
 protected:
  void switchesBy(const std::function<void(const Terminal&)>& bringForward);
  void menusAndTooltips();
  void dialogs();
  void docks();
  void fullScreen();
  void maximised();
  void minimised();
  void lifted();

  std::unique_ptr<ClientWindow> openApplication(Rect bounds = {500, 450, 300, 200}) const {
    return openFront({bounds, brown});
  }
  // On the left, without its frame.
  std::vector<Spot> surroundings() const { return {left(), spotOf(*green_)}; }
};
HUSHPANE_RUN_UNDER_ALL_WINDOW_MANAGERS(FocusUnder);

void FocusUnder::switchesBy(const std::function<void(const Terminal&)>& bringForward) {
  for (const Terminal* next : {green_.get(), blue_.get(), green_.get(), red_.get()}) {
    bringForward(*next);
    EXPECT_TRUE(seesFront(*next));
    if (next == blue_.get()) picture();
  }
}

void FocusUnder::menusAndTooltips() {
  const auto application = openApplication();
  ASSERT_TRUE(sees({spotOf(*application)}, surroundings()));
  const Rect owner = application->bounds();
  const Spot ownerSpot{{owner.x + 15, owner.y + 15}, brown};
  ScreenWatch watch(display(), {ownerSpot.point, leftSpot});
  for (const char* kind : {"POPUP_MENU", "TOOLTIP"}) {
    const auto popup = openWindow({{owner.x + 60, owner.y + 60, owner.width, owner.height},
                                   white,
                                   std::string("_NET_WM_WINDOW_TYPE_") + kind,
                                   true,
                                   255,
                                   application->window()});
    EXPECT_TRUE(sees({spotOf(*popup), ownerSpot}, surroundings())) << kind;
    EXPECT_TRUE(keeps(popup->spot(), white, 250ms)) << kind;
    picture();
  }
  int wrongOwner = 0, wrongBackground = 0;
  for (const auto& look : watch.stop()) {
    wrongOwner += !isNear(look.pixels[0], brown, 3);
    wrongBackground += !isNear(look.pixels[1], dimmed(left().color, balanced), 3);
  }
  EXPECT_EQ(wrongOwner, 0) << "looks that show the owner of a menu wrong";
  EXPECT_EQ(wrongBackground, 0) << "looks";
}

// Whether the dialog's owner is covered is left to the window manager's order.
void FocusUnder::dialogs() {
  const auto application = openApplication();
  {
    const auto dialog =
        openFront({{600, 500, 250, 220}, white, "_NET_WM_WINDOW_TYPE_DIALOG", false, 255, application->window()});
    EXPECT_TRUE(sees({spotOf(*dialog)}, surroundings()));
    picture();
  }
  activate(application->window());
  EXPECT_TRUE(sees({spotOf(*application)}, surroundings()));
}

void FocusUnder::docks() {
  const auto dock = openWindow({{0, 1050, 1120, 30}, white, "_NET_WM_WINDOW_TYPE_DOCK"});
  EXPECT_TRUE(sees({spotOf(*dock), spotOf(*red_)}, surroundings()));
  activate(green_->window());
  EXPECT_TRUE(sees({spotOf(*dock), spotOf(*green_)}, {left(), spotOf(*red_)}));
  picture();
  activate(red_->window());
}

// A window manager may know one large monitor only.
void FocusUnder::fullScreen() {
  const auto video = openApplication({1300, 600, 300, 200});
  setState(video->window(), true, "FULLSCREEN");
  EXPECT_TRUE(waitUntil([&] { return video->bounds().intersection(rightMonitor).width == rightMonitor.width; }, 2s));
  const bool fillsAll = video->bounds().width > rightMonitor.width;
  const Spot corner{{1900, 1060}, brown};
  EXPECT_TRUE(sees({spotOf(*video), corner}, fillsAll ? std::vector<Spot>{} : surroundings()));
  wait(300ms);  // what the tracking does is done after a few ticks
  EXPECT_TRUE(sees({spotOf(*video), corner}, fillsAll ? std::vector<Spot>{} : surroundings()));
  picture();
  setState(video->window(), false, "FULLSCREEN");
  EXPECT_TRUE(waitUntil([&] { return video->bounds().width < rightMonitor.width; }, 2s));
  EXPECT_TRUE(sees({spotOf(*video)}, surroundings()));
}

void FocusUnder::maximised() {
  const auto window = openApplication({1300, 600, 300, 200});
  setState(window->window(), true, "MAXIMIZED_VERT", "MAXIMIZED_HORZ");
  EXPECT_TRUE(waitUntil([&] { return window->bounds().width > 700; }, 2s));
  wait(300ms);
  EXPECT_TRUE(sees({spotOf(*window)}, window->bounds().width > 1000 ? std::vector<Spot>{} : surroundings()));
  picture();
  setState(window->window(), false, "MAXIMIZED_VERT", "MAXIMIZED_HORZ");
  EXPECT_TRUE(waitUntil([&] { return window->bounds().width < 700; }, 2s));
  EXPECT_TRUE(sees({spotOf(*window)}, surroundings()));
}

// Whichever window comes to the front then, if any.
void FocusUnder::minimised() {
  minimise(red_->window());
  ASSERT_TRUE(sees({}, {{red_->spot(), left().color}, left()}));
  wait(200ms);
  for (const Terminal* terminal : {green_.get(), blue_.get()}) {
    if (x().activeWindow() != terminal->window()) continue;
    EXPECT_TRUE(sees({spotOf(*terminal)}, {left(), right()}));
  }
  picture();
  activate(red_->window());
  EXPECT_TRUE(seesFront(*red_));
}

void FocusUnder::lifted() {
  const std::vector<Spot> all{spotOf(*red_), spotOf(*green_), spotOf(*blue_), left(), right()};
  keyboard("keydown", "alt");
  EXPECT_TRUE(sees(all, {}));
  EXPECT_TRUE(looksUntouched());
  picture();
  keyboard("keyup", "alt");
  EXPECT_TRUE(seesFront(*red_));
  click(green_->spot());
  EXPECT_TRUE(seesFront(*green_)) << "a click after the cover was lifted";
  activate(red_->window());
  EXPECT_TRUE(seesFront(*red_));
}

TEST_P(FocusUnder, EveryWindowManager) {
  start("focus");
  runCase("focus", [this] {
    EXPECT_TRUE(isCoveredBut({red_.get()}));
    picture();
  });
  const auto all = covers();
  const auto attributes =
      all.empty()
          ? own<xcb_get_window_attributes_reply_t>(nullptr)
          : own(xcb_get_window_attributes_reply(x().get(), xcb_get_window_attributes(x().get(), all.front()), nullptr));
  RecordProperty("strategy", !attributes ? "none" : attributes->override_redirect ? "server order" : "managed");
  runCase("switch by click", [this] { switchesBy([this](const Terminal& next) { click(next.spot()); }); });
  runCase("switch by request", [this] { switchesBy([this](const Terminal& next) { activate(next.window()); }); });
  runCase("lifted like off", [this] { lifted(); });
  runCase("menus and tooltips", [this] { menusAndTooltips(); });
  runCase("dialogs", [this] { dialogs(); });
  activate(red_->window());
  runCase("docks", [this] { docks(); });
  runCase("full screen", [this] { fullScreen(); });
  runCase("maximised", [this] { maximised(); });
  activate(red_->window());
  runCase("focus, second workspace", [this] {
    toWorkspace(1);
    EXPECT_TRUE(sees({}, {left(), {red_->spot(), left().color}}));
    picture();
    toWorkspace(0);
    activate(red_->window());
    EXPECT_TRUE(seesFront(*red_));
  });
  runCase("focus, minimised windows", [this] { minimised(); });
  runCase("focus, show desktop", [this] {
    showDesktop(true);
    EXPECT_TRUE(sees({}, {left(), {red_->spot(), left().color}}));
    picture();
    showDesktop(false);
    activate(red_->window());
    EXPECT_TRUE(seesFront(*red_));
  });
}

}  // namespace
}  // namespace hushpane::x11_tests
