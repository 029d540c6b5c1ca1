#pragma once

#include <fstream>

#include "tests/x11/process.h"
#include "tests/x11/x_connection.h"

namespace hushpane::x11_tests {

// picom without any effect of its own, drawing by software.
class Compositor {
 public:
  Compositor(const Environment& environment, const std::filesystem::path& folder, const XConnection& x)
      : process_({"picom", "--config", configuration(folder)}, environment, folder) {
    if (!waitUntil([&] { return isRunning(x); })) throw std::runtime_error("picom did not start: " + process_.errors());
  }

  static bool isRunning(const XConnection& x) {
    const auto owner =
        own(xcb_get_selection_owner_reply(x.get(), xcb_get_selection_owner(x.get(), x.atom("_NET_WM_CM_S0")), nullptr));
    return owner && owner->owner != XCB_NONE;
  }

  void signal(int number) { process_.signal(number); }

 private:
  static std::string configuration(const std::filesystem::path& folder) {
    const std::filesystem::path file = folder / "picom.conf";
    std::ofstream(file) << "backend = \"xrender\"; vsync = false; shadow = false; fading = false;\n"
                           "inactive-opacity = 1.0; frame-opacity = 1.0; unredir-if-possible = false;\n";
    return file.string();
  }

  Process process_;
};

}  // namespace hushpane::x11_tests
