#include "desktops/x11/modifier_state.h"

// The header names a field with a word that C++ reserves.
#define explicit explicitComponents
#include <xcb/xkb.h>
#undef explicit

#include <utility>

#include "desktops/x11/xcb_handle.h"

namespace hushpane::x11 {

namespace {

platform::ModifierFlags flagsOf(unsigned modifiers) {
  using namespace platform::modifier;
  platform::ModifierFlags flags = 0;
  if (modifiers & XCB_MOD_MASK_SHIFT) flags |= shift;
  if (modifiers & XCB_MOD_MASK_LOCK) flags |= capsLock;
  if (modifiers & XCB_MOD_MASK_CONTROL) flags |= control;
  if (modifiers & XCB_MOD_MASK_1) flags |= option;
  if (modifiers & XCB_MOD_MASK_4) flags |= command;
  return flags;
}

}  // namespace

ModifierState::ModifierState(Connection& connection)
    : connection_(connection), xkb_(connection.extension(Extension::xkb)) {
  if (!xkb_) return;
  selectEvents();
  auto* server = connection_.get();
  const Reply<xcb_xkb_get_state_reply_t> state(
      xcb_xkb_get_state_reply(server, xcb_xkb_get_state(server, XCB_XKB_ID_USE_CORE_KBD), nullptr));
  if (state) flags_ = flagsOf(state->mods);
}

void ModifierState::selectEvents() {
  xcb_xkb_select_events_details_t details{};
  details.affectState = details.stateDetails = XCB_XKB_STATE_PART_MODIFIER_STATE;
  details.affectNewKeyboard = details.newKeyboardDetails = XCB_XKB_NKN_DETAIL_KEYCODES;
  constexpr auto events =
      XCB_XKB_EVENT_TYPE_STATE_NOTIFY | XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
  xcb_xkb_select_events_aux(connection_.get(), XCB_XKB_ID_USE_CORE_KBD, events, 0, 0, XCB_XKB_MAP_PART_MODIFIER_MAP,
                            XCB_XKB_MAP_PART_MODIFIER_MAP, &details);
}

bool ModifierState::handle(const xcb_generic_event_t& event) {
  if (!xkb_ || event.response_type != xkb_->firstEvent) return false;
  const auto& notify = reinterpret_cast<const xcb_xkb_state_notify_event_t&>(event);
  switch (notify.xkbType) {
    case XCB_XKB_NEW_KEYBOARD_NOTIFY:
    case XCB_XKB_MAP_NOTIFY: modifierKeys_.reset(); return false;
    case XCB_XKB_STATE_NOTIFY: break;
    default: return false;
  }
  const auto flags = flagsOf(notify.mods);
  return std::exchange(flags_, flags) != flags;
}

bool ModifierState::isModifierKey(xcb_keycode_t keycode) {
  if (!modifierKeys_) readModifierKeys();
  return modifierKeys_->test(keycode);
}

void ModifierState::readModifierKeys() {
  modifierKeys_.emplace();
  auto* server = connection_.get();
  const Reply<xcb_get_modifier_mapping_reply_t> mapping(
      xcb_get_modifier_mapping_reply(server, xcb_get_modifier_mapping(server), nullptr));
  if (!mapping) return;
  const auto* keys = xcb_get_modifier_mapping_keycodes(mapping.get());
  const int count = xcb_get_modifier_mapping_keycodes_length(mapping.get());
  for (int index = 0; index < count; ++index)
    if (keys[index] != 0) modifierKeys_->set(keys[index]);
}

}  // namespace hushpane::x11
