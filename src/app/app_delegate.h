#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "input/mouse_shake_detector.h"
#include "platform/lifetime.h"
#include "platform/platform.h"
#include "state/app_router.h"

namespace hushpane {

// The glue around the mode state: runs the launch sequence once, keeps the shake gesture in step with its setting,
// decides whether the welcome page is due, and handles URLs. Nothing is left to do when the program ends: every setting
// is stored at the moment it changes.
class AppDelegate {
 public:
  static constexpr double hintDelay = 0.4;  // seconds from the welcome decision to the hint

  AppDelegate(platform::Platform& platform, AppRouter& router);

  // Points the user at the panel's icon, where the welcome page waits.
  std::function<void()> showMenuBarHint;

  void applicationDidFinishLaunching();
  // Each URL on its own, in order; those that ask for no mode are ignored.
  void handleOpenURLs(const std::vector<std::string>& urls);

 private:
  void connectShakeDetector();
  void mouseShakePreferenceChanged(bool enabled);
  void showWelcomeIfNeeded();

  platform::Platform& platform_;
  AppRouter& router_;
  MouseShakeDetector shakeDetector_;
  std::optional<bool> deliveredShakePreference_;
  platform::Token shakePrefCancellable_;
  platform::WorkItem hint_;
  platform::Lifetime lifetime_;
};

}  // namespace hushpane
