#include <gtest/gtest.h>

#include "desktops/session/main_queue.h"
#include "desktops/session/status_notifier_item.h"
#include "desktops/x11/x11_platform.h"
#include "platform/handler_list.h"
#include "platform/path.h"
#include "support/environment.h"
#include "tests/x11/plain_tray.h"
#include "tests/x11/session.h"
#include "tests/x11/status_notifier_host.h"
#include "tests/x11/tray.h"
#include "tests/x11/xsettings_manager.h"

namespace hushpane::x11_tests {
namespace {

constexpr Pixel darkGround{0x202830}, lightGround{0xe0e4e8};
constexpr Pixel light{0xffffff}, dark{0x242424};

// A block, or only its upper part.
platform::TemplateImage icon(bool isFilled = true) {
  return {{20, 20}, [isFilled](platform::Canvas& canvas, double) {
            canvas.fill(platform::rectanglePath({2, 4, 16, 3}), platform::black);
            if (isFilled) canvas.fill(platform::rectanglePath({2, 7, 16, 9}), platform::black);
          }};
}

// The desktop in this process, as the program gets it.
class StatusItem : public testing::Test, protected Session {
 protected:
  void startDesktop() {
    for (const auto& [name, value] : environment()) setenv(name.c_str(), value.c_str(), 1);
    auto start = x11::X11Platform::start({});
    platform_ = std::move(std::get<std::unique_ptr<x11::X11Platform>>(start));
    item().setClickHandler([this](auto point) { clicks_.push_back(point); });
    item().setToolTip("Focus");
    item().setImage(icon());
  }
  void startTray(Pixel ground) { tray_ = std::make_unique<Tray>(environment(), logs(), x(), Tray::Look{ground}); }
  void startHost(bool hasHost = true) {
    host_.reset();
    host_ = std::make_unique<StatusNotifierHost>(environment().at("DBUS_SESSION_BUS_ADDRESS"), hasHost);
  }

  platform::StatusItem& item() { return platform_->statusItem(); }
  bool waitUntil(const std::function<bool()>& condition, milliseconds limit = patience) {
    return StatusNotifierHost::waitUntil(condition, limit);
  }

  // Whether the item comes to stand in the tray, in that colour on that ground.
  testing::AssertionResult standsInTray(Pixel ink, Pixel ground) {
    std::optional<Rect> frame;
    Pixel middle, corner;
    if (waitUntil([&] {
          frame = Tray::iconFrame(x());
          if (!frame || item().frame() != frame) return false;
          middle = x().pixel(center(*frame));
          corner = x().pixel({frame->x, frame->y});
          return isNear(middle, ink) && isNear(corner, ground);
        })) {
      return testing::AssertionSuccess();
    }
    return testing::AssertionFailure() << (frame ? "there is an icon" : "there is no icon") << ", its middle " << middle
                                       << ", its corner " << corner;
  }

  std::unique_ptr<Tray> tray_;
  std::unique_ptr<StatusNotifierHost> host_;
  std::unique_ptr<x11::X11Platform> platform_;
  std::vector<std::optional<Point>> clicks_;
};

class TrayIcon : public StatusItem, public testing::WithParamInterface<bool> {
 protected:
  TrayIcon() {
    if (GetParam()) startCompositor();
  }
};
INSTANTIATE_TEST_SUITE_P(Desktop, TrayIcon, testing::Bool(),
                         [](const auto& way) { return way.param ? "Composited" : "Plain"; });

TEST_P(TrayIcon, StandsOutInEveryTrayThatComes) {
  startDesktop();
  EXPECT_FALSE(item().isShown());
  EXPECT_EQ(item().frame(), std::nullopt);
  for (const auto& [ground, ink] : {std::pair{darkGround, light}, std::pair{lightGround, dark}}) {
    SCOPED_TRACE(ground);
    startTray(ground);
    ASSERT_TRUE(standsInTray(ink, ground));
    EXPECT_TRUE(item().isShown());
    item().setImage(icon(false));
    EXPECT_TRUE(standsInTray(ground, ground)) << "the middle is empty now";
    item().setImage(icon());
    EXPECT_TRUE(standsInTray(ink, ground));
    tray_.reset();
    EXPECT_TRUE(waitUntil([this] { return !item().isShown() && !Tray::icon(x()); }));
    EXPECT_EQ(item().frame(), std::nullopt);
  }
}

TEST_P(TrayIcon, TellsClicksAndThatThePointerIsOverIt) {
  startTray(darkGround);
  startDesktop();
  std::vector<bool> hovers;
  item().setHoverHandler([&](bool isOver) { hovers.push_back(isOver); });
  std::vector<platform::Event> inside, outside;
  const auto buttons =
      platform::maskOf(platform::EventType::leftMouseDown) | platform::maskOf(platform::EventType::rightMouseDown);
  const auto local = platform_->eventMonitors().addLocalMonitor(buttons, [&](const platform::Event& event) {
    inside.push_back(event);
    return std::optional(event);
  });
  const auto global = platform_->eventMonitors().addGlobalMonitor(
      buttons, [&](const platform::Event& event) { outside.push_back(event); });
  ASSERT_TRUE(standsInTray(light, darkGround));

  const Point spot = center(*item().frame()), elsewhere{600, 500};
  click(spot);
  EXPECT_TRUE(waitUntil([&] { return clicks_.size() == 1 && inside.size() == 1; }));
  runTool({"xdotool", "click", "3"});
  EXPECT_TRUE(waitUntil([&] { return clicks_.size() == 2 && inside.size() == 2; }));
  runTool({"xdotool", "click", "2"});
  EXPECT_TRUE(waitUntil([&] { return clicks_.size() == 3; }));
  EXPECT_EQ(clicks_, std::vector(3, std::optional(spot)));
  runTool({"xdotool", "click", "4"});
  click(elsewhere);
  EXPECT_TRUE(waitUntil([&] { return outside.size() == 1 && !hovers.empty() && !hovers.back(); }));
  EXPECT_TRUE(hovers.front());

  // A button that goes down on the icon and up elsewhere is no click.
  const auto move = [this](Point to) {
    runTool({"xdotool", "mousemove", std::to_string(int(to.x)), std::to_string(int(to.y))});
  };
  move(spot);
  runTool({"xdotool", "mousedown", "1"});
  EXPECT_TRUE(waitUntil([&] { return inside.size() == 3; }));
  move(elsewhere);
  runTool({"xdotool", "mouseup", "1"});
  // A menu of another program keeps buttons from everybody else.
  ASSERT_TRUE(waitUntil([this] {
    const auto cookie = xcb_grab_pointer(x().get(), 1, x().root(), XCB_EVENT_MASK_BUTTON_PRESS, XCB_GRAB_MODE_ASYNC,
                                         XCB_GRAB_MODE_ASYNC, XCB_NONE, XCB_NONE, XCB_CURRENT_TIME);
    return own(xcb_grab_pointer_reply(x().get(), cookie, nullptr))->status == XCB_GRAB_STATUS_SUCCESS;
  })) << "once the button is up for everybody";
  runTool({"xdotool", "click", "3"});
  EXPECT_TRUE(waitUntil([&] { return outside.size() == 2; }));
  EXPECT_EQ(clicks_.size(), 3u);

  using platform::EventType;
  const auto types = [](const std::vector<platform::Event>& events) {
    std::vector<std::pair<EventType, Point>> list;
    for (const auto& event : events) list.emplace_back(event.type, event.location);
    return list;
  };
  EXPECT_EQ(types(inside), (std::vector<std::pair<EventType, Point>>{{EventType::leftMouseDown, spot},
                                                                     {EventType::rightMouseDown, spot},
                                                                     {EventType::leftMouseDown, spot}}));
  EXPECT_EQ(types(outside), (std::vector<std::pair<EventType, Point>>{{EventType::leftMouseDown, elsewhere},
                                                                      {EventType::rightMouseDown, elsewhere}}));
}

TEST_F(StatusItem, FollowsSizeAndColorsOfATrayWithoutTransparency) {
  startDesktop();
  for (const auto& [ground, ink] : {std::pair{darkGround, light}, std::pair{lightGround, dark}}) {
    SCOPED_TRACE(ground);
    PlainTray tray(display(), ground);
    ASSERT_TRUE(waitUntil([&] { return tray.takeIcon(); }));
    EXPECT_TRUE(standsInTray(ink, ground));
    tray.resizeIcon(50);
    EXPECT_TRUE(waitUntil([this] { return item().frame() == Rect{210, 305, 50, 50}; }));
    EXPECT_TRUE(standsInTray(ink, ground));
    const auto isInk = [&](int column, int row) { return isNear(x().pixel({210.0 + column, 305.0 + row}), ink); };
    EXPECT_TRUE(waitUntil([&] {
      return isInk(5, 10) && isInk(44, 39) && !isInk(4, 10) && !isInk(45, 39) && !isInk(5, 9);
    })) << "drawn at that size, not enlarged";
    constexpr std::uint32_t full = 0xffff;
    tray.setColors({full, 0, full / 3, 0, 0, 0, 0, 0, 0, 0, 0, 0});
    EXPECT_TRUE(standsInTray({0xff0055}, ground));
  }
  const auto isGone = [this] { return !item().isShown() && !Tray::icon(x()); };
  EXPECT_TRUE(waitUntil(isGone));
  PlainTray tray(display(), darkGround);
  ASSERT_TRUE(waitUntil([&] { return tray.takeIcon(); }));
  ASSERT_TRUE(standsInTray(light, darkGround));
  tray.releaseIcon();
  EXPECT_TRUE(waitUntil(isGone)) << "a tray that lets it go";
}

// A cover that is still to be ordered in.
std::unique_ptr<platform::Window> makeCover(platform::Platform& platform, int level) {
  auto cover = platform.windows().makeWindow(platform.screens().screens().front().frame,
                                             {.isOpaque = false, .ignoresMouseEvents = true});
  cover->setLevel(level);
  cover->contentView().setLayerColor({0, 0, 0, 0.8});
  cover->setAlpha(0);
  return cover;
}

constexpr platform::Animation fade{0.3, platform::TimingFunction::linear};

TEST_F(StatusItem, StandsOutFromACoverThatShowsThroughItsTray) {
  startCompositor();
  const ClientWindow desktop(x(), {leftMonitor, lightGround, "_NET_WM_WINDOW_TYPE_DESKTOP"});
  startDesktop();
  PlainTray tray(display(), {0}, PlainTray::Kind::transparent);
  ASSERT_TRUE(waitUntil([&] { return tray.takeIcon(); }));
  ASSERT_TRUE(standsInTray(dark, lightGround));
  const auto cover = makeCover(*platform_, platform::windowLevel::aboveDesktop);
  cover->orderFront();
  cover->animateAlpha(1, fade);
  EXPECT_TRUE(standsInTray(light, dimmed(lightGround, 0.8)));
  cover->animateAlpha(0, fade, [&] { cover->orderOut(); });
  EXPECT_TRUE(standsInTray(dark, lightGround));
}

TEST_P(TrayIcon, KeepsItsColorBeneathACover) {
  startDesktop();
  PlainTray tray(display(), lightGround, PlainTray::Kind::amongWindows);
  ASSERT_TRUE(waitUntil([&] { return tray.takeIcon(); }));
  ASSERT_TRUE(standsInTray(dark, lightGround));
  const auto cover = makeCover(*platform_, platform::windowLevel::normal);
  cover->orderFront();
  cover->animateAlpha(1, fade);
  EXPECT_TRUE(standsInTray(dimmed(dark, 0.8), dimmed(lightGround, 0.8)));
  EXPECT_FALSE(waitUntil([this] { return !isNear(x().pixel(center(*item().frame())), dimmed(dark, 0.8)); }, 1500ms))
      << "it stays so";
}

TEST_F(StatusItem, LooksAgainWhenTheDesktopTurnsDark) {
  startDesktop();
  PlainTray tray(display(), lightGround);
  ASSERT_TRUE(waitUntil([&] { return tray.takeIcon(); }));
  ASSERT_TRUE(standsInTray(dark, lightGround));
  tray.paint(darkGround);
  XsettingsManager manager(display());
  manager.setText("Net/ThemeName", "Adwaita-dark");
  EXPECT_TRUE(standsInTray(light, darkGround));
}

TEST_F(StatusItem, FollowsTheThemeThatTheDesktopTells) {
  startDesktop();
  auto& looks = platform_->appearance();
  int changes = 0;
  const auto observer = looks.observe([&] { ++changes; });
  const auto turns = [&](bool isDark) { return waitUntil([&] { return looks.isDark() == isDark; }); };
  EXPECT_FALSE(looks.isDark());
  for (const auto order : {XsettingsManager::Order::lowestFirst, XsettingsManager::Order::highestFirst}) {
    XsettingsManager manager(display(), order);
    manager.setText("Net/ThemeName", "Mint-Y-Dark");
    EXPECT_TRUE(turns(true));
    manager.setText("Net/ThemeName", "Mint-Y");
    EXPECT_TRUE(turns(false));
    manager.setText("Net/ThemeName", "Arc-Dark");
    EXPECT_TRUE(turns(true));
    manager.destroyWindow();
    EXPECT_TRUE(turns(false)) << "nobody tells any more";
  }
  EXPECT_EQ(changes, 8);
}

TEST_F(StatusItem, PrefersAHostOfNotifiersToTheTrayWhileThereIsOne) {
  startBus();
  startTray(darkGround);
  startHost(false);
  startDesktop();
  EXPECT_TRUE(standsInTray(light, darkGround)) << "a watcher without a host shows nothing";
  EXPECT_TRUE(host_->hasItem());
  host_->setHost(true);
  EXPECT_TRUE(waitUntil([this] { return !Tray::icon(x()); }));
  EXPECT_TRUE(item().isShown());
  EXPECT_EQ(item().frame(), std::nullopt);
  runTool({"xdotool", "mousemove", "600", "400"});
  EXPECT_TRUE(host_->click(300, 200, "Activate"));
  EXPECT_TRUE(host_->click(0, 0, "ContextMenu"));
  EXPECT_TRUE(host_->click(7, 8, "SecondaryActivate"));
  EXPECT_TRUE(waitUntil([this] { return clicks_.size() == 3; }));
  EXPECT_EQ(clicks_, (std::vector<std::optional<Point>>{Point{300, 200}, Point{600, 400}, Point{7, 8}}))
      << "at the pointer where the host tells no place";

  host_->setHost(false);
  EXPECT_TRUE(standsInTray(light, darkGround));
  startHost();
  EXPECT_TRUE(waitUntil([this] { return host_->hasItem() && !Tray::icon(x()); })) << "a watcher that began anew";
  host_.reset();
  EXPECT_TRUE(standsInTray(light, darkGround));
  tray_.reset();
  EXPECT_TRUE(waitUntil([this] { return !item().isShown(); }));
  startHost();
  EXPECT_TRUE(waitUntil([this] { return item().isShown(); }));
  endBus();
  EXPECT_TRUE(waitUntil([this] { return !item().isShown(); }));
}

class Looks : public platform::SystemAppearance {
 public:
  bool isDark() const override { return isDark_; }
  std::optional<platform::Color> accentColor() const override { return std::nullopt; }
  platform::Token observe(std::function<void()> observer) override { return observers_.add(std::move(observer)); }
  void setDark(bool isDark) {
    isDark_ = isDark;
    observers_.forEach([](const auto& observer) { observer(); });
  }

 private:
  bool isDark_ = false;
  platform::HandlerList<void()> observers_;
};

TEST_F(StatusItem, NotifierTellsItsLook) {
  const hushpane::Environment unknownDesktop("XDG_CURRENT_DESKTOP", nullptr);
  startBus();
  setenv("DBUS_SESSION_BUS_ADDRESS", environment().at("DBUS_SESSION_BUS_ADDRESS").c_str(), 1);
  session::MainQueue queue;
  session::DbusSession session(queue);
  Looks looks;
  session::StatusNotifierItem notifier(session, looks, {});
  startHost();
  EXPECT_FALSE(waitUntil([this] { return host_->hasItem(); }, 100ms)) << "there is nothing to show";
  notifier.setImage(icon());
  notifier.setToolTip("Focus & <calm>");
  ASSERT_TRUE(waitUntil([&] { return notifier.hosting() == session::StatusNotifierItem::Hosting::present; }));

  const auto textOf = [this](const char* name) {
    const auto value = host_->property(name);
    return value ? value.print() : "nothing";
  };
  EXPECT_EQ(textOf("Category"), "'ApplicationStatus'");
  EXPECT_EQ(textOf("Status"), "'Active'");
  EXPECT_EQ(textOf("Id"), "'hushpane'");
  EXPECT_EQ(textOf("ItemIsMenu"), "false");
  EXPECT_EQ(host_->toolTip(), "Focus & <calm>");
  for (const char* name : {"IconAccessibleDesc", "AttentionAccessibleDesc"})
    EXPECT_EQ(textOf(name), "'Focus & <calm>'") << name;
  for (const int side : {16, 22, 24, 32, 44, 48, 64}) {
    SCOPED_TRACE(side);
    const auto picture = host_->picture(side);
    ASSERT_EQ(picture.size(), static_cast<std::size_t>(side * side));
    EXPECT_EQ(picture[static_cast<std::size_t>(side / 2 * side + side / 2)], 0xff242424u);
    EXPECT_EQ(picture[0] >> 24, 0u);
  }

  looks.setDark(true);
  EXPECT_TRUE(waitUntil([this] { return host_->signals("NewIcon") == 1; }));
  EXPECT_EQ(host_->picture(22)[22 * 11 + 11], 0xffffffffu);
  // Beside the block: a rim, whose colour is not faded by its alpha.
  const auto rim = host_->picture(22)[22 * 11 + 2];
  EXPECT_EQ(rim & 0xffffff, 0u);
  EXPECT_NEAR(rim >> 24, 178, 2);
  looks.setDark(false);
  EXPECT_TRUE(waitUntil([this] { return host_->signals("NewIcon") == 2; }));
  EXPECT_EQ(host_->picture(22)[22 * 11 + 2] & 0xffffff, 0xffffffu);
  notifier.setImage(icon(false));
  EXPECT_TRUE(waitUntil([this] { return host_->signals("NewIcon") == 3; }));
  notifier.setToolTip("Standard");
  EXPECT_TRUE(waitUntil([this] { return host_->signals("NewToolTip") == 1; }));
  EXPECT_EQ(host_->toolTip(), "Standard");
}

TEST_F(StatusItem, BarsLeaveTheVisibleFrame) {
  plugInRightMonitor();
  startTray(darkGround);
  startDesktop();
  const ClientWindow shelf(x(), {{1120, 0, 50, 1080}, {0x404040}, "_NET_WM_WINDOW_TYPE_DOCK"});
  x().setNumbers(shelf.window(), "_NET_WM_STRUT_PARTIAL", "CARDINAL", {1170, 0, 0, 0, 0, 1079, 0, 0, 0, 0, 0, 0});
  auto& screens = platform_->screens();
  ASSERT_TRUE(waitUntil([&] { return screens.screens().size() == 2; }));
  const double height = 1080 - Tray::height;
  const auto left = [&] { return screens.visibleFrame(screens.screens()[0]); };
  const auto right = [&] { return screens.visibleFrame(screens.screens()[1]); };
  EXPECT_TRUE(waitUntil([&] { return left() == Rect{0, 0, 1120, height}; })) << left().width << 'x' << left().height;
  EXPECT_EQ(right(), (Rect{1170, 0, 750, height}));
  xcb_unmap_window(x().get(), shelf.window());
  x().sync();
  EXPECT_TRUE(waitUntil([&] { return right() == Rect{1120, 0, 800, height}; }));
  // Bars that the window manager draws itself.
  const auto publish = [this](const char* name, const std::vector<std::uint32_t>& areas) {
    x().setNumbers(x().root(), name, "CARDINAL", areas);
  };
  publish("_NET_CURRENT_DESKTOP", {1});
  publish("_NET_WORKAREA", {0, 0, 1920, 1080, 0, 40, 1920, 1040 - Tray::height});
  EXPECT_EQ(left(), (Rect{0, 40, 1120, height - 40}));
  EXPECT_EQ(right(), (Rect{1120, 40, 800, height - 40}));
  publish("_GTK_WORKAREAS_D1", {0, 50, 1120, 1030, 1120, 0, 800, 1080});
  EXPECT_EQ(left(), (Rect{0, 50, 1120, height - 50}));
  EXPECT_EQ(right(), (Rect{1120, 0, 800, height}));
}

}  // namespace
}  // namespace hushpane::x11_tests
