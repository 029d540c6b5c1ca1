#include <fstream>

#include "contract/stage.h"

namespace hushpane::contract_tests {
namespace {

using platform::Array;
using platform::Data;
using platform::Date;
using platform::Dictionary;
using platform::Event;
using platform::EventType;
using platform::Value;

const Dictionary everyType{{"flag", true},
                           {"whole", std::int64_t{-7}},
                           {"real", 0.25},
                           {"text", "Ein <Täst> & mehr"},
                           {"empty", ""},
                           {"data", Data{0, 1, 254, 255}},
                           {"date", Date{1'700'000'000}},
                           {"array", Array{1, "two", false}},
                           {"dictionary", Dictionary{{"7", true}, {"9", false}}}};

TEST_P(ContractTest, ADisplayComesAndGoesUnderTheSameId) {
  const auto& screens = platform().screens();
  const auto before = screens.screens();
  ASSERT_FALSE(before.empty());
  ASSERT_TRUE(before.front().displayId);
  int told = 0;
  auto observer =
      platform().notificationCenter().addObserver(platform::notification::screenParametersDidChange, [&] { ++told; });
  const auto changesTo = [&](std::size_t count) {
    return stage->waitUntil([&] { return told > 0 && screens.screens().size() == count; });
  };
  stage->plugInDisplay();
  ASSERT_TRUE(changesTo(before.size() + 1));
  const auto added = screens.screens().back();
  EXPECT_EQ(screens.screens().front(), before.front());
  EXPECT_GE(added.frame.x, before.front().frame.right());
  EXPECT_GT(added.frame.area(), 0);
  EXPECT_NE(added.displayId, before.front().displayId);

  told = 0;
  stage->unplugDisplay();
  ASSERT_TRUE(changesTo(before.size()));
  told = 0;
  stage->plugInDisplay();
  ASSERT_TRUE(changesTo(before.size() + 1));
  EXPECT_EQ(screens.screens().back().displayId, added.displayId);
}

TEST_P(ContractTest, GlobalMonitorsSeeModifiersAndKeysUntilTheyAreDropped) {
  auto& monitors = platform().eventMonitors();
  std::vector<Event> events;
  const auto collect = [&](const Event& event) { events.push_back(event); };
  auto flags = monitors.addGlobalMonitor(maskOf(EventType::flagsChanged), collect);
  auto keys = monitors.addGlobalMonitor(maskOf(EventType::keyDown), collect);
  constexpr std::uint16_t letterK = 40;
  const auto received = [&](std::size_t count) { return stage->waitUntil([&] { return events.size() == count; }); };
  stage->run(0.05);

  stage->pressModifier(platform::modifier::option);
  ASSERT_TRUE(received(1));
  EXPECT_EQ(events[0].type, EventType::flagsChanged);
  EXPECT_TRUE(events[0].modifierFlags & platform::modifier::option);
  EXPECT_TRUE(monitors.modifierFlags() & platform::modifier::option);

  stage->typeKey(letterK);
  ASSERT_TRUE(received(2));
  EXPECT_EQ(events[1].type, EventType::keyDown);
  EXPECT_EQ(events[1].keyCode, letterK);
  EXPECT_TRUE(events[1].modifierFlags & platform::modifier::option);

  keys.reset();
  stage->typeKey(letterK);
  stage->releaseModifier(platform::modifier::option);
  ASSERT_TRUE(received(3));
  EXPECT_EQ(events[2].type, EventType::flagsChanged);
  EXPECT_FALSE(events[2].modifierFlags & platform::modifier::option);
  EXPECT_FALSE(monitors.modifierFlags() & platform::modifier::option);

  flags.reset();
  stage->pressModifier(platform::modifier::shift);
  stage->releaseModifier(platform::modifier::shift);
  stage->run(0.2);
  EXPECT_EQ(events.size(), 3u);
}

TEST_P(ContractTest, AHotKeyIsThePressOfExactlyItsCombination) {
  using namespace platform::modifier;
  constexpr std::uint16_t letterK = 40;
  auto& hotKeys = platform().hotKeys();
  std::vector<platform::HotKeyID> pressed;
  const auto handler = hotKeys.installHandler([&](platform::HotKeyID id) { pressed.push_back(id); });
  auto key = hotKeys.registerHotKey(letterK, control | option | capsLock, {5, 7});
  ASSERT_TRUE(key);
  EXPECT_FALSE(hotKeys.registerHotKey(letterK, control | option, {5, 8})) << "taken";
  EXPECT_FALSE(stage->takeHotKey(letterK, control | option));
  EXPECT_FALSE(hotKeys.registerHotKey(60'000, control, {5, 9})) << "no such key";
  const auto type = [&](std::initializer_list<platform::ModifierFlags> modifiers) {
    for (const auto modifier : modifiers) stage->pressModifier(modifier);
    stage->typeKey(letterK);
    for (const auto modifier : modifiers) stage->releaseModifier(modifier);
  };
  type({});
  type({control});
  type({control, option, shift});
  type({control, option});
  ASSERT_TRUE(stage->waitUntil([&] { return !pressed.empty(); }));
  stage->run(0.2);
  EXPECT_EQ(pressed, (std::vector<platform::HotKeyID>{{5, 7}}));
  key.reset();
  type({control, option});
  stage->run(0.2);
  EXPECT_EQ(pressed.size(), 1u);
  EXPECT_TRUE(hotKeys.registerHotKey(letterK, control | option, {5, 8})) << "free again";
  stage->run(0.05);
  EXPECT_TRUE(stage->takeHotKey(letterK, control | option)) << "free for all";
  EXPECT_FALSE(hotKeys.registerHotKey(letterK, control | option, {5, 8}));
}

TEST_P(ContractTest, AHotKeyThatTheKeyboardMapMovesIsLostAndCanBeHadWhereNobodyElseIs) {
  using namespace platform::modifier;
  constexpr std::uint16_t letterS = 1, letterJ = 38, letterK = 40;
  auto& hotKeys = platform().hotKeys();
  std::vector<platform::HotKeyID> lost;
  const auto changes = hotKeys.installChangeHandler(
      [&](const std::vector<platform::HotKeyID>& ids) { lost.insert(lost.end(), ids.begin(), ids.end()); });
  const auto losesAlone = [&](platform::HotKeyID id) {
    lost.clear();
    stage->swapKeys();
    return stage->waitUntil([&] { return !lost.empty(); }) && lost == std::vector{id};
  };
  auto moving = hotKeys.registerHotKey(letterK, control | option, {5, 7});
  const auto staying = hotKeys.registerHotKey(letterS, control | option, {5, 8});
  ASSERT_TRUE(stage->takeHotKey(letterJ, control | option));
  stage->run(0.05);
  EXPECT_TRUE(losesAlone({5, 7}));
  EXPECT_FALSE(hotKeys.registerHotKey(letterK, control | option, {5, 7})) << "the other program has that place";
  auto other = hotKeys.registerHotKey(letterJ, control | option, {5, 9});
  EXPECT_TRUE(other);
  EXPECT_TRUE(losesAlone({5, 9}));
  auto again = hotKeys.registerHotKey(letterK, control | option, {5, 7});
  moving.reset();
  EXPECT_FALSE(hotKeys.registerHotKey(letterK, control | option, {5, 10})) << "the end of the lost one changes nothing";
  EXPECT_FALSE(hotKeys.registerHotKey(letterS, control | option, {5, 10}));
}

TEST_P(ContractTest, MouseMovementIsToldInPointsWhileSomebodyListens) {
  double moved = 0;
  int events = 0;
  auto monitor = platform().eventMonitors().addGlobalMonitor(maskOf(EventType::mouseMoved), [&](const Event& event) {
    moved += event.deltaX;
    ++events;
  });
  stage->run(0.05);
  for (const double step : {30, -50, 8}) stage->moveMouse(step);
  EXPECT_TRUE(stage->waitUntil([&] { return events >= 3; }));
  EXPECT_DOUBLE_EQ(moved, -12);
  monitor.reset();
  stage->moveMouse(25);
  stage->run(0.2);
  EXPECT_DOUBLE_EQ(moved, -12);
}

TEST_P(ContractTest, SettingsKeepEveryTypeAndTellOfChangesOncePerBatch) {
  auto& defaults = platform().userDefaults();
  int told = 0;
  auto observer =
      platform().notificationCenter().addObserver(platform::notification::userDefaultsDidChange, [&] { ++told; });
  for (const auto& [key, value] : everyType) {
    defaults.set(key, value);
    EXPECT_EQ(defaults.value(key), value) << key;
  }
  EXPECT_EQ(told, 0) << "told inside the call";
  ASSERT_TRUE(stage->waitUntil([&] { return told > 0; }));
  stage->run(0.3);
  EXPECT_EQ(told, 1);
  EXPECT_EQ(defaults.get<double>("whole"), std::nullopt);
  EXPECT_EQ(defaults.get<bool>("flag"), true);

  defaults.remove("flag");
  EXPECT_EQ(defaults.value("flag"), std::nullopt);
  EXPECT_TRUE(stage->waitUntil([&] { return told == 2; }));
}

TEST_P(ContractTest, AnotherProgramsChangeOfASettingIsSeenAndTold) {
  auto& defaults = platform().userDefaults();
  defaults.set("mine", "kept");
  stage->run(0.3);
  bool told = false;
  auto observer =
      platform().notificationCenter().addObserver(platform::notification::userDefaultsDidChange, [&] { told = true; });
  stage->changeSetting("theirs", 3);
  EXPECT_TRUE(stage->waitUntil([&] { return told && defaults.value("theirs") == Value(3); }));
  EXPECT_EQ(defaults.get<std::string>("mine"), "kept");
}

TEST_P(ContractTest, SuitesAreApartFromTheStandardSettings) {
  auto* suite = platform().userDefaultsSuite("group.com.corvane.Hushpane");
  ASSERT_TRUE(suite);
  suite->set("key", "of the suite");
  EXPECT_EQ(suite->get<std::string>("key"), "of the suite");
  EXPECT_EQ(platform().userDefaults().value("key"), std::nullopt);
}

TEST_P(ContractTest, TheSharedFolderKeepsPropertyListsAndBookmarksFindThem) {
  const auto folder = platform().sharedContainer().url("group.com.corvane.Hushpane");
  ASSERT_TRUE(folder);
  EXPECT_EQ(platform().sharedContainer().url("group.com.corvane.Hushpane"), folder);
  auto& lists = platform().propertyLists();
  const auto file = *folder / "list.plist";
  EXPECT_EQ(lists.read(file), std::nullopt);
  ASSERT_TRUE(lists.writeXml(file, everyType));
  EXPECT_EQ(lists.read(file), everyType);
  EXPECT_FALSE(lists.writeXml(*folder / "missing" / "list.plist", everyType));
  std::ofstream(file) << "<plist><dict><key>half";
  EXPECT_EQ(lists.read(file), std::nullopt);

  auto& bookmarks = platform().bookmarks();
  EXPECT_EQ(bookmarks.create(*folder / "missing.png"), std::nullopt);
  const auto bookmark = bookmarks.create(file);
  ASSERT_TRUE(bookmark);
  std::filesystem::rename(file, *folder / "renamed");
  const auto renamed = bookmarks.resolve(*bookmark);
  ASSERT_TRUE(renamed);
  EXPECT_EQ(renamed->path, *folder / "renamed");
  EXPECT_TRUE(renamed->isStale);
}

}  // namespace
}  // namespace hushpane::contract_tests
