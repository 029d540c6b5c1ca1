#include "tests/x11/desktop.h"

namespace hushpane::x11_tests {
namespace {

using Settings = Desktop;

// The same list in the binary form.
std::string binary(const std::string& xmlList) {
  plist_t root = nullptr;
  plist_from_xml(xmlList.data(), static_cast<std::uint32_t>(xmlList.size()), &root);
  char* bytes = nullptr;
  std::uint32_t length = 0;
  plist_to_bin(root, &bytes, &length);
  std::string result(bytes, length);
  plist_to_bin_free(bytes);
  plist_free(root);
  return result;
}

TEST_F(Settings, ModeSurvivesARelaunch) {
  chooseMode("standard");
  startHushpane({"hushpane://mode/cleanDesktop"});
  EXPECT_TRUE(shows(leftSpot, dimmed(background, balanced)));
  EXPECT_EQ(stopHushpane(), 0);
  EXPECT_TRUE(looksUntouched());
  EXPECT_EQ(settings().value("hushpane.lastUserMode"), "cleanDesktop");
  startHushpane();
  EXPECT_TRUE(shows(leftSpot, dimmed(background, balanced)));
  EXPECT_TRUE(entersMode("cleanDesktop"));
  EXPECT_EQ(settings().value("hushpane.reviewSessionCount"), "2");
}

TEST_F(Settings, FreshUserGetsTheDesktopAsUsual) {
  startHushpane();
  EXPECT_TRUE(entersMode("standard"));
  EXPECT_TRUE(keeps(leftSpot, background, 500ms));
  EXPECT_TRUE(looksUntouched());
  EXPECT_EQ(settings().value("hushpane.reviewSessionCount"), "1");
}

TEST_F(Settings, BinaryAndOldStyleListsAreRead) {
  chooseMode("focus");
  const std::string xmlList = settings().bytes();
  for (const std::string& list :
       {binary(xmlList), std::string(R"({ "hushpane.lastUserMode" = focus; "hushpane.focusSurface" = "dim"; })")}) {
    settings().writeBytes(list);
    startHushpane();
    EXPECT_TRUE(showsDimExcept({red_->frameBounds()}));
    EXPECT_EQ(stopHushpane(), 0);
  }
}

TEST_F(Settings, BrokenFilesGiveTheDefaultsInSilence) {
  chooseMode("focus");
  const std::string whole = settings().bytes(), packed = binary(whole);
  for (const std::string& broken :
       {std::string(), std::string("\0\0\0\0", 4), std::string("no list at all"), whole.substr(0, whole.size() / 2),
        packed.substr(0, packed.size() / 2), packed.substr(0, 9), "bplist00" + std::string(64, '\xff'),
        std::string("<plist version=\"1.0\"><array><string>focus</string></array></plist>"),
        std::string("{ \"hushpane.lastUserMode\" = "),
        std::string("<plist version=\"1.0\"><dict><key>hushpane.lastUserMode</key><integer>2</integer></dict></plist>"),
        std::string(
            "<plist version=\"1.0\"><dict><key>hushpane.lastUserMode</key><string>reveal</string></dict></plist>")}) {
    SCOPED_TRACE(broken);
    settings().writeBytes(broken);
    sharedFile().writeBytes(broken);
    startHushpane();
    EXPECT_TRUE(entersMode("standard"));
    EXPECT_TRUE(looksUntouched());
    EXPECT_EQ(stopHushpane(), 0);
    EXPECT_EQ(hushpane().output() + hushpane().errors(), "");
  }
}

TEST_F(Settings, FolderThatCannotBeWrittenLosesNothingElse) {
  std::ofstream(settings().path().parent_path()) << "a file where the folder should be";
  startHushpane({"hushpane://mode/cleanDesktop"});
  EXPECT_TRUE(entersMode("cleanDesktop"));
  EXPECT_TRUE(shows(green_->spot(), green_->color()));
  EXPECT_TRUE(waitUntil([this] { return !isNear(x().pixel(leftSpot), background, 10); }));
  EXPECT_EQ(stopHushpane(), 0);
  EXPECT_EQ(hushpane().output() + hushpane().errors(), "");
}

// The folder of the settings as the program sees it: a small disk of its own, with the settings and not a byte to
// spare.
TEST_F(Settings, FullDiskKeepsTheOldFile) {
  chooseMode("standard");
  const std::vector<std::string> launcher{"unshare", "--user", "--map-root-user", "--mount", "sh", "-c", R"(
    cd "$XDG_CONFIG_HOME" && cp hushpane/* "$HOME" && mount -t tmpfs -o size=32k none hushpane &&
    cp "$HOME"/*.plist hushpane && ! head -c 100k /dev/zero >hushpane/filler && exec "$0" "$@")"};
  startHushpane({"hushpane://mode/focus"}, launcher);
  EXPECT_TRUE(entersMode("focus"));
  EXPECT_TRUE(showsDimExcept({red_->frameBounds()}));
  const SettingsFile seen("/proc/" + std::to_string(hushpane().pid()) + "/root" + settings().path().string());
  EXPECT_EQ(seen.value("hushpane.focusSurface"), "dim");
  EXPECT_EQ(seen.value("hushpane.lastUserMode"), "standard");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(seen.path().parent_path()), {}), 2)
      << "something is left beside the settings and the filler";
  EXPECT_EQ(stopHushpane(), 0);
}

TEST_F(Settings, EditedFileTakesEffectWithTheNextChangeOfTheCover) {
  chooseMode("cleanDesktop");
  startHushpane();
  ASSERT_TRUE(shows(leftSpot, dimmed(background, balanced)));
  chooseMode("cleanDesktop", "dim", {{"hushpane.ambientDimIntensity", xml("strong")}});
  std::this_thread::sleep_for(300ms);  // the program hears of the edit when it will
  keyboard("keydown", "alt");
  EXPECT_TRUE(shows(leftSpot, background));
  keyboard("keyup", "alt");
  EXPECT_TRUE(shows(leftSpot, dimmed(background, strong)));
}

TEST_F(Settings, KillAtAnyMomentLeavesAWholeFile) {
  chooseMode("standard");
  for (int round = 0; round < 12; ++round) {
    startHushpane({"hushpane://mode/focus", "hushpane://mode/standard", "hushpane://mode/cleanDesktop",
                   "hushpane://mode/standard", "hushpane://mode/focus", "hushpane://mode/standard"});
    std::this_thread::sleep_for(milliseconds(round));
    hushpane().signal(SIGKILL);
    hushpane().wait();
    EXPECT_EQ(settings().value("hushpane.focusSurface"), "dim") << settings().bytes();
    EXPECT_TRUE(sharedFile().value("hushpane.userMode").has_value()) << sharedFile().bytes();
  }
}

}  // namespace
}  // namespace hushpane::x11_tests
