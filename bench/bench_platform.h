#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <functional>
#include <memory>

#include "desktops/x11/x11_platform.h"

namespace hushpane::bench {

// The X11 desktop in this process, with an eye on its connection to the server. One in a process; clients of the
// benchmark connect after it.
class BenchPlatform {
 public:
  BenchPlatform();

  x11::X11Platform& get() { return *platform_; }
  xcb_connection_t* connection() const;

  // One turn of the main loop; `mayWait` for something to happen.
  void turn(bool mayWait);
  // Does what is due now, and sends it.
  void finish();
  void runFor(double seconds);
  // Runs until the condition holds; throws when it does not within some seconds.
  void runUntil(const std::function<bool()>& condition);

  // Runs until fades and news have come to their end: until nothing was sent for a while, but not for ever.
  void runUntilQuiet();

  struct Traffic {
    std::uint64_t bytes = 0;
    std::uint64_t requests = 0;
  };
  // What goes to the server meanwhile.
  Traffic trafficOf(const std::function<void()>& work);
  std::uint64_t bytesWritten() const;

 private:
  std::unique_ptr<x11::X11Platform> platform_;
};

}  // namespace hushpane::bench
