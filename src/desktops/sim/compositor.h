#pragma once

#include <optional>
#include <vector>

#include "desktops/sim/sim_window_server.h"
#include "platform/image.h"
#include "platform/screen.h"

namespace hushpane::sim {

// What a screen shows: the desktop's background and the windows upon it, given from front to back, in the pixels of the
// screen. A screen without area gives an empty picture.
platform::Image renderScreen(const std::vector<SimWindowServer::Shown>& stack, const platform::Screen& screen);

// One pixel of that picture (0xAARRGGBB), the one at `point`, for less work; nothing when the point is not on the
// screen.
std::optional<std::uint32_t> renderPixel(const std::vector<SimWindowServer::Shown>& stack,
                                         const platform::Screen& screen, platform::Point point);

// All screens in one picture, as they are arranged, with the first one's scale; transparent in between.
platform::Image renderScreens(const std::vector<SimWindowServer::Shown>& stack,
                              const std::vector<platform::Screen>& screens);

}  // namespace hushpane::sim
