#include "input/shortcut_registry.h"

#include <string>
#include <utility>
#include <vector>

#include "support/simulated_program.h"

namespace hushpane::tests {
namespace {

using Action = HushpaneShortcut::Action;
using namespace platform::modifier;

constexpr std::uint16_t keyS = 1, keyA = 0, keyF = 3, keyG = 5;

const std::string defaultText = R"([{"action":"setStandard","enabled":true,"keyCode":1,"modifiersRaw":786432},)"
                                R"({"action":"toggleCleanDesktop","enabled":true,"keyCode":0,"modifiersRaw":786432},)"
                                R"({"action":"toggleFocus","enabled":true,"keyCode":3,"modifiersRaw":786432}])";

class ShortcutRegistryTest : public SimulatedProgram {
 protected:
  void storeText(const std::string& text) { store(storedKeys::shortcuts, platform::Data(text.begin(), text.end())); }
  std::string storedText() {
    const auto data = stored(storedKeys::shortcuts).as<platform::Data>();
    return data ? std::string(data->begin(), data->end()) : "no data";
  }
  ShortcutRegistry& registry() { return ShortcutRegistry::shared(); }

  // Presses the key with Control and Option from another program; true when the program took it.
  bool press(std::uint16_t keyCode) {
    desktop->eventMonitors().pressModifier(control | option);
    const bool isTaken = !desktop->typeKey(keyCode);
    desktop->eventMonitors().releaseModifier(control | option);
    desktop->drain();
    return isTaken;
  }
  int switches() { return static_cast<int>(stored(storedKeys::reviewSwitchCount).as<std::int64_t>().value_or(0)); }
};

TEST_F(ShortcutRegistryTest, TheThreeKeysSwitchFromAnyProgram) {
  launch();
  EXPECT_EQ(desktop->hotKeys().registeredCount(), 3u);
  EXPECT_TRUE(press(keyF));
  EXPECT_EQ(state().userMode(), VeilMode::focus);
  EXPECT_TRUE(press(keyF));
  EXPECT_EQ(switches(), 1) << "already there";
  EXPECT_TRUE(press(keyA));
  EXPECT_TRUE(press(keyA));
  EXPECT_EQ(state().userMode(), VeilMode::cleanDesktop);
  EXPECT_TRUE(press(keyS));
  EXPECT_EQ(state().userMode(), VeilMode::standard);
  EXPECT_TRUE(press(keyS));
  EXPECT_EQ(switches(), 4) << "the way back is counted each time";
  EXPECT_EQ(stored(storedKeys::lastUserMode), platform::Value("standard"));
  EXPECT_FALSE(press(keyG));
  desktop->eventMonitors().pressModifier(control | option | shift);
  EXPECT_TRUE(desktop->typeKey(keyF)) << "another combination";
}

TEST_F(ShortcutRegistryTest, APressNeverSwitchesInsideItsEvent) {
  launch();
  registry().handleHotKey(3);
  EXPECT_EQ(state().userMode(), VeilMode::standard);
  desktop->drain();
  EXPECT_EQ(state().userMode(), VeilMode::focus);
  for (const std::uint32_t stranger : {0u, 4u, 0xFFFFFFFFu}) registry().handleHotKey(stranger);
  desktop->drain();
  EXPECT_EQ(switches(), 1);
  registry().handleHotKey(1);
  desktop.reset();  // the program ends with the press on its way
}

TEST_F(ShortcutRegistryTest, StoredRecordsReplaceTheirDefaultsAndAreWrittenBackWhole) {
  storeText(R"( [ {"enabled": false, "modifiersRaw": 786432, "action": "toggleFocus", "keyCode": 3} ] )");
  launch();
  EXPECT_EQ(desktop->hotKeys().registeredCount(), 2u);
  EXPECT_FALSE(press(keyF));
  auto expected = defaultText;
  const auto last = expected.rfind("true");
  EXPECT_EQ(storedText(), expected.replace(last, 4, "false"));
}

TEST_F(ShortcutRegistryTest, OfTwoRecordsForAnActionTheLaterCounts) {
  storeText(R"([{"action":"toggleFocus","enabled":true,"keyCode":40,"modifiersRaw":1048576},)"
            R"({"action":"toggleFocus","enabled":true,"keyCode":5,"modifiersRaw":18446744073709551615,"note":[{}]}])");
  launch();
  const auto* focus = registry().shortcut(Action::toggleFocus);
  ASSERT_NE(focus, nullptr);
  EXPECT_EQ(*focus, (HushpaneShortcut{Action::toggleFocus, true, keyG, ~std::uint64_t{0}}));
  EXPECT_EQ(focus->modifiers(), shift | control | option | command);
  EXPECT_EQ(registry().shortcuts().size(), 3u);
  EXPECT_NE(storedText().find("18446744073709551615"), std::string::npos) << "nothing of it is lost";
}

TEST_F(ShortcutRegistryTest, DataThatCannotBeReadIsLeftAlone) {
  const std::string good = R"({"action":"setStandard","enabled":true,"keyCode":1,"modifiersRaw":0})";
  std::vector<std::string> texts{
      "", "{}", good, "[" + good, "[" + good + ",]", "[" + good + "]]", "\xff\xfe", std::string(100'000, '[')};
  for (const auto* record : {"[]", "null", "7"}) texts.push_back("[" + good + "," + record + "]");
  const std::pair<std::string, std::vector<std::string>> faults[] = {
      {R"("setStandard")", {R"("reveal")", R"("SetStandard")", "0"}},
      {"true", {"1", R"("true")", "null"}},
      {":1,", {R"(:"1",)", ":true,", ":1.5,", ":1e400,", ":65536,", ":-1,"}},
      {":0}", {":18446744073709551616}", ":-9223372036854775808}"}},
      {R"("action")", {R"("Action")"}},
      {R"("enabled":true,)", {""}},
      {R"("keyCode":1,)", {""}},
      {R"(,"modifiersRaw":0)", {""}},
  };
  for (const auto& [sound, replacements] : faults)
    for (const auto& fault : replacements)
      texts.push_back("[" + good + "," + std::string(good).replace(good.find(sound), sound.size(), fault) + "]");
  for (const auto& text : texts) {
    storeText(text);
    relaunch();
    EXPECT_EQ(registry().shortcuts(), defaultShortcuts()) << text;
    EXPECT_EQ(storedText(), text);
  }
  store(storedKeys::shortcuts, defaultText);
  relaunch();
  EXPECT_EQ(stored(storedKeys::shortcuts), platform::Value(defaultText)) << "a text is no data";
  registry().setEnabled(false, Action::setStandard);
  EXPECT_NE(storedText().find(R"("enabled":false)"), std::string::npos) << "the next change replaces it";
}

TEST_F(ShortcutRegistryTest, EveryChangeRegistersAllAnew) {
  launch();
  int announcements = 0;
  const auto observer = registry().observe([&] { ++announcements; });
  registry().setEnabled(false, Action::toggleCleanDesktop);
  EXPECT_EQ(desktop->hotKeys().registeredCount(), 2u);
  EXPECT_FALSE(press(keyA));
  auto changed = registry().shortcuts();
  changed[1] = {Action::toggleCleanDesktop, true, keyG, control | option};
  registry().setShortcuts(changed);
  EXPECT_EQ(announcements, 2);
  EXPECT_TRUE(press(keyG));
  EXPECT_EQ(state().userMode(), VeilMode::cleanDesktop);
  const auto before = stored(storedKeys::shortcuts);
  relaunch();
  EXPECT_EQ(registry().shortcuts(), changed);
  EXPECT_EQ(stored(storedKeys::shortcuts), before);
}

TEST_F(ShortcutRegistryTest, ACombinationOfAnotherProgramIsToldAndHadOnceItIsFree) {
  prepareDesktop();
  desktop->hotKeys().take(keyF, control | option);
  EXPECT_FALSE(registry().isTaken(Action::toggleFocus)) << "not asked for before the start";
  launch();
  EXPECT_EQ(desktop->hotKeys().registeredCount(), 2u);
  EXPECT_TRUE(registry().isTaken(Action::toggleFocus));
  EXPECT_FALSE(registry().isTaken(Action::setStandard));
  EXPECT_TRUE(press(keyF)) << "by the other program";
  EXPECT_EQ(state().userMode(), VeilMode::standard);
  desktop->hotKeys().giveBack(keyF, control | option);
  registry().start();
  EXPECT_EQ(desktop->hotKeys().registeredCount(), 2u) << "started once";
  int announcements = 0;
  const auto observer = registry().observe([&] { ++announcements; });
  for (int time = 0; time < 2; ++time) registry().retry();
  EXPECT_EQ(announcements, 1) << "nothing is left to ask for";
  EXPECT_EQ(desktop->hotKeys().registeredCount(), 3u);
  EXPECT_FALSE(registry().isTaken(Action::toggleFocus));
  desktop->hotKeys().take(keyG, control | option);
  registry().setShortcuts({{Action::toggleFocus, false, keyG, control | option}});
  EXPECT_FALSE(registry().isTaken(Action::toggleFocus)) << "nobody wants it";
}

TEST_F(ShortcutRegistryTest, KeysFollowTheKeyboardMapAndAreTakenWhereAnotherProgramIsAlready) {
  launch();
  constexpr std::uint16_t keyJ = 38;
  desktop->hotKeys().take(keyG, control | option);
  int announcements = 0;
  const auto observer = registry().observe([&] { ++announcements; });
  const auto swap = [this](std::uint16_t first, std::uint16_t second) {
    desktop->hotKeys().swapPlaces(first, second);
    desktop->drain();
  };
  swap(keyF, keyG);
  EXPECT_TRUE(registry().isTaken(Action::toggleFocus));
  EXPECT_EQ(announcements, 1);
  swap(keyA, keyJ);
  EXPECT_TRUE(press(keyA));
  EXPECT_EQ(state().userMode(), VeilMode::cleanDesktop);
  EXPECT_TRUE(registry().isTaken(Action::toggleFocus));
  swap(keyG, keyF);
  EXPECT_FALSE(registry().isTaken(Action::toggleFocus));
  EXPECT_EQ(desktop->hotKeys().registeredCount(), 3u);
}

TEST_F(ShortcutRegistryTest, OfTwoActionsWithOneCombinationTheFirstHasIt) {
  launch();
  auto changed = registry().shortcuts();
  changed[2].keyCode = keyA;
  registry().setShortcuts(changed);
  EXPECT_EQ(desktop->hotKeys().registeredCount(), 2u);
  EXPECT_TRUE(press(keyA));
  EXPECT_EQ(state().userMode(), VeilMode::cleanDesktop);
}

TEST_F(ShortcutRegistryTest, BeforeTheStartNothingIsRegisteredAndDefaultsAreStoredWithTheFirstChange) {
  prepareDesktop();
  EXPECT_EQ(registry().shortcuts().size(), 3u);
  EXPECT_EQ(stored(storedKeys::shortcuts), platform::Value("absent"));
  registry().setEnabled(true, Action::setStandard);
  EXPECT_EQ(storedText(), defaultText);
  EXPECT_EQ(desktop->hotKeys().registeredCount(), 0u);
}

}  // namespace
}  // namespace hushpane::tests
