#pragma once

#include <bitset>
#include <cstdint>
#include <map>
#include <vector>

#include "desktops/x11/connection.h"
#include "desktops/x11/keyboard_map.h"
#include "platform/handler_list.h"
#include "platform/hot_keys.h"
#include "platform/lifetime.h"
#include "platform/main_queue.h"

namespace hushpane::x11 {

// Hot keys as passive grabs of the core keyboard on the root window. A combination is grabbed with every state of Caps
// Lock and Num Lock, or not at all. Grabs are of keycodes: those that stand for another key after a change of the
// keyboard map are dropped.
class HotKeys : public platform::HotKeys {
 public:
  HotKeys(Connection& connection, platform::MainQueue& queue, KeyboardMap& keyboard);

  platform::Token installHandler(Handler handler) override { return handlers_.add(std::move(handler)); }
  // One round trip.
  platform::Token registerHotKey(std::uint16_t keyCode, platform::ModifierFlags modifiers,
                                 platform::HotKeyID id) override;
  platform::Token installChangeHandler(ChangeHandler handler) override {
    return changeHandlers_.add(std::move(handler));
  }

 private:
  struct Grab {
    xcb_keycode_t keycode;
    std::uint16_t modifiers;  // with lock keys
    bool operator==(const Grab&) const = default;
  };
  struct HotKey {
    std::uint16_t keyCode;    // virtual
    std::uint16_t modifiers;  // of the X protocol, without lock keys
    platform::HotKeyID id;
    std::vector<Grab> grabs;
  };

  std::vector<Grab> wantedGrabs(const HotKey& key);
  bool grab(HotKey& key);
  void ungrab(const HotKey& key);
  void mapChanged();
  void handle(const xcb_generic_event_t& event);
  void keyPressed(const xcb_key_press_event_t& event);

  Connection& connection_;
  platform::MainQueue& queue_;
  KeyboardMap& keyboard_;
  std::map<unsigned, HotKey> hotKeys_;
  unsigned lastKey_ = 0;
  std::bitset<256> down_;  // keys whose press was told
  bool isMapChangeQueued_ = false;
  platform::HandlerList<void(platform::HotKeyID)> handlers_;
  platform::HandlerList<void(const std::vector<platform::HotKeyID>&)> changeHandlers_;
  platform::Token mapChanges_;
  platform::Token events_;
  platform::Lifetime lifetime_;
};

}  // namespace hushpane::x11
