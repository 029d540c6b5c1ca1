#include <gdk-pixbuf/gdk-pixbuf.h>

#include <algorithm>
#include <fstream>

#include "desktops/session/played_service.h"
#include "desktops/session/portal.h"
#include "desktops/shared/file_bookmarks.h"
#include "desktops/shared/template_picture.h"
#include "state/stored_keys.h"
#include "tests/x11/panel_desktop.h"
#include "tests/x11/status_notifier_host.h"
#include "ui/menu/menu_bar_icon.h"
#include "ui/preferences/outbound_links.h"

namespace hushpane::x11_tests {
namespace {

constexpr std::uint16_t escapeCode = 53;
constexpr Point gear{336, 24};  // on the menu page

class PanelServices : public PanelDesktop {
 protected:
  // Rests the pointer on the menu, which is behind its tooltips.
  void movePointer(Point onPanel) {
    const Rect frame = panels().back(), inside = twin().outline(twin().panelCount() - 1);
    runTool({"xdotool", "mousemove", std::to_string(int(frame.x + inside.x + onPanel.x)),
             std::to_string(int(frame.y + inside.y + onPanel.y))});
    const Rect twinFrame = twin().frame(twin().panelCount() - 1);
    twin().desktop().pointer().moveTo({twinFrame.x + inside.x + onPanel.x, twinFrame.y + inside.y + onPanel.y});
    twin().desktop().drain();
  }
  void hover(Point onPanel) {
    movePointer(onPanel);
    twin().settle();
    waitForTwin();
  }
};

// --- a desktop that shows status notifiers ---

class NotifierPanelX11Test : public PanelServices {
 protected:
  NotifierPanelX11Test() { startBus(); }

  void startHost() {
    host_.reset();
    host_ = std::make_unique<StatusNotifierHost>(environment().at("DBUS_SESSION_BUS_ADDRESS"));
  }
  void startInHost() {
    startHost();
    startWithIcon();
    EXPECT_TRUE(comesToHost());
    twin().desktop().statusItem().setFrameUntold(true);
  }
  bool comesToHost() {
    return StatusNotifierHost::waitUntil([this] { return host_->hasItem() && host_->property("Status"); });
  }
  // Whether the host is told to draw the icon of a cover on screen, or that of none, and to say what.
  testing::AssertionResult showsIcon(bool isActive, const std::string& toolTip) {
    constexpr int side = 22;
    const auto wanted = desktops::templatePicture(
        {menuBarIconSize, [isActive](platform::Canvas& canvas) { drawMenuBarIcon(canvas, isActive); }}, side,
        desktops::inkOnLight);
    const auto isShown = [&] {
      return host_->toolTip() == toolTip &&
             std::ranges::equal(host_->picture(side), wanted.pixels,
                                [](auto left, auto right) { return left >> 24 == right >> 24; });
    };
    if (StatusNotifierHost::waitUntil(isShown)) return testing::AssertionSuccess();
    return testing::AssertionFailure() << "it says " << host_->toolTip();
  }
  // The host tells of a click; at no place where it knows none.
  void activate(Point point) {
    EXPECT_TRUE(host_->click(int(point.x), int(point.y)));
    twin().desktop().statusItem().click(point == Point{} ? std::nullopt : std::optional(point));
    twin().settle();
    waitForTwin();
  }
  // A real button goes down and up on the host's bar, which then tells of it.
  void clickBar(Point point, Point told) {
    Session::click(point);
    twin().desktop().pointer().click(point);
    twin().desktop().drain();
    activate(told);
  }
  // Of the panel in front, without its shadow.
  Rect outline() {
    const Rect frame = panels().at(0), inside = twin().outline(0);
    return {frame.x + inside.x, frame.y + inside.y, inside.width, inside.height};
  }

  std::unique_ptr<StatusNotifierHost> host_;
};

TEST_P(NotifierPanelX11Test, OpensWhereItsIconWasClickedAndFollowsTheHost) {
  startInHost();
  EXPECT_TRUE(showsIcon(false, "Hushpane: Standard"));
  constexpr Point bar{500, 45};
  activate(bar);
  ASSERT_TRUE(hasPanels(1));
  EXPECT_EQ(center(outline()).x, bar.x);
  EXPECT_GE(outline().y, bar.y);
  EXPECT_LE(outline().y, bar.y + 10);
  EXPECT_TRUE(looksAsItShould());
  click("Focus");
  EXPECT_TRUE(entersMode("focus"));
  EXPECT_TRUE(showsIcon(true, "Hushpane: Focus"));
  keyboard("keydown", "alt");
  EXPECT_TRUE(showsIcon(false, "Hushpane: Reveal"));
  keyboard("keyup", "alt");
  EXPECT_TRUE(showsIcon(true, "Hushpane: Focus"));
  activate(bar);
  EXPECT_TRUE(hasPanels(0)) << "the second click closes";

  activate({1118, 1078});
  ASSERT_TRUE(hasPanels(1));
  EXPECT_LE(outline().bottom(), 1078) << "above an icon at the bottom";
  EXPECT_LE(outline().right(), leftMonitor.right()) << "inside the display";
  EXPECT_GE(outline().right(), leftMonitor.right() - 20);
  shot("panel-notifier");

  host_->setHost(false);
  EXPECT_FALSE(StatusNotifierHost::waitUntil([this] { return panels().empty(); }, 300ms)) << "an open panel stays";
  key("Escape", escapeCode);
  host_->setHost(true);
  EXPECT_TRUE(comesToHost());
  startHost();
  ASSERT_TRUE(comesToHost()) << "a watcher that began anew";
  EXPECT_TRUE(showsIcon(true, "Hushpane: Focus"));
  activate(bar);
  EXPECT_TRUE(hasPanels(1));
  click("Standard");
  EXPECT_TRUE(showsIcon(false, "Hushpane: Standard"));
  key("Escape", escapeCode);

  host_.reset();
  runTool({"xdotool", "mousemove", "300", "300"});
  EXPECT_EQ(runHushpane({})->wait(), 0);
  EXPECT_TRUE(hasPanels(1)) << "without a host a second start opens it";
}

// Such a bar's clicks are clicks elsewhere, too, which come just before.
TEST_P(NotifierPanelX11Test, ClosesWithTheSecondClickOnABarOfAnotherProgram) {
  const auto bar = openWindow({{0, 0, 1120, 40}, {0x404040}, "_NET_WM_WINDOW_TYPE_DOCK"});
  startInHost();
  constexpr Point at{700, 20};
  // Some hosts tell the corner of the icon, and some no place.
  for (const Point told : {at, Point{690, 4}, Point{}}) {
    SCOPED_TRACE(told.x);
    clickBar(at, told);
    EXPECT_TRUE(hasPanels(1));
    clickBar(at, told);
    EXPECT_TRUE(hasPanels(0));
    EXPECT_TRUE(holdsFor(300ms, [&] { return panels().empty(); }));
  }
  // A click elsewhere that happens to be just before is no part of the click on the icon.
  clickBar(at, at);
  Session::click(green_->spot());
  EXPECT_TRUE(hasPanels(0));
  clickBar(at, at);
  EXPECT_TRUE(hasPanels(1));
}

INSTANTIATE_TEST_SUITE_P(Desktop, NotifierPanelX11Test, testing::Values(true),
                         [](const auto&) { return "Composited"; });

// --- a wallpaper of one's own ---

constexpr Pixel orange{0xe08020};

class WallpaperPanelX11Test : public PanelServices {
 protected:
  WallpaperPanelX11Test() {
    startBus();
    setenv("DBUS_SESSION_BUS_ADDRESS", environment().at("DBUS_SESSION_BUS_ADDRESS").c_str(), 1);
    auto* pixbuf = gdk_pixbuf_new(GDK_COLORSPACE_RGB, false, 8, 300, 200);
    gdk_pixbuf_fill(pixbuf, orange.value << 8 | 0xff);
    EXPECT_TRUE(gdk_pixbuf_save(pixbuf, picture_.c_str(), "png", nullptr, nullptr));
    g_object_unref(pixbuf);
  }
  ~WallpaperPanelX11Test() override { unsetenv("DBUS_SESSION_BUS_ADDRESS"); }

  void startPortal() {
    portal_ = std::make_unique<session::tests::PlayedService>(
        session::portal::name, session::portal::path,
        R"(<node><interface name="org.freedesktop.portal.FileChooser">
             <method name="OpenFile"><arg type="s" direction="in"/><arg type="s" direction="in"/>
               <arg type="a{sv}" direction="in"/><arg type="o" direction="out"/></method></interface></node>)",
        [this](const std::string&, GVariant* arguments, const std::string& caller) {
          return openFile(arguments, caller);
        });
  }
  GVariant* openFile(GVariant* arguments, std::string caller) {
    GVariant* options = g_variant_get_child_value(arguments, 2);
    const char* token = "";
    g_variant_lookup(options, "handle_token", "&s", &token);
    caller.erase(0, 1);
    std::ranges::replace(caller, '.', '_');
    request_ = std::string(session::portal::path) + "/request/" + caller + "/" + token;
    g_variant_unref(options);
    ++asked_;
    return g_variant_new("(o)", request_.c_str());
  }
  // The user chooses the picture, or thinks better of it.
  void answer(bool isChosen) {
    GVariantBuilder results;
    g_variant_builder_init(&results, G_VARIANT_TYPE_VARDICT);
    const std::string uri = "file://" + picture_.string();
    const char* uris[] = {uri.c_str(), nullptr};
    if (isChosen) g_variant_builder_add(&results, "{sv}", "uris", g_variant_new_strv(uris, -1));
    portal_->emit(request_, "org.freedesktop.portal.Request", "Response",
                  g_variant_new("(ua{sv})", isChosen ? 0 : 1, &results));
    auto& twin = *this->twin().desktop().openPanel();
    isChosen ? twin.choose(picture_) : twin.cancel();
    this->twin().settle();
  }

  // With the card of focus mode, which has the wallpaper.
  void openCard() {
    clickIcon();
    click("Focus");
    click("Wallpaper");
    EXPECT_TRUE(showsDefaultWallpaper());
  }
  // The middle of the custom slot, from the panel's top left.
  Point slot() {
    const auto place = twin().find("Wallpaper");
    if (!place) throw std::runtime_error("the card has no wallpaper");
    const Rect inside = twin().outline(0);
    return {inside.width * 0.72, place->onPanel.y - inside.y + 66};
  }
  void askForFile() {
    const int before = asked_;
    clickAt(slot());
    ASSERT_TRUE(session::tests::loopUntil([&] { return asked_ > before; }));
  }
  bool showsDefaultWallpaper() const {
    return waitUntil([this] {
      const Pixel seen = x().pixel(leftSpot);
      return !isNear(seen, orange) && !isNear(seen, background) && !isNear(seen, dimmed(background, balanced));
    });
  }
  // The picture that the settings hold; empty for none.
  std::filesystem::path storedPicture() const {
    const auto data = settings().data(std::string(storedKeys::customWallpaperBookmarkData));
    const auto found = desktops::FileBookmarks().resolve(platform::Data(data.begin(), data.end()));
    return found ? found->path : std::filesystem::path();
  }

  const std::filesystem::path picture_ = logs() / "my picture.png";
  std::unique_ptr<session::tests::PlayedService> portal_;
  std::string request_;
  int asked_ = 0;
};

TEST_P(WallpaperPanelX11Test, ShowsAPictureOfOnesOwnUntilItIsRemoved) {
  startPortal();
  startTray();
  startWithIcon();
  openCard();
  askForFile();
  EXPECT_TRUE(hasPanels(0)) << "nothing lies above the portal's window";
  keyboard("type", "a");
  keyboard("key", "Return");
  EXPECT_TRUE(waitUntil([&] { return red_->typed() == "a\n"; })) << "which can have the keyboard";
  answer(false);
  EXPECT_TRUE(holdsFor(300ms, [this] { return showsDefaultWallpaper(); })) << "nobody chose anything";
  EXPECT_EQ(storedPicture(), "");

  clickIcon();
  askForFile();
  answer(true);
  EXPECT_TRUE(shows(leftSpot, orange)) << "although the page that asked is gone";
  EXPECT_TRUE(shows(rightSpot, orange));
  EXPECT_TRUE(waitUntil([this] { return storedPicture() == picture_; })) << storedPicture();
  clickIcon();
  EXPECT_TRUE(looksAsItShould());
  hover(slot());
  EXPECT_TRUE(looksAsItShould()) << "with a button to remove it";
  shot("panel-own-wallpaper");
  const Point middle = slot();
  clickAt({middle.x + 66, middle.y - 31});
  EXPECT_TRUE(showsDefaultWallpaper());
  EXPECT_TRUE(waitUntil([this] { return storedPicture().empty(); }));
  EXPECT_TRUE(looksAsItShould());
  shot("panel-removed-wallpaper");
  askForFile();
  EXPECT_EQ(asked_, 3) << "another one may be chosen";
}

TEST_P(WallpaperPanelX11Test, TellsTheSettingWhereNothingCanAskForAFile) {
  startTray();
  // All that the program finds on its PATH is what starts it.
  const auto tools = logs() / "tools";
  std::filesystem::create_directory(tools);
  auto launcher = runTool({"sh", "-c", "command -v setpriv"});
  launcher.pop_back();
  std::filesystem::create_symlink(launcher, tools / "setpriv");
  const std::string path = std::exchange(environment().at("PATH"), tools);
  startWithIcon();
  environment().at("PATH") = path;
  twin().desktop().setOpenPanelAbsent(true);
  openCard();
  hover(slot());
  EXPECT_TRUE(hasPanels(2));
  EXPECT_TRUE(
      twin().find("Choose a picture in the settings file: " + std::string(storedKeys::customWallpaperBookmarkData)));
  EXPECT_TRUE(looksAsItShould());
  shot("panel-no-chooser");
}

INSTANTIATE_TEST_SUITE_P(Desktop, WallpaperPanelX11Test, testing::Values(false), [](const auto&) { return "Plain"; });

// --- tooltips and links ---

class PanelServicesX11Test : public PanelServices {};

TEST_P(PanelServicesX11Test, TooltipsComeWhereThePointerRestsAndGoWithIt) {
  startTray();
  startWithIcon();
  clickIcon();
  movePointer(gear);
  EXPECT_TRUE(holdsFor(300ms, [this] { return panels().size() == 1; })) << "too soon";
  twin().settle();
  waitForTwin();
  EXPECT_TRUE(hasPanels(2));
  EXPECT_TRUE(twin().find("Settings"));
  EXPECT_TRUE(looksAsItShould());
  EXPECT_TRUE(leftMonitor.contains(center(panels().front())));
  shot("tooltip-" + wayName());
  hover({180, 60});
  EXPECT_TRUE(hasPanels(1));
}

TEST_P(PanelServicesX11Test, LinksOpenInTheProgramsThatTheUserChose) {
  const auto notes = logs() / "notes";
  const auto script = logs() / "take-note";
  std::ofstream(script) << "#!/bin/sh\necho \"$1 $2 $#\" >> '" << notes.string() << "'\n";
  std::filesystem::permissions(script, std::filesystem::perms::owner_all);
  const auto applications = std::filesystem::path(environment().at("XDG_DATA_HOME")) / "applications";
  std::filesystem::create_directories(applications);
  std::ofstream choices(std::filesystem::path(environment().at("XDG_CONFIG_HOME")) / "mimeapps.list");
  choices << "[Default Applications]\n";
  for (const std::string scheme : {"mailto", "https"}) {
    std::ofstream(applications / (scheme + ".desktop"))
        << "[Desktop Entry]\nType=Application\nName=" << scheme << "\nExec=" << script.string() << ' ' << scheme
        << " %u\nMimeType=x-scheme-handler/" << scheme << ";\n";
    choices << "x-scheme-handler/" << scheme << '=' << scheme << ".desktop\n";
  }
  choices.close();
  startTray();
  startWithIcon();
  clickIcon();
  clickAt(gear);
  click("Contact Us");
  const std::string mail = std::string("mailto ") + outboundLinks::supportMailbox + " 2\n";
  EXPECT_TRUE(waitUntil([&] { return contents(notes) == mail; })) << contents(notes);
  click("Rate Hushpane");
  const std::string both = mail + "https " + outboundLinks::reviewPage + " 2\n";
  EXPECT_TRUE(waitUntil([&] { return contents(notes) == both; })) << contents(notes);
  EXPECT_TRUE(looksAsItShould()) << "the panel stays";
}

INSTANTIATE_TEST_SUITE_P(Desktop, PanelServicesX11Test, testing::Values(true),
                         [](const auto&) { return "Composited"; });

}  // namespace
}  // namespace hushpane::x11_tests
