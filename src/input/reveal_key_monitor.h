#pragma once

#include <functional>

#include "input/reveal_modifier.h"
#include "platform/lifetime.h"
#include "platform/platform.h"

namespace hushpane {

// Watches the modifier keys of the whole system and reports when the chosen one has been held by itself for a short
// while, and when that hold ends or is spoiled by another modifier or by typing. Presses and releases alternate, and
// each reaches its callback from the main queue, never inside an event handler.
class RevealKeyMonitor {
 public:
  static constexpr double debounceInterval = 0.28;  // seconds

  explicit RevealKeyMonitor(platform::Platform& platform);
  ~RevealKeyMonitor();

  RevealModifier modifier = RevealModifier::option;  // read afresh at each event
  std::function<void()> onPressed;
  std::function<void()> onReleased;

  // Installs the monitors anew; a kind that the desktop refuses is simply missing.
  void start();
  // Removes the monitors; ends a hold with its release.
  void stop();
  bool isHeld() const { return isHeld_; }

 private:
  void flagsChanged(platform::ModifierFlags flags);
  void keyDown(platform::ModifierFlags flags);
  void schedulePressCheck();
  void notifyPressed();
  void endHold();

  platform::Platform& platform_;
  platform::Token globalMonitor_;
  platform::Token localMonitor_;
  platform::Token globalKeyDownMonitor_;
  platform::Token localKeyDownMonitor_;
  bool isHeld_ = false;
  platform::WorkItem debounceWorkItem_;  // kept after it has run, until the modifier is no longer held alone
  platform::Lifetime lifetime_;
};

}  // namespace hushpane
