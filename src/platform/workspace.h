#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "platform/notification_center.h"
#include "platform/screen.h"

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

  // The file of the picture that the user has chosen for the desktop of that screen; nothing where the desktop shows
  // none, or does not tell of a file.
  virtual std::optional<std::filesystem::path> desktopImageURL(const Screen& screen) = 0;

  // Hands an address (https:, mailto:) to the program that the user has chosen for its kind. False when there is none.
  virtual bool openURL(const std::string& url) = 0;

  // Posts notification::didActivateApplication, didWake and activeSpaceDidChange.
  virtual NotificationCenter& notificationCenter() = 0;
};

}  // namespace hushpane::platform
