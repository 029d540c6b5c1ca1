#include "desktops/session/autostart_login_item.h"

#include <glibmm/keyfile.h>
#include <glibmm/shell.h>
#include <gtest/gtest.h>

#include "support/environment.h"
#include "support/temporary_folder.h"

namespace hushpane::session::tests {
namespace {

namespace fs = std::filesystem;

class AutostartLoginItemTest : public testing::Test {
 protected:
  TemporaryFolder folder;
  fs::path user = folder / "user/autostart/com.corvane.Hushpane.desktop";
  fs::path everybody = folder / "system/autostart/com.corvane.Hushpane.desktop";
  AutostartLoginItem item{"/bin/sh"};

  Environment ownSettings{"XDG_CONFIG_HOME", (folder / "user").c_str()};
  Environment everybodysSettings{"XDG_CONFIG_DIRS",
                                 (folder.path().string() + "/none:" + (folder / "system").string()).c_str()};
  Environment desktop{"XDG_CURRENT_DESKTOP", "Sway:XFCE"};

  static void write(const fs::path& file, const std::string& text) {
    fs::create_directories(file.parent_path());
    writeFile(file, text);
  }
};

TEST_F(AutostartLoginItemTest, GoesOnAndOffAndKeepsNothingBehind) {
  EXPECT_FALSE(item.isEnabled());
  EXPECT_TRUE(item.unregisterItem());
  EXPECT_FALSE(fs::exists(folder / "user"));
  EXPECT_TRUE(item.registerItem());
  EXPECT_TRUE(item.isEnabled());
  EXPECT_TRUE(item.unregisterItem());
  EXPECT_FALSE(item.isEnabled());
  EXPECT_TRUE(fs::is_empty(user.parent_path()));
}

TEST_F(AutostartLoginItemTest, StartsThisProgramWhateverItsPath) {
  const fs::path program = folder / "a \"b\" $c `d` \\e %f 'g'";
  writeFile(program, "#!/bin/sh\n");
  fs::permissions(program, fs::perms::owner_all);
  ASSERT_TRUE(AutostartLoginItem(program).registerItem());
  EXPECT_TRUE(AutostartLoginItem(program).isEnabled());
  const auto entry = Glib::KeyFile::create();
  entry->load_from_file(user);
  EXPECT_EQ(entry->get_string("Desktop Entry", "TryExec").raw(), program);
  auto words = Glib::shell_parse_argv(entry->get_string("Desktop Entry", "Exec").raw());
  ASSERT_EQ(words.size(), 1u);
  words[0].replace(words[0].find("%%"), 2, "%");
  EXPECT_EQ(words[0], program);
  fs::remove(program);
  EXPECT_FALSE(AutostartLoginItem(program).isEnabled()) << "the program is gone";
  EXPECT_FALSE(AutostartLoginItem("").registerItem());
}

TEST_F(AutostartLoginItemTest, ReadsWhatOthersWrote) {
  const std::string good = "[Desktop Entry]\nType=Application\nName=Hushpane\nExec=hushpane\n";
  for (const auto& [text, isOn] : std::vector<std::pair<std::string, bool>>{
           {good, true},
           {good + "Hidden=false\nX-GNOME-Autostart-enabled=true\nTryExec=sh\n", true},
           {good + "OnlyShowIn=GNOME;XFCE;\n", true},
           {good + "NotShowIn=GNOME;\n", true},
           {good + "Hidden=true\n", false},
           {good + "X-GNOME-Autostart-enabled=false\n", false},
           {good + "OnlyShowIn=GNOME;\n", false},
           {good + "NotShowIn=KDE;Sway;\n", false},
           {good + "TryExec=/nowhere/hushpane\n", false},
           {good + "Hidden=perhaps\n", false},
           {good + "no line of an entry\n", false},
           {"[Desktop Entry]\nType=Application\n", false},
           {"[Desktop Entry]\nType=Link\nExec=hushpane\n", false},
           {"[Desktop Entry]\nType=Application\nExec=\"open\n", false},
           {"[Other]\nType=Application\nExec=hushpane\n", false},
           {"", false},
           {std::string(1 << 17, 'x'), false}}) {
    write(user, text);
    EXPECT_EQ(item.isEnabled(), isOn) << text.substr(0, 200);
  }
}

TEST_F(AutostartLoginItemTest, HidesAnEntryForEverybody) {
  write(everybody, "[Desktop Entry]\nType=Application\nExec=hushpane\n");
  EXPECT_TRUE(item.isEnabled());
  EXPECT_TRUE(item.unregisterItem());
  EXPECT_FALSE(item.isEnabled());
  EXPECT_TRUE(fs::exists(everybody));
  EXPECT_TRUE(item.registerItem());
  EXPECT_TRUE(item.isEnabled());
}

TEST_F(AutostartLoginItemTest, LeavesEverythingWhereItMayNotWrite) {
  writeFile(folder / "user", "a file where the folder should be");
  EXPECT_FALSE(item.registerItem());
  EXPECT_FALSE(item.isEnabled());
  fs::remove(folder / "user");
  write(user / "in the way", "");
  EXPECT_FALSE(item.registerItem());
  EXPECT_FALSE(item.unregisterItem());
  EXPECT_TRUE(fs::exists(user / "in the way"));
}

}  // namespace
}  // namespace hushpane::session::tests
