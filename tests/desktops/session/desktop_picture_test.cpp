#include "desktops/session/desktop_picture.h"

#include <giomm/init.h>
#include <giomm/settings.h>
#include <glibmm/main.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <utility>

#include "desktops/session/desktop_background.h"
#include "support/background_schemas.h"
#include "support/environment.h"
#include "support/temporary_folder.h"

namespace hushpane::session::tests {
namespace {

namespace fs = std::filesystem;

const platform::Screen screen{{0, 0, 1920, 1080}, 1, "HDMI-1", 1};

class DesktopPicture : public testing::Test {
 protected:
  TemporaryFolder folder;
  Environment settings{"XDG_CONFIG_HOME", folder.path().c_str()};
  Environment systemSettings{"XDG_CONFIG_DIRS", (folder / "system").c_str()};
  Environment data{"XDG_DATA_HOME", (folder / "data").c_str()};
  Environment systemData{"XDG_DATA_DIRS", (folder / "share").c_str()};

  std::string makeFile(std::string_view name) {
    writeFile(folder / name, "picture");
    return (folder / name).string();
  }
  std::string pictureOf(const char* desktop) {
    const Environment inForce("XDG_CURRENT_DESKTOP", desktop);
    return desktopPicture(screen).value_or("").filename();
  }
  void writeSettings(const fs::path& name, const std::string& text) {
    fs::create_directories((folder.path() / name).parent_path());
    writeFile(folder.path() / name, text);
  }
};

// Settings in memory, by schemas of its own that describe what those of GNOME and Cinnamon do.
class DesktopPictureInGSettings : public DesktopPicture {
 protected:
  static void SetUpTestSuite() {
    static const TemporaryFolder schemas;
    writeBackgroundSchemas(schemas.path());
    setenv("GSETTINGS_SCHEMA_DIR", schemas.path().c_str(), 1);
    setenv("GSETTINGS_BACKEND", "memory", 1);
    Gio::init();
  }

  void store(const char* key, const std::string& value) { background_->set_string(key, value); }

  Glib::RefPtr<Gio::Settings> background_ = Gio::Settings::create("org.gnome.desktop.background");
  Glib::RefPtr<Gio::Settings> interface_ = Gio::Settings::create("org.gnome.desktop.interface");

  ~DesktopPictureInGSettings() override {
    for (const auto* key : {"picture-uri", "picture-uri-dark", "picture-options", "primary-color", "secondary-color",
                            "color-shading-type"})
      background_->reset(key);
    interface_->reset("color-scheme");
  }
};

TEST_F(DesktopPictureInGSettings, IsWhatTheDesktopInForceNames) {
  store("picture-uri", "file://" + folder.path().string() + "/day%20light.png");
  EXPECT_EQ(pictureOf("GNOME"), "") << "there is no such file";
  makeFile("day light.png");
  for (const auto* desktop : {"GNOME", "ubuntu:GNOME", "pop:GNOME", "Budgie:GNOME", "Unity", "somebody:GNOME"})
    EXPECT_EQ(pictureOf(desktop), "day light.png") << desktop;
  testing::internal::CaptureStderr();
  for (const auto* desktop : {"", ":", "gnome", "XGNOME", "X-Cinnamon", "MATE", "XFCE", "KDE", "sway"})
    EXPECT_EQ(pictureOf(desktop), "") << desktop;
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "") << "a key of another type is not asked";
  const Environment none("XDG_CURRENT_DESKTOP", nullptr);
  EXPECT_FALSE(desktopPicture(screen));
}

TEST_F(DesktopPictureInGSettings, FollowsTheColorSchemeAndWhatIsShown) {
  store("picture-uri", makeFile("light.png"));
  store("picture-uri-dark", "file://" + makeFile("dark.png"));
  EXPECT_EQ(pictureOf("GNOME"), "light.png");
  interface_->set_string("color-scheme", "prefer-dark");
  EXPECT_EQ(pictureOf("GNOME"), "dark.png");
  store("picture-uri-dark", "");
  EXPECT_EQ(pictureOf("GNOME"), "light.png");
  store("picture-options", "none");
  EXPECT_EQ(pictureOf("GNOME"), "");
}

TEST_F(DesktopPictureInGSettings, APlanOfPicturesCountsAsItsFirst) {
  makeFile("first & best.png");
  const auto plan = [this](const std::string& contents) {
    writeSettings("plan.xml", "<background><starttime><hour>8</hour></starttime>" + contents + "</background>");
    return pictureOf("GNOME");
  };
  store("picture-uri", "file://" + (folder / "plan.xml").string());
  EXPECT_EQ(pictureOf("GNOME"), "");
  const auto path = (folder / "first &amp; best.png").string();
  const auto shown = [](const std::string& file) {
    return "<static><duration>60</duration><file>" + file + "</file></static>";
  };
  EXPECT_EQ(plan(shown(path) + shown("/second.png")), "first & best.png");
  EXPECT_EQ(plan(shown("\n <size width=\"1\" height=\"1\">\n" + path + "\n</size>\n<size>/b.png</size>")),
            "first & best.png");
  EXPECT_EQ(plan(""), "");
  EXPECT_EQ(plan("<transition><from>" + path + "</from></transition>"), "");
  EXPECT_EQ(plan(shown(path) + "<broken"), "");
}

TEST_F(DesktopPictureInGSettings, OnlyALocalRegularFileCounts) {
  const auto file = makeFile("picture.png");
  for (const auto& name : {std::string(), "file://elsewhere" + file, std::string("http://host/picture.png"),
                           "file://" + folder.path().string(), std::string("picture.png"), "file://" + file + "%00",
                           "file://" + file + "%zz", std::string("/dev/null")}) {
    store("picture-uri", name);
    EXPECT_EQ(pictureOf("GNOME"), "") << name;
  }
}

TEST_F(DesktopPictureInGSettings, TheBackgroundIsDescribedWithItsColorsAndTheWatchTellsOfChanges) {
  const Environment gnome("XDG_CURRENT_DESKTOP", "ubuntu:GNOME");
  int changes = 0;
  auto watch = std::make_unique<DesktopBackgroundWatch>([&changes] { ++changes; });
  const auto isTold = [&changes] {
    while (Glib::MainContext::get_default()->iteration(false)) {
    }
    return std::exchange(changes, 0) > 0;
  };
  EXPECT_FALSE(isTold());
  const fs::path file = "/a/picture.png";
  store("picture-uri", file);
  store("primary-color", "#ff8000");
  store("secondary-color", "no color");
  store("color-shading-type", "vertical");
  EXPECT_TRUE(isTold());
  EXPECT_EQ(desktopBackground(), DesktopBackground{.picture = file}) << "zoomed, on black";
  for (const auto& [name, placement] : {std::pair("wallpaper", PicturePlacement::tiled),
                                        {"centered", PicturePlacement::centered},
                                        {"scaled", PicturePlacement::scaled},
                                        {"stretched", PicturePlacement::stretched},
                                        {"spanned", PicturePlacement::spanned}}) {
    store("picture-options", name);
    EXPECT_EQ(desktopBackground()->placement, placement) << name;
  }
  EXPECT_TRUE(isTold());
  interface_->set_string("color-scheme", "prefer-dark");
  EXPECT_TRUE(isTold()) << "another picture may be in force";
  store("picture-options", "none");
  const auto colors = desktopBackground();
  ASSERT_TRUE(colors);
  EXPECT_FALSE(colors->picture);
  EXPECT_EQ(colors->shading, ColorShading::vertical);
  EXPECT_NEAR(colors->primary.green, 0x80 / 255.0, 0.001);
  EXPECT_EQ(colors->secondary, platform::black);
  isTold();
  watch.reset();
  store("primary-color", "#ffffff");
  EXPECT_FALSE(isTold());
  const Environment other("XDG_CURRENT_DESKTOP", "X-Cinnamon:KDE");
  EXPECT_FALSE(desktopBackground());
}

std::string xfceMonitor(const std::string& monitor, const std::string& image, const std::string& more = {}) {
  const auto workspace = [](const char* name, const std::string& contents) {
    return std::string("<property name=\"") + name + "\" type=\"empty\">" + contents + "</property>";
  };
  const auto property = "<property name=\"last-image\" type=\"string\" value=\"" + image + "\"/>";
  return "<property name=\"monitor" + monitor + "\" type=\"empty\">" + workspace("workspace0", more + property) +
         workspace("workspace1", "<property name=\"last-image\" type=\"string\" value=\"/other\"/>") + "</property>";
}

TEST_F(DesktopPicture, OfXfceIsThatOfTheScreensFirstWorkspace) {
  const fs::path name = "xfce4/xfconf/xfce-perchannel-xml/xfce4-desktop.xml";
  const auto write = [&](const std::string& monitors) {
    writeSettings(name,
                  "<?xml version=\"1.0\"?><channel name=\"xfce4-desktop\"><property name=\"backdrop\">"
                  "<property name=\"screen0\">" +
                      monitors + "</property></property></channel>");
    return pictureOf("XFCE");
  };
  const auto one = xfceMonitor("DP-1", makeFile("one.png")), two = xfceMonitor("HDMI-1", makeFile("&two.png"));
  EXPECT_EQ(pictureOf("XFCE"), "");
  EXPECT_EQ(write(one), "one.png");
  EXPECT_EQ(write(one + xfceMonitor("HDMI-1", (folder / "&amp;two.png").string())), "&two.png");
  EXPECT_EQ(write(xfceMonitor("DP-2", "") + one), "one.png");
  EXPECT_EQ(write(xfceMonitor("DP-1", (folder / "one.png").string(), "<property name=\"image-style\" value=\"0\"/>")),
            "");
  EXPECT_EQ(write(xfceMonitor("DP-1", "relative.png")), "");
  EXPECT_EQ(write(""), "");
  EXPECT_EQ(write(two), "") << "broken markup";
  const auto whole = (write(one), contentsOf(folder.path() / name));
  for (std::size_t size = 0; size < whole.size(); size += 7) {
    writeSettings(name, whole.substr(0, size));
    EXPECT_EQ(pictureOf("XFCE"), "") << size;
  }
  writeSettings(name, whole + std::string(2 << 20, ' '));
  EXPECT_EQ(pictureOf("XFCE"), "") << "too large";
}

TEST_F(DesktopPicture, OfPlasmaIsThatOfTheFirstScreen) {
  const auto write = [&](const std::string& text) {
    writeSettings("plasma-org.kde.plasma.desktop-appletsrc", text);
    return pictureOf("KDE");
  };
  const auto containment = [](const std::string& id, const std::string& facts, const std::string& image) {
    return "[Containments][" + id + "]\n" + facts + "\n[Containments][" + id +
           "][Wallpaper][org.kde.image][General]\nFillMode=2\nImage=" + image + "\n\n";
  };
  const auto one = makeFile("one.png"), two = "file://" + makeFile("two 2.png");
  EXPECT_EQ(pictureOf("KDE"), "");
  EXPECT_EQ(write(containment("1", "plugin=org.kde.desktop\n", one)), "one.png");
  EXPECT_EQ(write(containment("1", "lastScreen=1", one) + containment("22", "lastScreen=0", two)), "two 2.png");
  EXPECT_EQ(write(containment("1", "wallpaperplugin=org.kde.color", one)), "") << "a plain colour is shown";
  EXPECT_EQ(write(containment("1", "lastScreen=0\r", one + "\r")), "one.png");
  EXPECT_EQ(write(containment("1", "", folder.path().string())), "") << "a folder of pictures";
  for (const auto* broken :
       {"", "Image=/etc/passwd", "[Containments][", "[Containments][1\nImage=/etc/passwd\n", "=", "[\n=\n[]"})
    EXPECT_EQ(write(broken), "") << broken;
}

TEST_F(DesktopPicture, OfUntouchedPlasmaIsThatOfTheGlobalTheme) {
  const auto defaults = [this](const std::string& theme, const std::string& image) {
    writeSettings("share/plasma/look-and-feel/" + theme + "/contents/defaults",
                  "[kdeglobals][KDE]\nImage=Wrong\n\n[Wallpaper]\nImage=" + image + "\n");
  };
  const auto wallpaper = [this](const fs::path& place, std::initializer_list<const char*> names) {
    for (const auto* name : names) writeSettings(place / "contents/images" / name, "picture");
  };
  EXPECT_EQ(pictureOf("KDE"), "");
  defaults("org.kde.breeze.desktop", "Next");
  EXPECT_EQ(pictureOf("KDE"), "") << "it is not installed";
  wallpaper("share/wallpapers/Next", {"1080x1920.png", "5120x2880.jpg", "2560x1440.png", "440x247.png", "1920x1200.png",
                                      "other.png", "1920x.png", "0x0.png"});
  EXPECT_EQ(pictureOf("KDE"), "2560x1440.png") << "of the screen's shape, large enough, and not larger";
  writeSettings("share/wallpapers/Next/contents/images_dark/1920x1080.png", "picture");
  writeSettings("kdeglobals", "[Colors:Window]\nBackgroundNormal=42,46,50\n");
  EXPECT_EQ(pictureOf("KDE"), "1920x1080.png") << "the dark one";
  writeSettings("kdeglobals", "[Colors:Window]\nBackgroundNormal=239,240,241\n");

  const fs::path applets = "plasma-org.kde.plasma.desktop-appletsrc";
  const std::string panel = "[Containments][2]\nformfactor=2\nlastScreen=0\nwallpaperplugin=org.kde.image\n";
  const std::string desktop = "[Containments][3]\nformfactor=0\nlastScreen=0\nwallpaperplugin=";
  writeSettings(applets, panel + desktop + "org.kde.image\n");
  EXPECT_EQ(pictureOf("KDE"), "2560x1440.png");
  writeSettings(applets, panel + desktop + "org.kde.color\n");
  EXPECT_EQ(pictureOf("KDE"), "") << "a plain colour is shown";

  const std::string image =
      panel + desktop + "org.kde.image\n[Containments][3][Wallpaper][org.kde.image][General]\nImage=";
  wallpaper("data/wallpapers/Own", {"1366x768.jpg"});
  writeSettings(applets, image + "Own\n");
  EXPECT_EQ(pictureOf("KDE"), "1366x768.jpg");
  for (const auto* scheme : {"file://", ""}) {
    writeSettings(applets, image + scheme + (folder / "share/wallpapers/Next/").string() + "\n");
    EXPECT_EQ(pictureOf("KDE"), "2560x1440.png") << "a folder that is named";
  }

  fs::remove(folder.path() / applets);
  defaults("org.example.calm", "Calm.png");
  writeSettings("data/wallpapers/Calm.png", "picture");
  for (const auto* place : {"system/kdeglobals", "kdedefaults/kdeglobals", "kdeglobals"}) {
    writeSettings(place, "[KDE]\nLookAndFeelPackage=org.example.calm\n");
    EXPECT_EQ(pictureOf("KDE"), "Calm.png") << place;
    writeSettings(place, "[KDE]\nLookAndFeelPackage=../calm\n");
    EXPECT_EQ(pictureOf("KDE"), "2560x1440.png") << place;
  }
}

}  // namespace
}  // namespace hushpane::session::tests
