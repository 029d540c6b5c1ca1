#pragma once

namespace hushpane::platform {

// Tells the desktop widgets of this application to read their data again.
class WidgetCenter {
 public:
  virtual ~WidgetCenter() = default;
  virtual void reloadAllTimelines() = 0;
};

}  // namespace hushpane::platform
