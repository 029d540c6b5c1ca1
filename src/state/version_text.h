#pragma once

#include <string>

#include "platform/bundle.h"

namespace hushpane {

// The program's version as it is shown to people; a dash when the program says nothing of it.
inline std::string versionText(const platform::Bundle& bundle) {
  for (const auto key : {platform::bundleKey::shortVersion, platform::bundleKey::version})
    if (auto version = bundle.infoString(key); !version.empty()) return version;
  return "—";
}

}  // namespace hushpane
