#pragma once

#include <map>
#include <optional>
#include <vector>

#include "desktops/x11/connection.h"
#include "desktops/x11/keyboard_map.h"
#include "desktops/x11/modifier_state.h"
#include "desktops/x11/pointer_motion.h"
#include "desktops/x11/screens.h"
#include "platform/event_monitors.h"
#include "platform/handler_list.h"
#include "platform/lifetime.h"

namespace hushpane::x11 {

// Watches keyboard and pointer through XInput2 raw events, which arrive whoever has the focus or a grab. The server
// reports only what some monitor asks for; the modifiers are always followed.
//
// Keys carry the modifiers in force when they went down, and a change of modifiers is told before any key typed with
// it. A second key of a modifier that is already down changes no flags and is not told. A held key repeats as
// key-downs. Motion is told to global monitors, since no window of the program follows the pointer. A mouse button is
// told of as it goes down, also to where a menu holds the pointer, and its window gets it whatever a monitor returns.
class EventMonitors : public platform::EventMonitors {
 public:
  EventMonitors(Connection& connection, KeyboardMap& keyboard, const Screens& screens);

  platform::Token addGlobalMonitor(platform::EventMask mask, GlobalHandler handler) override;
  platform::Token addLocalMonitor(platform::EventMask mask, LocalHandler handler) override;
  platform::ModifierFlags modifierFlags() const override { return modifiers_.flags(); }
  platform::Point mouseLocation() const override;

  // To be called when one of the program's own windows gets or loses the input focus: while it has it, events go to
  // local monitors, else to global ones.
  void setOwnWindowFocused(bool focused) { isOwnWindowFocused_ = focused; }
  // Until the token goes, mouse buttons over that window and over those inside it go to local monitors. For windows of
  // the program that take the mouse, wherever in the tree they are.
  platform::Token addOwnWindow(xcb_window_t window);

 private:
  // Counts the monitors of each mask and selects their events; drops out with the token.
  platform::Token watching(platform::EventMask mask, platform::Token handler);
  void updateSelection();
  void handle(const xcb_generic_event_t& event);
  void handleRawEvent(const xcb_generic_event_t& event);
  void handleRawKey(xcb_keycode_t keycode);
  void handleMotion(const xcb_input_raw_motion_event_t& motion);
  void handleRawButton(std::uint32_t button);
  void deliver(const platform::Event& event, bool isOwn);

  Connection& connection_;
  const Screens& screens_;
  KeyboardMap& keyboard_;
  ModifierState modifiers_;
  PointerMotion motion_;
  std::optional<ExtensionInfo> xinput_;
  bool isOwnWindowFocused_ = false;
  std::vector<xcb_window_t> ownWindows_;
  std::map<platform::EventMask, int> watched_;
  std::uint32_t selected_ = 0;
  platform::HandlerList<void(const platform::Event&)> global_;
  platform::HandlerList<void(std::optional<platform::Event>&)> local_;
  platform::Token events_;
  platform::Lifetime lifetime_;
};

}  // namespace hushpane::x11
