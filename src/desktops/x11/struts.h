#pragma once

#include <span>
#include <vector>

#include "desktops/x11/connection.h"
#include "desktops/x11/pixel_rect.h"

namespace hushpane::x11 {

// What a bar keeps free along one edge of the root window.
struct Strut {
  enum class Edge { left, right, top, bottom };
  Edge edge = Edge::left;
  PixelRect area;
};

// Of all windows that are mapped now. Costs two waits for the server.
std::vector<Strut> readStruts(Connection& connection);

// What the bars leave of a screen. A bar that would take more than a third of it, as one between two screens seems to
// do on the far side, stands on another screen.
PixelRect withoutStruts(const PixelRect& screen, std::span<const Strut> struts);

}  // namespace hushpane::x11
