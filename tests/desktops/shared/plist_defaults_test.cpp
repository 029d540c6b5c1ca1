#include <gtest/gtest.h>

#include "desktops/shared/defaults_folder.h"
#include "desktops/shared/property_list.h"
#include "desktops/shared/xml_property_list.h"
#include "plist_defaults_stage.h"

namespace hushpane::desktops::tests {
namespace {

namespace fs = std::filesystem;
using platform::Date;
using platform::Dictionary;
using platform::Value;

std::optional<Dictionary> stored(const fs::path& file) {
  return PropertyListFiles().read(file);
}

TEST(PlistDefaults, WritesEveryChangeAtOnceAndKeepsItAcrossLaunches) {
  DefaultsStage stage;
  auto& first = stage.open();
  EXPECT_EQ(first.value("mode"), std::nullopt);
  first.set("mode", "focus");
  first.set("shake", true);
  first.set("count", 3);
  EXPECT_EQ(stored(stage.file), (Dictionary{{"mode", "focus"}, {"shake", true}, {"count", 3}}));
  first.remove("count");
  EXPECT_EQ(stored(stage.file), (Dictionary{{"mode", "focus"}, {"shake", true}}));
  auto& second = stage.open();
  EXPECT_EQ(second.get<std::string>("mode"), "focus");
  EXPECT_EQ(second.get<std::int64_t>("shake"), std::nullopt);
}

TEST(PlistDefaults, ReadsTheSameValueBeforeAndAfterARelaunch) {
  DefaultsStage stage;
  stage.open().set("date", Date{1e9 + 0.75});
  stage.defaults->set("text", "bad \xFF byte");
  const auto date = stage.defaults->value("date");
  const auto text = stage.defaults->value("text");
  EXPECT_EQ(stage.open().value("date"), date);
  EXPECT_EQ(stage.defaults->value("text"), text);
  EXPECT_EQ(date, Value(Date{1e9}));
}

TEST(PlistDefaults, WritesNothingWhenTheValueIsTheSame) {
  DefaultsStage stage;
  auto& defaults = stage.open();
  defaults.remove("mode");
  EXPECT_FALSE(fs::exists(stage.file));
  defaults.set("mode", "focus");
  const auto stamp = stampOf(stage.file);
  EXPECT_EQ(stage.takeNotifications(), 1);
  defaults.set("mode", "focus");
  defaults.remove("other");
  EXPECT_EQ(stampOf(stage.file), stamp);
  EXPECT_EQ(stage.takeNotifications(), 0);
}

TEST(PlistDefaults, TellsOnceOfEachBatchAndOnlyOfRealChanges) {
  DefaultsStage stage;
  auto& defaults = stage.open();
  defaults.set("a", 1);
  defaults.set("b", 2);
  EXPECT_EQ(stage.notifications, 0) << "never inside set()";
  EXPECT_EQ(stage.takeNotifications(), 1);
  defaults.set("a", 5);
  defaults.set("a", 1);
  EXPECT_EQ(stage.takeNotifications(), 0);
  writeFile(stage.file, contentsOf(stage.file) + "\n");
  EXPECT_EQ(stage.takeNotifications(), 0) << "the same values in other bytes";
}

TEST(PlistDefaults, TakesEditsByOthersWhicheverWayTheySave) {
  DefaultsStage stage;
  auto& defaults = stage.open();
  defaults.set("mode", "standard");
  stage.takeNotifications();
  const auto list = [](const char* mode) { return writeXmlPropertyList({{"mode", mode}}); };
  const auto expectMode = [&](const char* mode) {
    EXPECT_EQ(stage.takeNotifications(), 1) << mode;
    EXPECT_EQ(defaults.get<std::string>("mode"), mode);
  };

  writeFile(stage.file, list("in place"));
  expectMode("in place");
  writeFile(stage.folder / "settings/new", list("renamed over"));
  fs::rename(stage.folder / "settings/new", stage.file);
  expectMode("renamed over");
  fs::rename(stage.file, stage.folder / "settings/old~");
  stage.run(0.1);
  EXPECT_EQ(defaults.get<std::string>("mode"), "renamed over") << "an editor may be between two steps";
  writeFile(stage.file, "{mode = \"moved away and made anew\";}");
  expectMode("moved away and made anew");
  fs::remove(stage.file);
  EXPECT_EQ(stage.takeNotifications(), 1);
  EXPECT_EQ(defaults.value("mode"), std::nullopt);
}

TEST(PlistDefaults, FollowsALinkToTheSettingsAndTheLinkItself) {
  DefaultsStage stage;
  fs::create_directory(stage.folder / "dotfiles");
  const auto target = stage.folder / "dotfiles/hushpane.plist";
  const auto other = stage.folder / "dotfiles/other.plist";
  writeFile(target, writeXmlPropertyList({{"mode", "first"}}));
  writeFile(other, writeXmlPropertyList({{"mode", "third"}}));
  fs::create_symlink(target, stage.file);
  auto& defaults = stage.open();
  EXPECT_EQ(defaults.get<std::string>("mode"), "first");
  writeFile(target, writeXmlPropertyList({{"mode", "second"}}));
  stage.run();
  EXPECT_EQ(defaults.get<std::string>("mode"), "second");
  defaults.set("mode", "ours");
  EXPECT_TRUE(fs::is_symlink(stage.file));
  EXPECT_EQ(stored(target), (Dictionary{{"mode", "ours"}}));
  fs::remove(stage.file);
  fs::create_symlink(other, stage.file);
  stage.run();
  EXPECT_EQ(defaults.get<std::string>("mode"), "third");
  writeFile(other, writeXmlPropertyList({{"mode", "fourth"}}));
  stage.run();
  EXPECT_EQ(defaults.get<std::string>("mode"), "fourth");
}

TEST(PlistDefaults, NeverDropsWhatAnotherWriterHasJustStored) {
  DefaultsStage stage;
  auto& defaults = stage.open();
  defaults.set("mode", "focus");
  stage.takeNotifications();
  writeFile(stage.file, writeXmlPropertyList({{"mode", "focus"}, {"theirs", 1}}));
  defaults.set("ours", 2);
  EXPECT_EQ(stored(stage.file), (Dictionary{{"mode", "focus"}, {"theirs", 1}, {"ours", 2}}));
  EXPECT_EQ(defaults.value("theirs"), Value(1));
  EXPECT_EQ(stage.takeNotifications(), 1);
}

TEST(PlistDefaults, GoesOnWhenItsFolderWasRemovedMeanwhile) {
  DefaultsStage stage;
  auto& defaults = stage.open();
  defaults.set("mode", "focus");
  fs::remove_all(stage.file.parent_path());
  stage.run();
  defaults.set("shake", true);
  EXPECT_EQ(stored(stage.file), (Dictionary{{"shake", true}}));
  writeFile(stage.file, writeXmlPropertyList({{"mode", "edited"}}));
  stage.run();
  EXPECT_EQ(defaults.value("mode"), Value("edited"));
}

TEST(PlistDefaults, MayEndInsideItsOwnNotification) {
  DefaultsStage stage;
  stage.open().set("mode", "focus");
  const auto observer =
      stage.center.addObserver(platform::notification::userDefaultsDidChange, [&stage] { stage.defaults.reset(); });
  EXPECT_EQ(stage.takeNotifications(), 1);
  EXPECT_EQ(stage.defaults, nullptr);
}

TEST(DefaultsFolder, KeepsEachSetInAFileOfItsName) {
  const TemporaryFolder folder;
  sim::SimMainQueue queue;
  platform::NotificationCenter center;
  DefaultsFolder sets(folder / "hushpane", queue, center);
  auto* standard = sets.open("com.corvane.Hushpane");
  ASSERT_NE(standard, nullptr);
  EXPECT_EQ(sets.open("com.corvane.Hushpane"), standard);
  standard->set("key", 1);
  sets.open("group")->set("key", 2);
  EXPECT_EQ(stored(folder / "hushpane/com.corvane.Hushpane.plist"), (Dictionary{{"key", 1}}));
  EXPECT_EQ(stored(folder / "hushpane/group.plist"), (Dictionary{{"key", 2}}));
  for (const auto* name : {"", "..", "../x", "a/b", ".hidden"}) EXPECT_EQ(sets.open(name), nullptr) << name;

  DefaultsFolder nowhere(std::nullopt, queue, center);
  nowhere.open("com.corvane.Hushpane")->set("key", 3);
  EXPECT_EQ(nowhere.open("com.corvane.Hushpane")->value("key"), Value(3));
}

}  // namespace
}  // namespace hushpane::desktops::tests
