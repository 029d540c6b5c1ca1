#include "desktops/sim/compositor.h"

namespace hushpane::sim {

platform::Image renderScreen(const std::vector<SimWindowServer::Shown>&, const platform::Screen&) {
  return {};
}

}  // namespace hushpane::sim
