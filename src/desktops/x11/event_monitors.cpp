#include "desktops/x11/event_monitors.h"

#include <xcb/xinput.h>

#include <memory>
#include <utility>

#include "desktops/x11/ansi_key_codes.h"
#include "desktops/x11/xcb_handle.h"

namespace hushpane::x11 {

namespace {

using platform::EventType;
using platform::maskOf;

constexpr std::uint16_t unknownKeyCode = 0xFFFF;

}  // namespace

EventMonitors::EventMonitors(Connection& connection, platform::MainQueue& queue)
    : connection_(connection),
      queue_(queue),
      modifiers_(connection),
      xinput_(connection.extension(Extension::xinput)),
      events_(connection.addEventHandler([this](const xcb_generic_event_t& event) { handle(event); })) {}

platform::Token EventMonitors::addGlobalMonitor(platform::EventMask mask, GlobalHandler handler) {
  if (!xinput_) return {};
  return watching(mask, global_.add([mask, handler = std::move(handler)](const platform::Event& event) {
    if (mask & maskOf(event.type)) handler(event);
  }));
}

platform::Token EventMonitors::addLocalMonitor(platform::EventMask mask, LocalHandler handler) {
  if (!xinput_) return {};
  return watching(mask, local_.add([mask, handler = std::move(handler)](std::optional<platform::Event>& event) {
    if (event && (mask & maskOf(event->type))) event = handler(*event);
  }));
}

platform::Token EventMonitors::watching(platform::EventMask mask, platform::Token handler) {
  ++watched_[mask];
  updateSelection();
  const auto held = std::make_shared<platform::Token>(std::move(handler));
  auto forget = lifetime_.weak([this, mask] {
    --watched_[mask];
    updateSelection();
  });
  return platform::Token([held, forget]() mutable {
    held->reset();
    forget();
  });
}

void EventMonitors::updateSelection() {
  platform::EventMask wanted = 0;
  for (const auto& [mask, count] : watched_)
    if (count > 0) wanted |= mask;
  std::uint32_t raw = 0;
  if (wanted & maskOf(EventType::keyDown)) raw |= XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS;
  if (wanted & maskOf(EventType::mouseMoved)) raw |= XCB_INPUT_XI_EVENT_MASK_RAW_MOTION;
  const auto before = std::exchange(selected_, raw);
  if (before == raw) return;
  if (raw & ~before & XCB_INPUT_XI_EVENT_MASK_RAW_MOTION) takePointerStep();
  const struct {
    xcb_input_event_mask_t head;
    std::uint32_t mask;
  } request{{XCB_INPUT_DEVICE_ALL_MASTER, 1}, raw};
  xcb_input_xi_select_events(connection_.get(), connection_.root(), 1, &request.head);
}

void EventMonitors::handle(const xcb_generic_event_t& event) {
  if (modifiers_.handle(event)) deliver({.type = EventType::flagsChanged, .modifierFlags = modifiers_.flags()});
  if (event.response_type == XCB_GE_GENERIC) handleRawEvent(event);
}

void EventMonitors::handleRawEvent(const xcb_generic_event_t& event) {
  const auto& raw = reinterpret_cast<const xcb_input_raw_key_press_event_t&>(event);
  if (!xinput_ || raw.extension != xinput_->majorOpcode) return;
  if (raw.event_type == XCB_INPUT_RAW_KEY_PRESS) handleRawKey(static_cast<xcb_keycode_t>(raw.detail));
  if (raw.event_type == XCB_INPUT_RAW_MOTION) handleMotion();
}

void EventMonitors::handleRawKey(xcb_keycode_t keycode) {
  if (modifiers_.isModifierKey(keycode)) return;
  deliver({.type = EventType::keyDown,
           .modifierFlags = modifiers_.flags(),
           .keyCode = virtualKeyCode(keycode).value_or(unknownKeyCode)});
}

// Raw motion counts in the device's own units, some of them absolute; where the pointer went is asked once for all the
// motion of a turn.
void EventMonitors::handleMotion() {
  if (std::exchange(isMotionPending_, true)) return;
  queue_.async(lifetime_.weak([this] {
    isMotionPending_ = false;
    if (const auto step = takePointerStep())
      deliver({.type = EventType::mouseMoved, .modifierFlags = modifiers_.flags(), .deltaX = *step});
  }));
}

// How far the pointer went since the last call; nothing at the first.
std::optional<double> EventMonitors::takePointerStep() {
  const Reply<xcb_query_pointer_reply_t> pointer(
      xcb_query_pointer_reply(connection_.get(), xcb_query_pointer(connection_.get(), connection_.root()), nullptr));
  if (!pointer) return std::nullopt;
  const double now = pointer->root_x;
  const auto before = std::exchange(pointerX_, now);
  return before ? std::optional(now - *before) : std::nullopt;
}

void EventMonitors::deliver(const platform::Event& event) {
  if (isOwnWindowFocused_) {
    std::optional<platform::Event> passed = event;
    local_.forEach([&passed](const auto& handler) { handler(passed); });
  } else {
    global_.forEach([&event](const auto& handler) { handler(event); });
  }
}

}  // namespace hushpane::x11
