#include "desktops/x11/modifier_state.h"

#include <utility>

#include "desktops/x11/modifier_bits.h"
#include "desktops/x11/xcb_handle.h"
#include "desktops/x11/xkb.h"

namespace hushpane::x11 {

namespace {

platform::ModifierFlags flagsOf(unsigned modifiers) {
  platform::ModifierFlags flags = modifiers & XCB_MOD_MASK_LOCK ? platform::modifier::capsLock : 0;
  for (const auto& [flag, mask] : modifierBits)
    if (modifiers & mask) flags |= flag;
  return flags;
}

}  // namespace

ModifierState::ModifierState(Connection& connection) : xkb_(connection.extension(Extension::xkb)) {
  if (!xkb_) return;
  auto* server = connection.get();
  xcb_xkb_select_events_details_t details{};
  details.affectState = details.stateDetails = XCB_XKB_STATE_PART_MODIFIER_STATE;
  xcb_xkb_select_events_aux(server, XCB_XKB_ID_USE_CORE_KBD, XCB_XKB_EVENT_TYPE_STATE_NOTIFY, 0, 0, 0, 0, &details);
  const Reply<xcb_xkb_get_state_reply_t> state(
      xcb_xkb_get_state_reply(server, xcb_xkb_get_state(server, XCB_XKB_ID_USE_CORE_KBD), nullptr));
  if (state) flags_ = flagsOf(state->mods);
}

bool ModifierState::handle(const xcb_generic_event_t& event) {
  if (!xkb_ || event.response_type != xkb_->firstEvent || event.pad0 != XCB_XKB_STATE_NOTIFY) return false;
  const auto flags = flagsOf(reinterpret_cast<const xcb_xkb_state_notify_event_t&>(event).mods);
  return std::exchange(flags_, flags) != flags;
}

}  // namespace hushpane::x11
