#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>
#include <thread>

#include "desktops/shared/property_list.h"
#include "desktops/shared/xml_property_list.h"
#include "plist_defaults_stage.h"

namespace hushpane::desktops::tests {
namespace {

namespace fs = std::filesystem;
using platform::Dictionary;
using platform::Value;

std::optional<Dictionary> stored(const fs::path& file) {
  return PropertyListFiles().read(file);
}

// Runs the block in a child process that ends with 0 when the block returns true.
int exitStatusOf(const std::function<bool()>& block) {
  const pid_t child = fork();
  if (child == 0) _exit(block() ? 0 : 1);
  int status = 0;
  waitpid(child, &status, 0);
  return status;
}

// From here on no file may grow beyond `bytes`, which is what a full disk looks like.
void limitFiles(rlim_t bytes) {
  signal(SIGXFSZ, SIG_IGN);
  const rlimit limit{bytes, bytes};
  setrlimit(RLIMIT_FSIZE, &limit);
}

TEST(PlistDefaultsFaults, ABrokenFileGivesNoValuesAndIsKeptBesideTheNextWrite) {
  DefaultsStage stage;
  writeFile(stage.file, "<plist><dict><key>mode</key>");
  auto& defaults = stage.open();
  EXPECT_EQ(defaults.value("mode"), std::nullopt);
  EXPECT_EQ(stage.takeNotifications(), 0);
  EXPECT_EQ(contentsOf(stage.file), "<plist><dict><key>mode</key>") << "reading changes nothing";
  defaults.set("shake", true);
  EXPECT_EQ(contentsOf(stage.file.string() + ".broken"), "<plist><dict><key>mode</key>");
  EXPECT_EQ(stored(stage.file), (Dictionary{{"shake", true}}));
  defaults.set("shake", false);
  EXPECT_EQ(contentsOf(stage.file.string() + ".broken"), "<plist><dict><key>mode</key>");
}

TEST(PlistDefaultsFaults, AFileBrokenMeanwhileLeavesTheLastGoodValues) {
  DefaultsStage stage;
  auto& defaults = stage.open();
  defaults.set("mode", "focus");
  stage.takeNotifications();
  for (const auto* bytes : {"", "garbage", "<plist><array/></plist>", "bplist00"}) {
    writeFile(stage.file, bytes);
    EXPECT_EQ(stage.takeNotifications(), 0) << bytes;
    EXPECT_EQ(defaults.value("mode"), Value("focus")) << bytes;
  }
  writeFile(stage.file, writeXmlPropertyList({{"mode", "mended"}}));
  EXPECT_EQ(stage.takeNotifications(), 1);
  EXPECT_EQ(defaults.value("mode"), Value("mended"));
  EXPECT_FALSE(fs::exists(stage.file.string() + ".broken"));
  writeFile(stage.file, "garbage");
  defaults.set("shake", true);
  EXPECT_EQ(stored(stage.file), (Dictionary{{"mode", "mended"}, {"shake", true}}));
  EXPECT_EQ(contentsOf(stage.file.string() + ".broken"), "garbage");
}

TEST(PlistDefaultsFaults, WithoutAPlaceToWriteValuesHoldUntilThereIsOne) {
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
  EXPECT_EQ(stored(stage.file), (Dictionary{{"mode", "standard"}, {"language", "de"}, {"shake", true}}))
      << "what was set meanwhile goes in with the next write, beside what others stored";
}

TEST(PlistDefaultsFaults, SomethingElseInPlaceOfTheFileIsLeftAlone) {
  DefaultsStage stage;
  fs::create_directory(stage.file);
  auto& defaults = stage.open();
  defaults.set("mode", "focus");
  EXPECT_EQ(defaults.value("mode"), Value("focus"));
  EXPECT_TRUE(fs::is_directory(stage.file));
}

TEST(PlistDefaultsFaults, AFullDiskLeavesTheOldFileAndNothingElse) {
  DefaultsStage stage;
  stage.open().set("mode", "focus");
  const auto before = contentsOf(stage.file);
  const int status = exitStatusOf([&stage] {
    limitFiles(400);
    stage.defaults->set("long", std::string(4000, 'x'));
    return stage.defaults->get<std::string>("long") == std::string(4000, 'x');
  });
  EXPECT_EQ(status, 0);
  EXPECT_EQ(contentsOf(stage.file), before);
  writeFile(stage.file, std::string(1000, '{'));
  EXPECT_EQ(exitStatusOf([&stage] {
              limitFiles(400);
              stage.defaults->set("mode", "standard");
              return stage.defaults->value("mode") == Value("standard");
            }),
            0);
  EXPECT_EQ(contentsOf(stage.file), std::string(1000, '{')) << "broken bytes that cannot be kept are not replaced";
  for (const auto& entry : fs::directory_iterator(stage.file.parent_path()))
    EXPECT_NE(entry.path().filename().string().front(), '.') << entry;
}

TEST(PlistDefaultsFaults, AKillAtAnyMomentLeavesAWholeFile) {
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
    const auto list = stored(stage.file);
    ASSERT_TRUE(list) << "after kill " << kills;
    const auto round = list->at("round").as<std::int64_t>();
    ASSERT_TRUE(round && *round >= last);
    last = *round;
  }
  EXPECT_GT(last, 0) << "the child never came to write";
}

}  // namespace
}  // namespace hushpane::desktops::tests
