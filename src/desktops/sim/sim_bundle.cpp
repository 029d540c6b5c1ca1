#include "desktops/sim/sim_bundle.h"

namespace hushpane::sim {

platform::ImagePtr SimBundle::image(std::string_view name) {
  const auto found = replaced_.find(name);
  return found == replaced_.end() ? resources_.image(name) : found->second;
}

}  // namespace hushpane::sim
