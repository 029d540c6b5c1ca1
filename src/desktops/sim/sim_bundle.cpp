#include "desktops/sim/sim_bundle.h"

namespace hushpane::sim {

std::optional<std::filesystem::path> SimBundle::imageURL(std::string_view name) const {
  const auto found = replaced_.find(name);
  return found == replaced_.end() ? resources_.imageURL(name) : found->second;
}

}  // namespace hushpane::sim
