#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/notification_center.h"

namespace hushpane::platform {

struct RunningApplication {
  std::int32_t processIdentifier = 0;
  std::string localizedName;
};

// The desktop around the program.
class Workspace {
 public:
  virtual ~Workspace() = default;

  virtual std::optional<RunningApplication> frontmostApplication() = 0;

  // Posts notification::didActivateApplication, didWake and activeSpaceDidChange.
  virtual NotificationCenter& notificationCenter() = 0;
};

}  // namespace hushpane::platform
