#include "desktops/sim/sim_bundle.h"

namespace hushpane::sim {

std::optional<std::filesystem::path> SimBundle::imageURL(std::string_view name) const {
  const auto found = replaced_.find(name);
  return found == replaced_.end() ? resources_.imageURL(name) : found->second;
}

std::string SimBundle::infoString(std::string_view key) const {
  const auto found = info_.find(key);
  return found == info_.end() ? resources_.infoString(key) : found->second;
}

}  // namespace hushpane::sim
