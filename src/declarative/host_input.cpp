#include <algorithm>
#include <utility>

#include "declarative/host.h"
#include "declarative/pointer_target.h"
#include "declarative/scrolling.h"

// The host's pointer and keyboard.
namespace hushpane::declarative {

using platform::Key;
using platform::Point;

namespace {

std::function<void(bool)> listenerOf(const Node& node) {
  if (const auto* hover = std::get_if<kinds::Hover>(&node.kind)) return hover->action;
  return std::get<kinds::Focus>(node.kind).action;
}

}  // namespace

void Host::pointerMoved(Point point) {
  pointer_ = point;
  focusUnderPointer();
  updateHover();
}

void Host::pointerExited() {
  pointer_.reset();
  updateHover();
}

// Elements learn once that the pointer or the focus came and once that it went, also when they moved or went beneath
// it.
void Host::updateHover() {
  auto now = pointer_ && root_ ? hoverTargets(root_, *pointer_) : std::vector<std::shared_ptr<Node>>{};
  const auto isIn = [](const auto& nodes, const auto& node) { return std::ranges::find(nodes, node) != nodes.end(); };
  if (const auto focused = focus_.isVisible ? focus_.node.lock() : nullptr)
    for (auto& listener : focusListeners(*focused))
      if (!isIn(now, listener)) now.push_back(std::move(listener));
  const auto before = std::exchange(hovered_, now);
  const auto tellThoseIn = [&](const auto& nodes, const auto& others, bool isOver) {
    for (const auto& node : nodes) {
      if (isIn(others, node)) continue;
      // A copy: what it does may replace the element.
      if (const auto action = listenerOf(*node)) action(isOver);
    }
  };
  tellThoseIn(before, now, false);
  tellThoseIn(now, before, true);
}

void Host::pointerDown(Point point) {
  const auto alive = lifetime_.watch();
  pointerMoved(point);
  if (alive.expired() || !root_) return;
  if (const auto before = pressed_.lock()) before->isPressed = false;
  const auto target = pressTarget(root_, point);
  pressed_ = target;
  if (target) target->isPressed = true;
  // From here on, Tab goes on where the pointer was.
  const bool hadRing = !isMenu_ && std::exchange(focus_.isVisible, false);
  if (target) focus_ = {target, FocusOrder(root_).indexOf(target.get()).value_or(focus_.place), focus_.isVisible};
  if (target || hadRing) redraw();
  if (hadRing) updateHover();
}

void Host::pointerUp(Point point) {
  const auto alive = lifetime_.watch();
  pointerMoved(point);
  if (alive.expired()) return;
  const auto pressed = pressed_.lock();
  pressed_.reset();
  if (!pressed || !root_) return;
  pressed->isPressed = false;
  redraw();
  if (pressed->isOnPage && pressTarget(root_, point) == pressed) act(pressed);
}

// Works with copies: what is done may replace the element, or end the host.
void Host::act(const std::shared_ptr<Node>& target) const {
  if (const auto* menu = std::get_if<kinds::Menu>(&target->kind)) {
    const MenuRequest request{contentOnPage(target->parent).at(target->current()), menu->entries};
    if (const auto open = services_.openMenu) open(request);
    return;
  }
  const auto* button = std::get_if<kinds::Button>(&target->kind);
  const auto action = button ? button->action : std::get<kinds::Tap>(target->kind).action;
  if (action) action();
}

std::optional<std::string> Host::tooltip(Point point) const {
  return root_ ? tooltipAt(root_, point) : std::nullopt;
}

bool Host::scrolled(Point point, double delta) {
  if (!root_ || !scrollAt(*root_, point, delta)) return false;
  redraw();
  pointerMoved(point);
  return true;
}

bool Host::keyPressed(const platform::KeyPress& press) {
  using namespace platform::modifier;
  if (press.has(control | option | command)) return false;
  const auto alive = lifetime_.watch();
  if (isInvalid_) update();
  if (alive.expired() || !root_) return false;
  const FocusOrder order(root_);
  const auto from = order.indexOf(focus_.node.lock().get());
  if (press.key == Key::tab) {
    const auto to = order.next(from, focus_.place, press.has(shift));
    if (to) moveFocus(order, *to);
    return to.has_value();
  }
  if (!from || !focus_.isVisible) return false;
  const auto focused = order.at(*from);
  if (const auto to = order.neighbour(*from, press.key)) {
    const bool chooses = to != from && groupStyle(*focused) == FocusGroupStyle::choice;
    moveFocus(order, *to);
    if (chooses && !alive.expired()) act(order.at(*to));
    return true;
  }
  const bool opens = press.key == Key::down && std::holds_alternative<kinds::Menu>(focused->kind);
  if (press.key != Key::space && press.key != Key::returnKey && !opens) return false;
  act(focused);
  return true;
}

void Host::moveFocus(const FocusOrder& order, std::size_t to) {
  const auto target = order.at(to);
  focus_ = {target, to, true};
  scrollIntoView(*target);
  redraw();
  updateHover();
}

// What is on its way out, or hidden, loses it; Tab goes on from its place.
void Host::letGoOfFocus() {
  const auto focused = focus_.node.lock();
  if (!focused || !keepsFocus(*focused)) focus_ = {{}, focus_.place, false};
}

void Host::startInMenu() {
  if (!root_) return;
  const FocusOrder order(root_);
  const auto start = order.startOfMenu();
  if (!start) return;
  isMenu_ = true;
  moveFocus(order, *start);
  update();
}

void Host::focusUnderPointer() {
  const auto target = isMenu_ && root_ && pointer_ ? pressTarget(root_, *pointer_) : nullptr;
  if (target && groupStyle(*target) == FocusGroupStyle::menu) focus_ = {target, focus_.place, true};
}

}  // namespace hushpane::declarative
