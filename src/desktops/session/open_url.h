#pragma once

#include <string>

#include "desktops/session/bus_service.h"

namespace hushpane::session {

// Hands addresses to the user's programs. Only https:, http: and mailto: leave this program.
class UrlOpener {
 public:
  explicit UrlOpener(BusService& portal) : portal_(portal) {}

  // Starts the program that is chosen for this kind of address, in the background; where none is, asks the desktop's
  // portal. False when there is neither.
  bool open(const std::string& url);

 private:
  BusService& portal_;
};

}  // namespace hushpane::session
