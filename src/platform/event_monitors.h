#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "platform/geometry.h"
#include "platform/token.h"

namespace hushpane::platform {

using ModifierFlags = std::uint32_t;

namespace modifier {
inline constexpr ModifierFlags capsLock = 1u << 16;
inline constexpr ModifierFlags shift = 1u << 17;
inline constexpr ModifierFlags control = 1u << 18;
inline constexpr ModifierFlags option = 1u << 19;
inline constexpr ModifierFlags command = 1u << 20;
inline constexpr ModifierFlags numericPad = 1u << 21;
inline constexpr ModifierFlags function = 1u << 23;
}  // namespace modifier

enum class EventType : unsigned {
  leftMouseDown = 1,
  rightMouseDown = 3,
  mouseMoved = 5,
  keyDown = 10,
  flagsChanged = 12,
};

using EventMask = std::uint32_t;

constexpr EventMask maskOf(EventType type) {
  return 1u << static_cast<unsigned>(type);
}

struct Event {
  EventType type = EventType::keyDown;
  ModifierFlags modifierFlags = 0;  // after the event
  std::uint16_t keyCode = 0;        // virtual key code by position on the ANSI layout
  double deltaX = 0;                // points
  Point location = {};              // of a mouse button; points of the desktop
};

// Watching events of the whole system. Events that go to this program's own windows reach local monitors only, all
// others global monitors only; a mouse button goes to the window beneath the pointer. Handlers run on the main thread,
// in the order of their registration.
class EventMonitors {
 public:
  using GlobalHandler = std::function<void(const Event&)>;
  // Returns the event that goes on to the program's own handling, or nothing to end it here.
  using LocalHandler = std::function<std::optional<Event>(const Event&)>;

  virtual ~EventMonitors() = default;

  // An empty token when the desktop cannot watch these events.
  virtual Token addGlobalMonitor(EventMask mask, GlobalHandler handler) = 0;
  virtual Token addLocalMonitor(EventMask mask, LocalHandler handler) = 0;

  // The modifiers that are down at this moment, whoever has the keyboard.
  virtual ModifierFlags modifierFlags() const = 0;
  // Where the pointer is, in points of the desktop.
  virtual Point mouseLocation() const = 0;
};

}  // namespace hushpane::platform
