#include <array>

#include "tests/x11/panel_desktop.h"

namespace hushpane::x11_tests {
namespace {

constexpr std::uint16_t controlOption = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1;

class HotKeys : public Desktop {
 protected:
  ~HotKeys() override {
    for (const char* key : {"ctrl", "alt"}) keyboard("keyup", key);
  }

  // Starts the program in standard mode and goes on once it has its keys, which a press of one shows.
  void startInStandard() {
    chooseMode("standard");
    startHushpane();
    waitForKeys();
  }
  void waitForKeys() {
    const int before = switches();
    EXPECT_TRUE(waitUntil([&] { return press("s"), switches() > before; }));
  }
  int switches() const { return std::stoi(settings().value("hushpane.reviewSwitchCount").value_or("0")); }
  // The key in the place of a letter of the ANSI keyboard, whatever the layout writes on it.
  void press(const char* key) const { keyboard("key", std::string("ctrl+alt+") + key); }

  // What the terminal in front has read, once it has read this line too.
  std::string typedUpTo(const std::string& line) const {
    keyboard("type", line);
    keyboard("key", "Return");
    waitUntil([&] { return red_->typed().ends_with(line + "\n"); });
    return red_->typed();
  }

  testing::AssertionResult allSwitch() const {
    for (const auto& [key, mode] : std::array<std::pair<const char*, const char*>, 3>{
             {{"f", "focus"}, {"a", "cleanDesktop"}, {"s", "standard"}}}) {
      press(key);
      if (auto entered = entersMode(mode); !entered) return entered << " by " << key;
    }
    return testing::AssertionSuccess();
  }
};

TEST_F(HotKeys, SwitchFromAFocusedTerminalThatHearsNothingOfIt) {
  press("a");
  ASSERT_NE(typedUpTo("before"), "before\n") << "a terminal hears of keys that are nobody's";
  startInStandard();
  const std::string before = typedUpTo("start");
  for (const char* lock : {"", "Caps_Lock", "Num_Lock", "Caps_Lock"}) {
    if (*lock) keyboard("key", lock);
    EXPECT_TRUE(allSwitch()) << "after " << lock;
  }
  keyboard("key", "Num_Lock");
  EXPECT_EQ(typedUpTo("after"), before + "after\n");
  press("f");
  EXPECT_TRUE(shows(leftSpot, dimmed(background, balanced)));
  stopHushpane();
  press("a");
  EXPECT_NE(typedUpTo("end"), before + "after\nend\n") << "the keys are everybody's again";
}

TEST_F(HotKeys, HeldKeyThatRepeatsIsOnePress) {
  startInStandard();
  runTool({"xset", "r", "rate", "200", "50"});
  std::this_thread::sleep_for(300ms);  // what was pressed until now has come
  const int before = switches();
  for (const char* key : {"ctrl", "alt", "s"}) keyboard("keydown", key);
  EXPECT_TRUE(waitUntil([&] { return switches() == before + 1; }));
  EXPECT_TRUE(holdsFor(600ms, [&] { return switches() == before + 1; }));
  for (const char* key : {"s", "alt", "ctrl"}) keyboard("keyup", key);
  press("s");
  EXPECT_TRUE(waitUntil([&] { return switches() == before + 2; }));
}

TEST_F(HotKeys, CombinationOfAnotherProgramStaysItsOwn) {
  constexpr xcb_keycode_t letterF = 41;
  const XConnection other(display());
  // With Caps Lock only: whoever has part of it has it.
  xcb_grab_key(other.get(), 1, other.root(), controlOption | XCB_MOD_MASK_LOCK, letterF, XCB_GRAB_MODE_ASYNC,
               XCB_GRAB_MODE_ASYNC);
  other.sync();
  startInStandard();
  press("f");
  EXPECT_TRUE(holdsFor(300ms, [this] { return sharedFile().value("hushpane.userMode") == "standard"; }));
  press("a");
  EXPECT_TRUE(entersMode("cleanDesktop"));
  EXPECT_EQ(stopHushpane(), 0);
  EXPECT_EQ(hushpane().errors(), "");
}

TEST_F(HotKeys, FollowTheirPlacesThroughChangesOfTheKeyboardMap) {
  startInStandard();
  ASSERT_TRUE(allSwitch());
  runTool({"setxkbmap", "dvorak"});
  for (const auto& [keycode, mode] : std::array<std::pair<const char*, const char*>, 3>{
           {{"41", "focus"}, {"38", "cleanDesktop"}, {"39", "standard"}}}) {
    for (const char* modifier : {"ctrl", "alt"}) keyboard("keydown", modifier);
    keyboard("key", keycode);
    EXPECT_TRUE(entersMode(mode));
    for (const char* modifier : {"ctrl", "alt"}) keyboard("keyup", modifier);
  }
  runTool({"setxkbmap", "us"});
  // Num Lock becomes another modifier.
  runTool({"xmodmap", "-e", "clear mod2", "-e", "clear mod3", "-e", "add mod3 = Num_Lock"});
  keyboard("key", "Num_Lock");
  EXPECT_TRUE(allSwitch());
  keyboard("key", "Num_Lock");
}

class HotKeysOnThePanel : public PanelDesktop {
 protected:
  HotKeysOnThePanel() { startTray(); }

  // Both worlds have the same keyboard.
  void swapPlacesOfFAndG() {
    runTool({"sh", "-c",
             "xkbcomp $DISPLAY - 2>/dev/null | "
             "sed -E 's/(<AC04> =) 41/\\1 42/; t; s/(<AC04> =) 42/\\1 41/; "
             "t; s/(<AC05> =) 42/\\1 41/; t; s/(<AC05> =) 41/\\1 42/' | "
             "xkbcomp -w0 - $DISPLAY"});
    twin().desktop().hotKeys().swapPlaces(letterF, letterG);
  }

  static constexpr std::uint16_t letterF = 3, letterG = 5;
  static constexpr xcb_keycode_t placeOfF = 41;
  static constexpr Point gear{336, 24};
};
INSTANTIATE_TEST_SUITE_P(Desktop, HotKeysOnThePanel, testing::Values(false));

TEST_P(HotKeysOnThePanel, AreStruckThroughWhileAnotherProgramHasThem) {
  using platform::modifier::control, platform::modifier::option;
  const XConnection other(display());
  startWithIcon();
  clickIcon();
  clickAt(gear);
  click("Keyboard shortcuts");
  xcb_grab_key(other.get(), 1, other.root(), controlOption, placeOfF, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
  other.sync();
  EXPECT_TRUE(twin().desktop().hotKeys().take(letterF, control | option));
  click("Keyboard shortcuts");
  EXPECT_TRUE(looksAsItShould()) << "the other program was there first";
  shot("hot-key-taken");
  swapPlacesOfFAndG();
  EXPECT_TRUE(looksAsItShould()) << "the key has another place now, where it can be had";
  swapPlacesOfFAndG();
  EXPECT_TRUE(looksAsItShould()) << "and has lost it again";
  xcb_ungrab_key(other.get(), placeOfF, other.root(), XCB_MOD_MASK_ANY);
  other.sync();
  twin().desktop().hotKeys().giveBack(letterF, control | option);
  for (int time = 0; time < 2; ++time) click("Keyboard shortcuts");
  EXPECT_TRUE(looksAsItShould());
  keyboard("key", "ctrl+alt+f");
  EXPECT_TRUE(entersMode("focus"));
}

}  // namespace
}  // namespace hushpane::x11_tests
