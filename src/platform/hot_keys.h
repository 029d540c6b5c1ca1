#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "platform/event_monitors.h"
#include "platform/token.h"

namespace hushpane::platform {

// Tells one registered hot key from another; chosen by whoever registers it.
struct HotKeyID {
  std::uint32_t signature = 0;
  std::uint32_t id = 0;
  bool operator==(const HotKeyID&) const = default;
};

// Keys with modifiers that come to this program whichever is in front, and to no other. Caps Lock and Num Lock make no
// difference. All calls are on the main thread.
class HotKeys {
 public:
  using Handler = std::function<void(HotKeyID)>;
  using ChangeHandler = std::function<void(const std::vector<HotKeyID>& lost)>;

  virtual ~HotKeys() = default;

  // The handler hears of each press of each registered key, in its moment; a key that is held and repeats is one press.
  virtual Token installHandler(Handler handler) = 0;

  // The combination is this program's while the token is held. `keyCode` is a virtual key code by position on the ANSI
  // layout; of the modifiers shift, control, option and command count. An empty token when the combination is taken
  // already, by this program or another, or when the keyboard has no such key.
  virtual Token registerHotKey(std::uint16_t keyCode, ModifierFlags modifiers, HotKeyID id) = 0;

  // The handler hears that the keyboard map is another one: what was refused may be free now, and those whose keys
  // moved are lost until they are registered again.
  virtual Token installChangeHandler(ChangeHandler handler) = 0;
};

}  // namespace hushpane::platform
