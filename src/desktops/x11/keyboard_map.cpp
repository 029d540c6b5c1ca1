#include "desktops/x11/keyboard_map.h"

#include <algorithm>
#include <string_view>

#include "desktops/x11/ansi_keys.h"
#include "desktops/x11/xcb_handle.h"
#include "desktops/x11/xkb.h"

namespace hushpane::x11 {

namespace {

constexpr std::size_t keycodeCount = 256;
constexpr xcb_keysym_t numLockKeysym = 0xFF7F;  // XK_Num_Lock

using VirtualKeyCodes = std::vector<std::optional<std::uint16_t>>;

// Key names fill four bytes, or end with a zero.
std::string_view nameOf(const xcb_xkb_key_name_t& name) {
  const auto* end = std::find(std::begin(name.name), std::end(name.name), '\0');
  return {name.name, static_cast<std::size_t>(end - name.name)};
}

VirtualKeyCodes virtualKeyCodesOf(const xcb_xkb_get_names_reply_t* names) {
  VirtualKeyCodes codes(keycodeCount);
  if (!names) return codes;
  xcb_xkb_get_names_value_list_t list{};
  xcb_xkb_get_names_value_list_unpack(xcb_xkb_get_names_value_list(names), names->nTypes, names->indicators,
                                      names->virtualMods, names->groupNames, names->nKeys, names->nKeyAliases,
                                      names->nRadioGroups, names->which, &list);
  for (std::size_t index = 0; list.keyNames && index < names->nKeys; ++index)
    if (const auto keycode = names->firstKey + index; keycode < keycodeCount)
      codes[keycode] = virtualKeyCode(nameOf(list.keyNames[index]));
  return codes;
}

bool hasKeysym(const xcb_get_keyboard_mapping_reply_t* keysyms, std::size_t index, xcb_keysym_t wanted) {
  const std::size_t columns = keysyms->keysyms_per_keycode;
  const auto* first = xcb_get_keyboard_mapping_keysyms(keysyms) + index * columns;
  return (index + 1) * columns <= keysyms->length && std::find(first, first + columns, wanted) != first + columns;
}

}  // namespace

KeyboardMap::KeyboardMap(Connection& connection)
    : connection_(connection),
      xkb_(connection.extension(Extension::xkb)),
      events_(connection.addEventHandler([this](const xcb_generic_event_t& event) { handle(event); })) {
  if (!xkb_) return;
  xcb_xkb_select_events_details_t details{};
  details.affectNewKeyboard = details.newKeyboardDetails = XCB_XKB_NKN_DETAIL_KEYCODES;
  details.affectNames = details.namesDetails = XCB_XKB_NAME_DETAIL_KEY_NAMES;
  constexpr auto events =
      XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY | XCB_XKB_EVENT_TYPE_NAMES_NOTIFY;
  constexpr auto parts = XCB_XKB_MAP_PART_KEY_SYMS | XCB_XKB_MAP_PART_MODIFIER_MAP;
  xcb_xkb_select_events_aux(connection_.get(), XCB_XKB_ID_USE_CORE_KBD, events, 0, 0, parts, parts, &details);
}

void KeyboardMap::handle(const xcb_generic_event_t& event) {
  const auto type = event.response_type & 0x7F;
  // All events of the extension have the same type and tell their own apart by the byte after it.
  const bool isChange =
      type == XCB_MAPPING_NOTIFY || (xkb_ && type == xkb_->firstEvent &&
                                     (event.pad0 == XCB_XKB_NEW_KEYBOARD_NOTIFY || event.pad0 == XCB_XKB_MAP_NOTIFY ||
                                      event.pad0 == XCB_XKB_NAMES_NOTIFY));
  if (!isChange) return;
  facts_.reset();
  changed_.forEach([](const auto& handler) { handler(); });
}

const KeyFacts& KeyboardMap::facts() {
  if (facts_) return *facts_;
  auto* server = connection_.get();
  const auto* setup = xcb_get_setup(server);
  const auto first = setup->min_keycode;
  const auto count = static_cast<std::uint8_t>(setup->max_keycode - first + 1);
  const auto modifiersCookie = xcb_get_modifier_mapping(server);
  const auto keysymsCookie = xcb_get_keyboard_mapping(server, first, count);
  const auto namesCookie = xkb_ ? xcb_xkb_get_names(server, XCB_XKB_ID_USE_CORE_KBD, XCB_XKB_NAME_DETAIL_KEY_NAMES)
                                : xcb_xkb_get_names_cookie_t{};
  const Reply<xcb_get_modifier_mapping_reply_t> modifiers(
      xcb_get_modifier_mapping_reply(server, modifiersCookie, nullptr));
  const Reply<xcb_get_keyboard_mapping_reply_t> keysyms(xcb_get_keyboard_mapping_reply(server, keysymsCookie, nullptr));
  const Reply<xcb_xkb_get_names_reply_t> names(xkb_ ? xcb_xkb_get_names_reply(server, namesCookie, nullptr) : nullptr);

  auto& facts = facts_.emplace();
  facts.virtualKeyCodes = virtualKeyCodesOf(names.get());
  if (!modifiers || !keysyms || modifiers->keycodes_per_modifier == 0) return facts;
  const auto* keys = xcb_get_modifier_mapping_keycodes(modifiers.get());
  const int keyCount = xcb_get_modifier_mapping_keycodes_length(modifiers.get());
  for (int index = 0; index < keyCount; ++index) {
    if (keys[index] < first) continue;  // 0: no key
    facts.modifierKeys.set(keys[index]);
    if (hasKeysym(keysyms.get(), keys[index] - std::size_t{first}, numLockKeysym))
      facts.numLock = static_cast<std::uint16_t>(1u << (index / modifiers->keycodes_per_modifier));
  }
  return facts;
}

std::optional<std::uint16_t> KeyboardMap::virtualKeyCode(xcb_keycode_t keycode) {
  return facts().virtualKeyCodes[keycode];
}

std::vector<xcb_keycode_t> KeyboardMap::keycodes(std::uint16_t virtualKeyCode) {
  std::vector<xcb_keycode_t> found;
  const auto& codes = facts().virtualKeyCodes;
  for (std::size_t keycode = 0; keycode < codes.size(); ++keycode)
    if (codes[keycode] == virtualKeyCode) found.push_back(static_cast<xcb_keycode_t>(keycode));
  return found;
}

bool KeyboardMap::isModifierKey(xcb_keycode_t keycode) {
  return facts().modifierKeys.test(keycode);
}

std::uint16_t KeyboardMap::numLock() {
  return facts().numLock;
}

}  // namespace hushpane::x11
