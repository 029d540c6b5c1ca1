#include "desktops/sim/sim_event_monitors.h"

#include <utility>

namespace hushpane::sim {

platform::Token SimEventMonitors::addGlobalMonitor(platform::EventMask mask, GlobalHandler handler) {
  if (refusesMonitors_) return {};
  return counted(global_.add([mask, handler = std::move(handler)](const platform::Event& event) {
    if (mask & platform::maskOf(event.type)) handler(event);
  }));
}

platform::Token SimEventMonitors::addLocalMonitor(platform::EventMask mask, LocalHandler handler) {
  if (refusesMonitors_) return {};
  return counted(local_.add([mask, handler = std::move(handler)](std::optional<platform::Event>& event) {
    if (event && (mask & platform::maskOf(event->type))) event = handler(*event);
  }));
}

platform::Token SimEventMonitors::counted(platform::Token token) {
  ++*monitorCount_;
  auto held = std::make_shared<platform::Token>(std::move(token));
  return platform::Token([held, count = std::weak_ptr(monitorCount_)] {
    held->reset();
    if (const auto counter = count.lock()) --*counter;
  });
}

void SimEventMonitors::changeFlags(platform::ModifierFlags flags) {
  flags_ = flags;
  inject({.type = platform::EventType::flagsChanged, .modifierFlags = flags_}, owner_);
}

void SimEventMonitors::pressKey(std::uint16_t keyCode) {
  inject({.type = platform::EventType::keyDown, .modifierFlags = flags_, .keyCode = keyCode}, owner_);
}

void SimEventMonitors::moveMouse(double deltaX) {
  inject({.type = platform::EventType::mouseMoved, .modifierFlags = flags_, .deltaX = deltaX}, owner_);
}

void SimEventMonitors::pressButton(platform::EventType button, KeyboardOwner owner) {
  inject({.type = button, .modifierFlags = flags_, .location = mouseLocation_}, owner);
}

void SimEventMonitors::inject(const platform::Event& event, KeyboardOwner owner) {
  queue_.async(
      [this, event, owner] { owner == KeyboardOwner::ownProgram ? deliverLocally(event) : deliverGlobally(event); });
}

void SimEventMonitors::deliverGlobally(const platform::Event& event) {
  global_.forEach([&event](const auto& handler) { handler(event); });
}

void SimEventMonitors::deliverLocally(platform::Event event) {
  std::optional<platform::Event> passed = event;
  local_.forEach([&passed](const auto& handler) { handler(passed); });
  if (passed) ++deliveredLocally_;
}

}  // namespace hushpane::sim
