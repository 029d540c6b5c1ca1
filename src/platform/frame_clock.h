#pragma once

#include <functional>

#include "platform/token.h"

namespace hushpane::platform {

// Calls a block once for each frame of the display, on the main queue, as long as its token is held. Without a holder
// it costs nothing.
class FrameClock {
 public:
  virtual ~FrameClock() = default;
  virtual Token run(std::function<void()> onFrame) = 0;
};

}  // namespace hushpane::platform
