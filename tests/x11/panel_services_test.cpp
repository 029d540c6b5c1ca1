#include <gdk-pixbuf/gdk-pixbuf.h>

#include <algorithm>
#include <fstream>

#include "desktops/session/played_service.h"
#include "desktops/session/portal.h"
#include "desktops/shared/file_bookmarks.h"
#include "state/stored_keys.h"
#include "tests/x11/panel_desktop.h"
#include "tests/x11/status_notifier_host.h"
#include "ui/preferences/outbound_links.h"

namespace hushpane::x11_tests {
namespace {

// --- a desktop that shows status notifiers ---

class NotifierPanelX11Test : public PanelDesktop {
 protected:
  NotifierPanelX11Test() { startBus(); }

  void startInHost() {
    host_ = std::make_unique<StatusNotifierHost>(environment().at("DBUS_SESSION_BUS_ADDRESS"));
    startWithIcon();
    EXPECT_TRUE(StatusNotifierHost::waitUntil([this] { return host_->hasItem() && host_->property("Status"); }));
    twin().desktop().statusItem().setFrameUntold(true);
  }
  // A real button goes down and up on the host's bar, which then tells of it; at no place where it knows none.
  void clickBar(Point point, Point told) {
    Session::click(point);
    twin().desktop().pointer().click(point);
    twin().desktop().drain();
    EXPECT_TRUE(host_->click(int(told.x), int(told.y)));
    twin().desktop().statusItem().click(point);
    twin().settle();
    waitForTwin();
  }

  std::unique_ptr<StatusNotifierHost> host_;
};

// Such a bar's clicks are clicks elsewhere, too, which come just before.
TEST_P(NotifierPanelX11Test, OpensAndClosesByClicksOnABarOfAnotherProgram) {
  const auto bar = openWindow({{0, 0, 1120, 40}, {0x404040}, "_NET_WM_WINDOW_TYPE_DOCK"});
  x().setNumbers(bar->window(), "_NET_WM_STRUT_PARTIAL", "CARDINAL", {0, 0, 40, 0, 0, 0, 0, 0, 0, 1119, 0, 0});
  startInHost();
  constexpr Point at{700, 20};
  // Some hosts tell the corner of the icon, some that within the bar, and some no place.
  for (const Point told : {at, Point{690, 4}, Point{0, 3}, Point{}}) {
    SCOPED_TRACE(told.x);
    clickBar(at, told);
    ASSERT_TRUE(hasPanels(1));
    EXPECT_NEAR(center(panels().front()).x, told.x < 600 ? at.x : told.x, 1) << "at the pointer, or near it";
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
  keyboard("key", "Escape");
  EXPECT_TRUE(hasPanels(0));

  host_.reset();
  runTool({"xdotool", "mousemove", "300", "300"});
  EXPECT_EQ(runHushpane({})->wait(), 0);
  EXPECT_TRUE(hasPanels(1)) << "without a host a second start opens it";
}

INSTANTIATE_TEST_SUITE_P(Desktop, NotifierPanelX11Test, testing::Values(true),
                         [](const auto&) { return "Composited"; });

// --- a wallpaper of one's own ---

constexpr Pixel orange{0xe08020};

class WallpaperPanelX11Test : public PanelDesktop {
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
  // The user chooses the picture.
  void choose() {
    GVariantBuilder results;
    g_variant_builder_init(&results, G_VARIANT_TYPE_VARDICT);
    const std::string uri = "file://" + picture_.string();
    const char* uris[] = {uri.c_str(), nullptr};
    g_variant_builder_add(&results, "{sv}", "uris", g_variant_new_strv(uris, -1));
    portal_->emit(request_, "org.freedesktop.portal.Request", "Response", g_variant_new("(ua{sv})", 0, &results));
    twin().desktop().openPanel()->choose(picture_);
    twin().settle();
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

TEST_P(WallpaperPanelX11Test, ShowsAPictureOfOnesOwn) {
  startPortal();
  startTray();
  startWithIcon();
  clickIcon();
  click("Focus");
  click("Wallpaper");  // and with it a slot for a picture of one's own
  EXPECT_TRUE(waitUntil([this] {
    const Pixel seen = x().pixel(leftSpot);
    return !isNear(seen, background) && !isNear(seen, dimmed(background, balanced));
  })) << "the default wallpaper";
  const auto place = twin().find("Wallpaper");
  ASSERT_TRUE(place);
  const Rect inside = twin().outline(0);
  clickAt({inside.width * 0.72, place->onPanel.y - inside.y + 66});
  ASSERT_TRUE(session::tests::loopUntil([&] { return asked_ > 0; }));
  EXPECT_TRUE(hasPanels(0)) << "nothing lies above the portal's window";
  keyboard("type", "a");
  keyboard("key", "Return");
  EXPECT_TRUE(waitUntil([&] { return red_->typed() == "a\n"; })) << "which can have the keyboard";
  choose();
  EXPECT_TRUE(shows(leftSpot, orange)) << "although the page that asked is gone";
  EXPECT_TRUE(shows(rightSpot, orange));
  EXPECT_TRUE(waitUntil([this] { return storedPicture() == picture_; })) << storedPicture();
  clickIcon();
  EXPECT_TRUE(looksAsItShould());
  shot("panel-own-wallpaper");
}

INSTANTIATE_TEST_SUITE_P(Desktop, WallpaperPanelX11Test, testing::Values(false), [](const auto&) { return "Plain"; });

// --- tooltips and links ---

class PanelServicesX11Test : public PanelDesktop {
 protected:
  static constexpr Point gear{336, 24};  // on the menu page

  // Rests the pointer on the menu.
  void movePointer(Point onPanel) {
    const Rect frame = panels().back(), inside = twin().outline(twin().panelCount() - 1);
    runTool({"xdotool", "mousemove", std::to_string(int(frame.x + inside.x + onPanel.x)),
             std::to_string(int(frame.y + inside.y + onPanel.y))});
    const Rect twinFrame = twin().frame(twin().panelCount() - 1);
    twin().desktop().pointer().moveTo({twinFrame.x + inside.x + onPanel.x, twinFrame.y + inside.y + onPanel.y});
    twin().desktop().drain();
  }
};

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
  movePointer({180, 60});
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
