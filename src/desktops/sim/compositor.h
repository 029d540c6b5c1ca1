#pragma once

#include <optional>
#include <vector>

#include "desktops/sim/sim_panels.h"
#include "desktops/sim/sim_status_item.h"
#include "desktops/sim/sim_window_server.h"
#include "platform/image.h"
#include "platform/screen.h"

namespace hushpane::sim {

// What there is to be seen.
struct Scene {
  std::vector<SimWindowServer::Shown> stack;  // the windows, from front to back
  platform::ImagePtr background;              // null: the desktop draws its own
  std::vector<SimPanel*> panels;              // of the program, in front of all windows, from front to back
  const SimStatusItem* statusItem = nullptr;
};

// What a screen shows, in its pixels. A screen without area gives an empty picture.
platform::Image renderScreen(const Scene& scene, const platform::Screen& screen);

// One pixel of that picture (0xAARRGGBB), the one at `point`, for less work; nothing when the point is not on the
// screen.
std::optional<std::uint32_t> renderPixel(const Scene& scene, const platform::Screen& screen, platform::Point point);

// All screens in one picture, as they are arranged, with the first one's scale; transparent in between.
platform::Image renderScreens(const Scene& scene, const std::vector<platform::Screen>& screens);

}  // namespace hushpane::sim
