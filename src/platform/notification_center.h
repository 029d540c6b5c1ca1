#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "platform/handler_list.h"
#include "platform/token.h"

namespace hushpane::platform {

namespace notification {
// Default centre: the arrangement of screens changed.
inline constexpr std::string_view screenParametersDidChange = "NSApplicationDidChangeScreenParametersNotification";
// Default centre: a stored setting changed.
inline constexpr std::string_view userDefaultsDidChange = "NSUserDefaultsDidChangeNotification";
// Workspace centre: another application, or another window of the same one, came to the front.
inline constexpr std::string_view didActivateApplication = "NSWorkspaceDidActivateApplicationNotification";
// Workspace centre: the machine woke from sleep.
inline constexpr std::string_view didWake = "NSWorkspaceDidWakeNotification";
// Workspace centre: another workspace ("Space") is shown.
inline constexpr std::string_view activeSpaceDidChange = "NSWorkspaceActiveSpaceDidChangeNotification";
}  // namespace notification

// Hands named notifications without payload from whoever posts them to whoever observes them. Observers run on the main
// thread inside post(), in the order of their registration, by the rules of HandlerList.
class NotificationCenter {
 public:
  NotificationCenter() = default;
  virtual ~NotificationCenter() = default;
  NotificationCenter(const NotificationCenter&) = delete;
  NotificationCenter& operator=(const NotificationCenter&) = delete;

  virtual Token addObserver(std::string_view name, std::function<void()> handler);
  virtual void post(std::string_view name);

 private:
  std::map<std::string, HandlerList<void()>, std::less<>> observers_;
};

}  // namespace hushpane::platform
