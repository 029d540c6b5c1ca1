#include "desktops/x11/hot_keys.h"

#include <algorithm>
#include <set>
#include <string>
#include <utility>

#include "desktops/shared/debug_log.h"
#include "desktops/x11/modifier_bits.h"
#include "desktops/x11/xcb_handle.h"
#include "desktops/x11/xkb.h"

namespace hushpane::x11 {

namespace {

std::uint16_t protocolModifiers(platform::ModifierFlags flags) {
  std::uint16_t modifiers = 0;
  for (const auto& [flag, mask] : modifierBits)
    if (flags & flag) modifiers |= mask;
  return modifiers;
}

const std::uint16_t ownModifiers = protocolModifiers(~platform::ModifierFlags{0});

}  // namespace

HotKeys::HotKeys(Connection& connection, platform::MainQueue& queue, KeyboardMap& keyboard)
    : connection_(connection),
      queue_(queue),
      keyboard_(keyboard),
      mapChanges_(keyboard.onChange([this] {
        if (!std::exchange(isMapChangeQueued_, true)) queue_.async(lifetime_.weak([this] { mapChanged(); }));
      })),
      events_(connection.addEventHandler([this](const xcb_generic_event_t& event) { handle(event); })) {
  // A key that is held then repeats as presses, and is released once.
  constexpr auto flag = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
  if (connection.extension(Extension::xkb))
    xcb_discard_reply(
        connection.get(),
        xcb_xkb_per_client_flags(connection.get(), XCB_XKB_ID_USE_CORE_KBD, flag, flag, 0, 0, 0).sequence);
}

platform::Token HotKeys::registerHotKey(std::uint16_t keyCode, platform::ModifierFlags modifiers,
                                        platform::HotKeyID id) {
  HotKey key{keyCode, protocolModifiers(modifiers), id, {}};
  const bool isTaken = std::ranges::any_of(hotKeys_, [&key](const auto& entry) {
    return entry.second.keyCode == key.keyCode && entry.second.modifiers == key.modifiers;
  });
  if (isTaken || !grab(key)) return {};
  const auto number = ++lastKey_;
  hotKeys_.emplace(number, std::move(key));
  return platform::Token(lifetime_.weak([this, number] {
    if (const auto node = hotKeys_.extract(number)) ungrab(node.mapped());
  }));
}

std::vector<HotKeys::Grab> HotKeys::wantedGrabs(const HotKey& key) {
  constexpr std::uint16_t capsLock = XCB_MOD_MASK_LOCK;
  const auto numLock = keyboard_.numLock();
  const std::set<int> locks{0, capsLock, numLock, capsLock | numLock};
  std::vector<Grab> grabs;
  for (const auto keycode : keyboard_.keycodes(key.keyCode))
    for (const auto lock : locks) grabs.push_back({keycode, static_cast<std::uint16_t>(key.modifiers | lock)});
  return grabs;
}

// A second grab of the same combination by the same client is no error, so each key asks for its own only once.
bool HotKeys::grab(HotKey& key) {
  auto* server = connection_.get();
  key.grabs = wantedGrabs(key);
  std::vector<xcb_void_cookie_t> cookies;
  for (const auto& wanted : key.grabs)
    cookies.push_back(xcb_grab_key_checked(server, 0, connection_.root(), wanted.modifiers, wanted.keycode,
                                           XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
  bool isRefused = key.grabs.empty();
  for (const auto cookie : cookies)
    if (Reply<xcb_generic_error_t>(xcb_request_check(server, cookie))) isRefused = true;
  if (!isRefused) return true;
  desktops::debugLog("the hot key with the code " + std::to_string(key.keyCode) + " cannot be had");
  ungrab(key);
  return false;
}

void HotKeys::ungrab(const HotKey& key) {
  for (const auto& held : key.grabs)
    xcb_ungrab_key(connection_.get(), held.keycode, connection_.root(), held.modifiers);
}

// The server also tells of a new map when another keyboard is typed on, and both maps are mostly the same: what is in
// place stays.
void HotKeys::mapChanged() {
  isMapChangeQueued_ = false;
  std::vector<platform::HotKeyID> lost;
  std::erase_if(hotKeys_, [&](const auto& entry) {
    const auto& key = entry.second;
    if (wantedGrabs(key) == key.grabs) return false;
    ungrab(key);
    lost.push_back(key.id);
    return true;
  });
  changeHandlers_.forEach([&lost](const auto& handler) { handler(lost); });
}

void HotKeys::handle(const xcb_generic_event_t& event) {
  const auto& key = reinterpret_cast<const xcb_key_press_event_t&>(event);
  const auto type = event.response_type & 0x7F;
  if (type == XCB_KEY_RELEASE) down_.reset(key.detail);
  // On the root, or, while the keyboard is grabbed for a panel, on that panel.
  if (type == XCB_KEY_PRESS) keyPressed(key);
}

void HotKeys::keyPressed(const xcb_key_press_event_t& event) {
  if (down_.test(event.detail)) return;
  down_.set(event.detail);
  for (const auto& [number, key] : hotKeys_) {
    const bool isPressed = key.modifiers == (event.state & ownModifiers) &&
                           std::ranges::find(key.grabs, event.detail, &Grab::keycode) != key.grabs.end();
    if (isPressed) return handlers_.forEach([id = key.id](const auto& handler) { handler(id); });
  }
}

}  // namespace hushpane::x11
