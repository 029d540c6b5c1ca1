#include "desktops/sim/sim_user_defaults.h"

#include <utility>

namespace hushpane::sim {

SimUserDefaults::SimUserDefaults(platform::Dictionary& store, std::function<void()> changed)
    : store_(store), changed_(std::move(changed)) {}

std::optional<platform::Value> SimUserDefaults::value(std::string_view key) const {
  const auto found = store_.find(key);
  return found == store_.end() ? std::nullopt : std::optional(found->second);
}

void SimUserDefaults::set(std::string_view key, platform::Value value) {
  const auto found = store_.find(key);
  if (found != store_.end() && found->second == value) return;
  store_.insert_or_assign(std::string(key), std::move(value));
  changed_();
}

void SimUserDefaults::remove(std::string_view key) {
  const auto found = store_.find(key);
  if (found == store_.end()) return;
  store_.erase(found);
  changed_();
}

}  // namespace hushpane::sim
