#include "input/reveal_key_monitor.h"

#include <optional>
#include <utility>

namespace hushpane {

namespace {

using platform::Event;
using platform::EventType;
using platform::maskOf;

// Caps Lock, Function and the numeric pad never count as another modifier.
constexpr platform::ModifierFlags modifierGroup =
    platform::modifier::shift | platform::modifier::control | platform::modifier::option | platform::modifier::command;

}  // namespace

RevealKeyMonitor::RevealKeyMonitor(platform::Platform& platform) : platform_(platform) {}

RevealKeyMonitor::~RevealKeyMonitor() {
  stop();
}

void RevealKeyMonitor::start() {
  stop();
  const auto onFlags = lifetime_.weak([this](const Event& event) { flagsChanged(event.modifierFlags); });
  const auto onKey = lifetime_.weak([this](const Event& event) { keyDown(event.modifierFlags); });
  const auto passOn = [](auto handler) {
    return [handler](const Event& event) mutable {
      handler(event);
      return std::optional(event);
    };
  };
  auto& monitors = platform_.eventMonitors();
  globalMonitor_ = monitors.addGlobalMonitor(maskOf(EventType::flagsChanged), onFlags);
  localMonitor_ = monitors.addLocalMonitor(maskOf(EventType::flagsChanged), passOn(onFlags));
  globalKeyDownMonitor_ = monitors.addGlobalMonitor(maskOf(EventType::keyDown), onKey);
  localKeyDownMonitor_ = monitors.addLocalMonitor(maskOf(EventType::keyDown), passOn(onKey));
}

void RevealKeyMonitor::stop() {
  for (auto* token : {&globalMonitor_, &localMonitor_, &globalKeyDownMonitor_, &localKeyDownMonitor_}) token->reset();
  endHold();
}

void RevealKeyMonitor::flagsChanged(platform::ModifierFlags flags) {
  if ((flags & modifierGroup) != flagOf(modifier)) {
    endHold();
  } else if (!debounceWorkItem_) {  // stored: pending, held, or found up by the check
    schedulePressCheck();
  }
}

void RevealKeyMonitor::keyDown(platform::ModifierFlags flags) {
  if (flags & flagOf(modifier)) endHold();
}

void RevealKeyMonitor::schedulePressCheck() {
  debounceWorkItem_ = platform_.mainQueue().after(debounceInterval, lifetime_.weak([this, flag = flagOf(modifier)] {
    if (platform_.eventMonitors().modifierFlags() & flag)
      platform_.mainQueue().async(lifetime_.weak([this] { notifyPressed(); }));
  }));
}

void RevealKeyMonitor::notifyPressed() {
  if (!debounceWorkItem_) return;  // the hold ended between the check and this call
  isHeld_ = true;
  if (const auto callback = onPressed) callback();
}

void RevealKeyMonitor::endHold() {
  debounceWorkItem_.reset();
  if (!std::exchange(isHeld_, false)) return;
  platform_.mainQueue().async(lifetime_.weak([this] {
    if (const auto callback = onReleased) callback();
  }));
}

}  // namespace hushpane
