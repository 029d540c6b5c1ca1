#include "tests/managers/managed_desktop.h"

namespace hushpane::x11_tests {
namespace {

class FocusUnder : public ManagedDesktop {
 protected:
  void switchesBy(const std::function<void(const Terminal&)>& bringForward);
  void menusAndTooltips();
  void dialogs();
  void docks();
  void fills(const std::vector<std::string>& states);
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
    auto popup = openWindow({{owner.x + 60, owner.y + 60, owner.width / 2, owner.height},
                             white,
                             std::string("_NET_WM_WINDOW_TYPE_") + kind,
                             true,
                             255,
                             application->window()});
    EXPECT_TRUE(sees({spotOf(*popup), ownerSpot}, surroundings())) << kind;
    EXPECT_TRUE(keeps(popup->spot(), white, 250ms)) << kind;
    picture();
    const Point spot = popup->spot();
    popup.reset();  // the next one looks the same: its picture must have left the screen
    EXPECT_TRUE(sees({{spot, brown}}, {}));
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
  waitUntil([&] { return dock->bounds().height > 10 && dock->bounds().bottom() <= 1080; }, 1s);
  EXPECT_TRUE(sees({spotOf(*dock), spotOf(*red_)}, surroundings()));
  activate(green_->window());
  EXPECT_TRUE(sees({spotOf(*dock), spotOf(*green_)}, {left(), spotOf(*red_)}));
  picture();
  activate(red_->window());
}

// Window managers differ in what they take for a monitor here, so the window may fill either, or both.
void FocusUnder::fills(const std::vector<std::string>& states) {
  const auto video = openApplication({1300, 600, 300, 200});
  const auto set = [&](bool isOn) { setState(video->window(), isOn, states.front(), states.back()); };
  set(true);
  ASSERT_TRUE(waitUntil([&] { return video->bounds().width >= 750 && video->bounds().height > 900; }, 2s));
  wait(300ms);  // what the tracking does is done after a few ticks
  const Rect filled = video->bounds();
  std::vector<Spot> covered;
  if (!filled.contains(leftSpot)) covered = surroundings();
  if (!filled.contains(rightSpot)) covered.push_back(right());
  EXPECT_TRUE(sees({spotOf(*video), {{filled.x + 15, filled.y + 15}, brown}}, covered));
  picture();
  set(false);
  if (!waitUntil([&] { return video->bounds().width < 700; }, 1s)) return;  // not all give a window its size back
  EXPECT_TRUE(sees({spotOf(*video)}, surroundings()));
}

// Whichever window comes to the front then, if any.
void FocusUnder::minimised() {
  minimise(red_->window());
  ASSERT_TRUE(sees({}, {bareBeneath(*red_), left()}));
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
  runCase("full screen", [this] { fills({"FULLSCREEN", ""}); });
  runCase("maximised", [this] { fills({"MAXIMIZED_VERT", "MAXIMIZED_HORZ"}); });
  activate(red_->window());
  runCase("focus, idle", [this] {
    constexpr int ticks = 10;
    settledPicture();
    wait(300ms);
    EXPECT_LE(wakeUpsPerSecond(), 3 * ticks);
    EXPECT_EQ(redrawsPerSecond(), 0);
  });
  runCase("focus, minimised windows", [this] { minimised(); });
  runCase("focus, second workspace", [this] {
    toWorkspace(1);
    EXPECT_TRUE(sees({}, {left(), bareBeneath(*red_)}));
    picture();
    toWorkspace(0);
    activate(red_->window());
    EXPECT_TRUE(seesFront(*red_));
  });
  runCase("focus, show desktop", [this] {
    showDesktop(true);
    EXPECT_TRUE(sees({}, {left(), bareBeneath(*red_)}));
    picture();
    showDesktop(false);
    activate(red_->window());
    EXPECT_TRUE(seesFront(*red_));
  });
}

}  // namespace
}  // namespace hushpane::x11_tests
