#pragma once

#include <map>

#include "platform/screen.h"
#include "platform/value.h"

namespace hushpane {

// Which displays get an overlay; a display without an entry does.
using DisplayEnablement = std::map<platform::DisplayId, bool>;

inline bool isEnabled(const DisplayEnablement& enablement, platform::DisplayId display) {
  const auto found = enablement.find(display);
  return found == enablement.end() || found->second;
}

// The stored form: display ids as decimal texts. One value that is no truth value discards the whole dictionary; a key
// that is no decimal unsigned 32-bit number ("+" allowed, "-" only before zero) is passed over.
DisplayEnablement decodeDisplayEnablement(const platform::Dictionary& stored);
platform::Dictionary encodeDisplayEnablement(const DisplayEnablement& enablement);

}  // namespace hushpane
