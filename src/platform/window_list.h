#pragma once

#include <cstdint>
#include <optional>
#include <span>

namespace hushpane::platform {

// Names an application's window for ordering; the number of a window that is gone is never an error.
using WindowNumber = std::uint32_t;

// What the desktop tells of one window on screen. Anything that it does not know is absent.
struct WindowInfo {
  struct Bounds {
    std::optional<double> x, y, width, height;  // points, frame included
    bool operator==(const Bounds&) const = default;
  };
  std::optional<std::int32_t> ownerPid;
  std::optional<std::int64_t> layer;  // 0 for ordinary windows
  std::optional<double> alpha;        // in [0, 1]
  Bounds bounds;
  std::optional<WindowNumber> number;
  bool operator==(const WindowInfo&) const = default;
};

class WindowList {
 public:
  virtual ~WindowList() = default;

  // The windows on screen from front to back, without desktop elements; nothing when the list cannot be read. Valid
  // until the next call or the next turn of the main queue. A call that finds nothing new costs no round trip.
  virtual std::optional<std::span<const WindowInfo>> onScreenWindows() = 0;
};

}  // namespace hushpane::platform
