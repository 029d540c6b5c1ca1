#include "platform/notification_center.h"

#include <utility>

namespace hushpane::platform {

Token NotificationCenter::addObserver(std::string_view name, std::function<void()> handler) {
  return observers_[std::string(name)].add(std::move(handler));
}

void NotificationCenter::post(std::string_view name) {
  const auto found = observers_.find(name);
  if (found != observers_.end()) found->second.forEach([](const auto& handler) { handler(); });
}

}  // namespace hushpane::platform
