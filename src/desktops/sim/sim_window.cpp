#include "desktops/sim/sim_window.h"

#include "desktops/sim/sim_window_server.h"

namespace hushpane::sim {

SimWindow::SimWindow(SimWindowServer& server, platform::WindowNumber number, platform::Animator& animator,
                     const platform::Rect& frame, const platform::WindowConfiguration& configuration)
    : platform::Window(animator, frame, configuration), server_(server), number_(number) {
  server_.attach(*this);
}

SimWindow::~SimWindow() {
  server_.detach(*this);
}

bool SimWindow::isOnScreen() const {
  return shownLevel().has_value();
}

std::optional<int> SimWindow::shownLevel() const {
  return server_.layerOf(number_);
}

void SimWindow::orderChanged() {
  server_.orderChanged(*this);
}

}  // namespace hushpane::sim
