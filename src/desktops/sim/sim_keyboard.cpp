#include "desktops/sim/sim_keyboard.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace hushpane::sim {

namespace {

using platform::Key;

constexpr std::array<std::pair<std::uint16_t, Key>, 13> namedKeys{{{36, Key::returnKey},
                                                                   {76, Key::returnKey},
                                                                   {48, Key::tab},
                                                                   {49, Key::space},
                                                                   {53, Key::escape},
                                                                   {115, Key::home},
                                                                   {116, Key::pageUp},
                                                                   {119, Key::end},
                                                                   {121, Key::pageDown},
                                                                   {123, Key::left},
                                                                   {124, Key::right},
                                                                   {125, Key::down},
                                                                   {126, Key::up}}};

// By key code from 0; a blank for keys that write no letter.
constexpr std::string_view letters = "asdfhgzxcv bqweryt123465=97-80]ou[ip lj'k;\\,/nm.";

}  // namespace

platform::KeyPress keyPressOf(std::uint16_t keyCode, platform::ModifierFlags modifiers) {
  platform::KeyPress press{.key = Key::other, .modifiers = modifiers};
  const auto* named = std::ranges::find(namedKeys, keyCode, &std::pair<std::uint16_t, Key>::first);
  if (named != namedKeys.end())
    press.key = named->second;
  else if (keyCode < letters.size() && letters[keyCode] != ' ')
    press.letter = letters.substr(keyCode, 1);
  return press;
}

}  // namespace hushpane::sim
