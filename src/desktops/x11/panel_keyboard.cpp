#include "desktops/x11/panel_keyboard.h"

#include <algorithm>
#include <array>
#include <utility>

#include "desktops/shared/debug_log.h"
#include "desktops/x11/modifier_bits.h"
#include "desktops/x11/xcb_handle.h"

namespace hushpane::x11 {

namespace {

using platform::Key;

constexpr int attempts = 20;
constexpr double secondsBetweenAttempts = 0.05;

// By keysym, those of the numeric pad included (X11 protocol, appendix A).
constexpr std::array<std::pair<xcb_keysym_t, Key>, 25> namedKeys{
    {{0xff1b, Key::escape},    {0xff09, Key::tab},    {0xfe20, Key::tab},       {0xff89, Key::tab},
     {0x20, Key::space},       {0xff80, Key::space},  {0xff0d, Key::returnKey}, {0xff8d, Key::returnKey},
     {0xff0a, Key::returnKey}, {0xff51, Key::left},   {0xff96, Key::left},      {0xff53, Key::right},
     {0xff98, Key::right},     {0xff52, Key::up},     {0xff97, Key::up},        {0xff54, Key::down},
     {0xff99, Key::down},      {0xff50, Key::home},   {0xff95, Key::home},      {0xff57, Key::end},
     {0xff9c, Key::end},       {0xff55, Key::pageUp}, {0xff9a, Key::pageUp},    {0xff56, Key::pageDown},
     {0xff9b, Key::pageDown}}};

bool isPrintableAscii(xcb_keysym_t keysym) {
  return keysym > 0x20 && keysym < 0x7f;
}

// What the key writes without modifiers, in the layout in use, else in the first one: shortcuts are Latin letters.
xcb_keysym_t plainKeysym(const xcb_get_keyboard_mapping_reply_t& mapping, int group) {
  const auto* keysyms = xcb_get_keyboard_mapping_keysyms(&mapping);
  const auto at = [&](int index) { return index < mapping.keysyms_per_keycode ? keysyms[index] : 0; };
  const auto inGroup = at(2 * group);
  return inGroup == 0 || (inGroup < 0xff00 && !isPrintableAscii(inGroup) && inGroup != 0x20) ? at(0) : inGroup;
}

}  // namespace

void PanelKeyboard::add(xcb_window_t window) {
  windows_.push_back(window);
  grab();
}

void PanelKeyboard::remove(xcb_window_t window) {
  if (std::erase(windows_, window) == 0) return;
  if (!windows_.empty()) return grab();
  retry_.reset();
  xcb_ungrab_keyboard(connection_.get(), XCB_CURRENT_TIME);
}

void PanelKeyboard::grab() {
  attemptsLeft_ = attempts;
  attempt();
}

void PanelKeyboard::attempt() {
  const Reply<xcb_grab_keyboard_reply_t> reply(
      xcb_grab_keyboard_reply(connection_.get(),
                              xcb_grab_keyboard(connection_.get(), 0, windows_.back(), XCB_CURRENT_TIME,
                                                XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
                              nullptr));
  if (reply && reply->status == XCB_GRAB_STATUS_SUCCESS) return retry_.reset();
  if (--attemptsLeft_ <= 0) return desktops::debugLog("another program holds the keyboard");
  retry_ = queue_.after(secondsBetweenAttempts, [this] { attempt(); });
}

platform::KeyPress PanelKeyboard::read(const xcb_key_press_event_t& event) {
  platform::KeyPress press;
  for (const auto& [flag, mask] : modifierBits)
    if (event.state & mask) press.modifiers |= flag;
  const Reply<xcb_get_keyboard_mapping_reply_t> mapping(xcb_get_keyboard_mapping_reply(
      connection_.get(), xcb_get_keyboard_mapping(connection_.get(), event.detail, 1), nullptr));
  if (!mapping) return press;
  const int group = event.state >> 13 & 3;
  const auto keysym = plainKeysym(*mapping, group);
  const auto* named = std::ranges::find(namedKeys, keysym, &std::pair<xcb_keysym_t, Key>::first);
  if (named != namedKeys.end())
    press.key = named->second;
  else if (isPrintableAscii(keysym))
    press.letter = static_cast<char>(keysym >= 'A' && keysym <= 'Z' ? keysym - 'A' + 'a' : keysym);
  return press;
}

}  // namespace hushpane::x11
