#include "desktops/sim/sim_window_server.h"

#include <algorithm>
#include <utility>

namespace hushpane::sim {

std::unique_ptr<platform::Window> SimWindowServer::makeWindow(const platform::Rect& frame,
                                                              const platform::WindowConfiguration& configuration) {
  return std::make_unique<SimWindow>(*this, ++lastNumber_, animator_, frame, configuration);
}

platform::WindowNumber SimWindowServer::add(AppWindow window) {
  const auto number = ++lastNumber_;
  stack_.bringToFront(number, window.layer);
  applications_.emplace(number, std::move(window));
  return number;
}

bool SimWindowServer::change(platform::WindowNumber number, const std::function<void(AppWindow&)>& change) {
  const auto found = applications_.find(number);
  if (found == applications_.end()) return false;
  const int layer = found->second.layer;
  change(found->second);
  if (found->second.layer != layer) stack_.bringToFront(number, found->second.layer);
  return true;
}

bool SimWindowServer::setFrame(platform::WindowNumber number, const platform::Rect& frame) {
  return change(number, [&frame](AppWindow& window) { window.frame = frame; });
}

bool SimWindowServer::raise(platform::WindowNumber number) {
  const auto found = applications_.find(number);
  if (found == applications_.end()) return false;
  stack_.bringToFront(number, found->second.layer);
  return true;
}

bool SimWindowServer::close(platform::WindowNumber number) {
  if (applications_.erase(number) == 0) return false;
  stack_.remove(number);
  return true;
}

void SimWindowServer::raiseAll(std::int32_t ownerPid) {
  const auto items = stack_.items();
  for (auto item = items.rbegin(); item != items.rend(); ++item) {
    const auto found = applications_.find(item->number);
    if (found != applications_.end() && found->second.ownerPid == ownerPid) raise(item->number);
  }
}

void SimWindowServer::closeAll(std::int32_t ownerPid) {
  const auto items = stack_.items();
  for (const auto& item : items) {
    const AppWindow* window = find(item.number);
    if (window && window->ownerPid == ownerPid) close(item.number);
  }
}

const AppWindow* SimWindowServer::find(platform::WindowNumber number) const {
  const auto found = applications_.find(number);
  return found == applications_.end() ? nullptr : &found->second;
}

std::vector<SimWindowServer::Shown> SimWindowServer::stack() {
  commitOutsideTurn();
  std::vector<Shown> result;
  for (const auto& item : stack_.items()) {
    const AppWindow* application = find(item.number);
    if (application && application->space != space_) continue;
    const auto own = std::ranges::find(own_, item.number, &SimWindow::number);
    result.push_back({item.number, item.layer, application, own == own_.end() ? nullptr : *own});
  }
  return result;
}

SimWindow* SimWindowServer::ownWindow(const platform::Rect& frame) const {
  const auto found = std::ranges::find_if(own_, [&frame](const auto* window) { return window->frame() == frame; });
  return found == own_.end() ? nullptr : *found;
}

void SimWindowServer::commit() {
  const auto before = stack_.items();
  for (SimWindow* window : byLastOrdering_) place(*window);
  if (stack_.items() != before) ++orderChangeCount_;
}

void SimWindowServer::commitOutsideTurn() {
  if (!queue_.isRunning()) commit();
}

void SimWindowServer::place(SimWindow& window) {
  const auto number = window.number();
  if (!window.isVisible()) return stack_.remove(number);
  const auto* item = stack_.find(number);
  if (window.place() == platform::Window::Place::front || !item || item->layer != window.level())
    stack_.bringToFront(number, window.level());
  if (window.place() == platform::Window::Place::below) stack_.putBelow(number, window.placeSibling());
}

void SimWindowServer::attach(SimWindow& window) {
  own_.push_back(&window);
}

void SimWindowServer::detach(SimWindow& window) {
  std::erase(own_, &window);
  std::erase(byLastOrdering_, &window);
  stack_.remove(window.number());
}

void SimWindowServer::orderChanged(SimWindow& window) {
  std::erase(byLastOrdering_, &window);
  byLastOrdering_.push_back(&window);
}

std::optional<int> SimWindowServer::layerOf(platform::WindowNumber number) {
  commitOutsideTurn();
  const auto* item = stack_.find(number);
  return item ? std::optional(item->layer) : std::nullopt;
}

}  // namespace hushpane::sim
