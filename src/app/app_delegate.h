#pragma once

#include <string>
#include <vector>

#include "platform/platform.h"

namespace hushpane {

// The glue around the mode state: runs the launch sequence once and handles URLs.
class AppDelegate {
 public:
  explicit AppDelegate(platform::Platform& platform) : platform_(platform) {}

  void applicationDidFinishLaunching();
  // Each URL on its own, in order; those that ask for no mode are ignored.
  void handleOpenURLs(const std::vector<std::string>& urls);

 private:
  platform::Platform& platform_;
};

}  // namespace hushpane
