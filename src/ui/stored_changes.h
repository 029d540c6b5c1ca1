#pragma once

#include <functional>
#include <utility>

#include "platform/platform.h"

namespace hushpane {

// Tells views of every change of a stored setting, whoever wrote it; a moment later than the writer could.
struct StoredChanges {
  platform::NotificationCenter& center = platform::Platform::current().notificationCenter();

  platform::Token observe(std::function<void()> changed) {
    return center.addObserver(platform::notification::userDefaultsDidChange, std::move(changed));
  }
};

}  // namespace hushpane
