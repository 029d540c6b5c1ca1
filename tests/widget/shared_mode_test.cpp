#include "widget/shared_mode.h"

#include <gtest/gtest.h>

#include "desktops/shared/property_list.h"
#include "desktops/sim/sim_main_queue.h"
#include "support/temporary_folder.h"

namespace hushpane::widget {
namespace {

namespace fs = std::filesystem;
using platform::Dictionary;

class SharedModeTest : public testing::Test {
 protected:
  TemporaryFolder home;
  sim::SimMainQueue queue;
  desktops::PropertyListFiles lists;
  SharedMode mode{{home / "data", home / "config"}, queue};

  const fs::path file = home / "data/group.com.corvane.Hushpane/hushpane-shared.plist";
  const fs::path suite = home / "config/hushpane/group.com.corvane.Hushpane.plist";

  // Neither a file nor a folder can be made where a file is.
  void blockData() { writeFile(home / "data", ""); }
};

TEST_F(SharedModeTest, ReadsStandardWhereNoModeIsStoredAndMakesNothing) {
  EXPECT_EQ(mode.read(), VeilMode::standard);
  EXPECT_TRUE(home.names().empty());
  EXPECT_EQ(SharedMode({}, queue).read(), VeilMode::standard);
  EXPECT_EQ(SharedMode({}, queue).file(), std::nullopt);

  fs::create_directories(file.parent_path());
  for (const auto* broken : {"", "<plist><dict><key>hushpane.userMode", "bplist00", "(focus)"}) {
    writeFile(file, broken);
    EXPECT_EQ(mode.read(), VeilMode::standard) << broken;
  }
  for (const Dictionary& other : {Dictionary{{"hushpane.userMode", "reveal"}},
                                  {{"hushpane.userMode", "Focus"}},
                                  {{"hushpane.userMode", 2}},
                                  {{"hushpane.language", "focus"}}}) {
    ASSERT_TRUE(lists.writeXml(file, other));
    EXPECT_EQ(mode.read(), VeilMode::standard);
  }
  writeFile(file, "{ hushpane.userMode = cleanDesktop; }");
  EXPECT_EQ(mode.read(), VeilMode::cleanDesktop);
}

TEST_F(SharedModeTest, WritesTheModeAndKeepsTheRest) {
  EXPECT_TRUE(mode.write(VeilMode::focus));
  EXPECT_EQ(mode.file(), file);
  EXPECT_EQ(lists.read(file), (Dictionary{{"hushpane.userMode", "focus"}}));
  ASSERT_TRUE(lists.writeXml(file, {{"hushpane.language", "de"}, {"hushpane.userMode", "focus"}}));
  EXPECT_TRUE(mode.write(VeilMode::standard));
  EXPECT_EQ(lists.read(file), (Dictionary{{"hushpane.language", "de"}, {"hushpane.userMode", "standard"}}));
  EXPECT_FALSE(fs::exists(home / "config"));
}

TEST_F(SharedModeTest, WithoutASharedFolderTheSuiteServes) {
  blockData();
  EXPECT_EQ(mode.read(), VeilMode::standard);
  EXPECT_FALSE(fs::exists(home / "config"));
  EXPECT_TRUE(mode.write(VeilMode::focus));
  EXPECT_EQ(lists.read(suite), (Dictionary{{"hushpane.userMode", "focus"}}));
  EXPECT_EQ(mode.read(), VeilMode::focus);
}

TEST_F(SharedModeTest, TellsWhenNothingCanBeStored) {
  fs::create_directories(file);  // a folder where the file should be
  EXPECT_FALSE(mode.write(VeilMode::standard)) << "what is read there means standard, but is not stored";
  fs::remove_all(home / "data");
  blockData();
  writeFile(home / "config", "");
  EXPECT_FALSE(mode.write(VeilMode::focus));
  EXPECT_FALSE(SharedMode({}, queue).write(VeilMode::focus));
}

}  // namespace
}  // namespace hushpane::widget
