#include "desktops/shared/plist_defaults.h"

#include <glib.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <thread>

#include "desktops/shared/defaults_folder.h"
#include "desktops/shared/property_list.h"
#include "desktops/shared/xml_property_list.h"
#include "desktops/sim/sim_main_queue.h"
#include "support/temporary_folder.h"

namespace hushpane::desktops::tests {
namespace {

namespace fs = std::filesystem;
using platform::Date;
using platform::Dictionary;
using platform::Value;

std::string listWith(const char* mode) {
  return writeXmlPropertyList({{"mode", mode}});
}

// Settings in a file, in virtual time; counts the notifications.
struct DefaultsStage {
  TemporaryFolder folder;
  fs::path file = folder / "settings/com.corvane.Hushpane.plist";
  sim::SimMainQueue queue;
  platform::NotificationCenter center;
  int notifications = 0;
  platform::Token observer =
      center.addObserver(platform::notification::userDefaultsDidChange, [this] { ++notifications; });
  std::unique_ptr<PlistDefaults> defaults;

  DefaultsStage() { fs::create_directory(file.parent_path()); }

  PlistDefaults& open() {
    defaults.reset();
    defaults = std::make_unique<PlistDefaults>(file, queue, center);
    return *defaults;
  }

  std::optional<Dictionary> stored() const { return PropertyListFiles().read(file); }

  // Runs what the kernel has told of so far, then lets `seconds` pass.
  void run(double seconds = 1) {
    while (g_main_context_iteration(nullptr, false)) {
    }
    queue.advance(seconds);
  }

  // The notifications since the last call, once all is quiet.
  int takeNotifications() {
    run();
    return std::exchange(notifications, 0);
  }
};

TEST(PlistDefaults, WritesEveryChangeAtOnceAndKeepsItAcrossLaunches) {
  DefaultsStage stage;
  auto& first = stage.open();
  EXPECT_EQ(first.value("mode"), std::nullopt);
  first.set("mode", "focus");
  first.set("shake", true);
  first.set("count", 3);
  EXPECT_EQ(stage.stored(), (Dictionary{{"mode", "focus"}, {"shake", true}, {"count", 3}}));
  first.remove("count");
  first.set("date", Date{1e9 + 0.75});
  first.set("text", "bad \xFF byte");
  const Dictionary all{{"mode", "focus"}, {"shake", true}, {"date", Date{1e9}}, {"text", "bad \uFFFD byte"}};
  EXPECT_EQ(stage.stored(), all);
  for (const auto& [key, value] : all) EXPECT_EQ(first.value(key), value) << key;
  auto& second = stage.open();
  for (const auto& [key, value] : all) EXPECT_EQ(second.value(key), value) << key;
}

TEST(PlistDefaults, WritesAndTellsOfRealChangesOnlyAndOnceOfEachBatch) {
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
  const auto expectMode = [&](const char* mode) {
    EXPECT_EQ(stage.takeNotifications(), 1) << mode;
    EXPECT_EQ(defaults.get<std::string>("mode"), mode);
  };

  writeFile(stage.file, listWith("in place"));
  expectMode("in place");
  writeFile(stage.folder / "settings/new", listWith("renamed over"));
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
  writeFile(target, listWith("first"));
  writeFile(other, listWith("third"));
  fs::create_symlink(target, stage.file);
  auto& defaults = stage.open();
  const auto expectMode = [&](const char* mode) {
    stage.run();
    EXPECT_EQ(defaults.get<std::string>("mode"), mode);
  };
  EXPECT_EQ(defaults.get<std::string>("mode"), "first");
  writeFile(target, listWith("second"));
  expectMode("second");
  defaults.set("mode", "ours");
  EXPECT_TRUE(fs::is_symlink(stage.file));
  EXPECT_EQ(PropertyListFiles().read(target), (Dictionary{{"mode", "ours"}}));
  fs::remove(stage.file);
  fs::create_symlink(other, stage.file);
  expectMode("third");
  writeFile(other, listWith("fourth"));
  expectMode("fourth");
}

TEST(PlistDefaults, NeverDropsWhatAnotherWriterHasJustStored) {
  DefaultsStage stage;
  auto& defaults = stage.open();
  defaults.set("mode", "focus");
  stage.takeNotifications();
  writeFile(stage.file, writeXmlPropertyList({{"mode", "focus"}, {"theirs", 1}}));
  defaults.set("ours", 2);
  EXPECT_EQ(stage.stored(), (Dictionary{{"mode", "focus"}, {"theirs", 1}, {"ours", 2}}));
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
  EXPECT_EQ(stage.stored(), (Dictionary{{"shake", true}}));
  writeFile(stage.file, listWith("edited"));
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

TEST(PlistDefaults, ABrokenFileGivesNoValuesAndIsKeptBesideTheNextWrite) {
  DefaultsStage stage;
  writeFile(stage.file, "<plist><dict><key>mode</key>");
  auto& defaults = stage.open();
  EXPECT_EQ(defaults.value("mode"), std::nullopt);
  EXPECT_EQ(stage.takeNotifications(), 0);
  EXPECT_EQ(contentsOf(stage.file), "<plist><dict><key>mode</key>") << "reading changes nothing";
  defaults.set("shake", true);
  EXPECT_EQ(contentsOf(stage.file.string() + ".broken"), "<plist><dict><key>mode</key>");
  EXPECT_EQ(stage.stored(), (Dictionary{{"shake", true}}));
  defaults.set("shake", false);
  EXPECT_EQ(contentsOf(stage.file.string() + ".broken"), "<plist><dict><key>mode</key>");
}

TEST(PlistDefaults, AFileBrokenMeanwhileLeavesTheLastGoodValues) {
  DefaultsStage stage;
  auto& defaults = stage.open();
  defaults.set("mode", "focus");
  stage.takeNotifications();
  for (const auto* bytes : {"", "garbage", "<plist><array/></plist>", "bplist00"}) {
    writeFile(stage.file, bytes);
    EXPECT_EQ(stage.takeNotifications(), 0) << bytes;
    EXPECT_EQ(defaults.value("mode"), Value("focus")) << bytes;
  }
  writeFile(stage.file, listWith("mended"));
  EXPECT_EQ(stage.takeNotifications(), 1);
  EXPECT_EQ(defaults.value("mode"), Value("mended"));
  EXPECT_FALSE(fs::exists(stage.file.string() + ".broken"));
  writeFile(stage.file, "garbage");
  defaults.set("shake", true);
  EXPECT_EQ(stage.stored(), (Dictionary{{"mode", "mended"}, {"shake", true}}));
  EXPECT_EQ(contentsOf(stage.file.string() + ".broken"), "garbage");
}

TEST(PlistDefaults, WithoutAPlaceToWriteValuesHoldUntilThereIsOne) {
  DefaultsStage stage;
  fs::remove(stage.file.parent_path());
  writeFile(stage.file.parent_path(), "a file where the folder should be");
  auto& defaults = stage.open();
  defaults.set("mode", "focus");
  defaults.set("mode", "standard");
  defaults.set("count", 1);
  defaults.remove("count");
  EXPECT_EQ(defaults.value("mode"), Value("standard"));
  EXPECT_EQ(stage.takeNotifications(), 1);
  EXPECT_EQ(stage.folder.names(), (std::set<std::string>{"settings"}));

  fs::remove(stage.file.parent_path());
  fs::create_directory(stage.file.parent_path());
  writeFile(stage.file, writeXmlPropertyList({{"mode", "theirs"}, {"count", 7}, {"language", "de"}}));
  defaults.set("shake", true);
  EXPECT_EQ(stage.stored(), (Dictionary{{"mode", "standard"}, {"language", "de"}, {"shake", true}}))
      << "what was set meanwhile goes in with the next write, beside what others stored";
}

// Whether the settings hold a value set in a process whose files may not grow beyond 400 bytes, which is what a full
// disk looks like.
bool holdsOnAFullDisk(PlistDefaults& defaults, const char* key, const std::string& value) {
  const pid_t child = fork();
  if (child == 0) {
    signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{400, 400};
    setrlimit(RLIMIT_FSIZE, &limit);
    defaults.set(key, value);
    _exit(defaults.value(key) == Value(value) ? 0 : 1);
  }
  int status = -1;
  waitpid(child, &status, 0);
  return status == 0;
}

TEST(PlistDefaults, AFullDiskLeavesTheOldFileAndNothingElse) {
  DefaultsStage stage;
  stage.open().set("mode", "focus");
  const auto before = contentsOf(stage.file);
  EXPECT_TRUE(holdsOnAFullDisk(*stage.defaults, "long", std::string(4000, 'x')));
  EXPECT_EQ(contentsOf(stage.file), before);
  writeFile(stage.file, std::string(1000, '{'));
  EXPECT_TRUE(holdsOnAFullDisk(*stage.defaults, "mode", "standard"));
  EXPECT_EQ(contentsOf(stage.file), std::string(1000, '{')) << "broken bytes that cannot be kept are not replaced";
  for (const auto& entry : fs::directory_iterator(stage.file.parent_path()))
    EXPECT_NE(entry.path().filename().string().front(), '.') << entry;
}

TEST(PlistDefaults, AKillAtAnyMomentLeavesAWholeFile) {
  DefaultsStage stage;
  stage.open().set("round", 0);
  std::int64_t last = 0;
  for (int kills = 0; kills < 40; ++kills) {
    const pid_t child = fork();
    if (child == 0)
      for (std::int64_t round = last + 1;; ++round) {
        stage.defaults->set("round", round);
        stage.defaults->set("filling", std::string(static_cast<std::size_t>(round * 37 % 20'000), 'x'));
      }
    std::this_thread::sleep_for(std::chrono::microseconds(2000 + kills * 313));
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    const auto list = stage.stored();
    ASSERT_TRUE(list) << "after kill " << kills;
    const auto round = list->at("round").as<std::int64_t>();
    ASSERT_TRUE(round && *round >= last);
    last = *round;
  }
  EXPECT_GT(last, 0) << "the child never came to write";
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
  EXPECT_EQ(PropertyListFiles().read(folder / "hushpane/com.corvane.Hushpane.plist"), (Dictionary{{"key", 1}}));
  EXPECT_EQ(PropertyListFiles().read(folder / "hushpane/group.plist"), (Dictionary{{"key", 2}}));
  for (const auto* name : {"", "..", "../x", "a/b", ".hidden"}) EXPECT_EQ(sets.open(name), nullptr) << name;

  DefaultsFolder nowhere(std::nullopt, queue, center);
  nowhere.open("com.corvane.Hushpane")->set("key", 3);
  EXPECT_EQ(nowhere.open("com.corvane.Hushpane")->value("key"), Value(3));
}

}  // namespace
}  // namespace hushpane::desktops::tests
