#pragma once

#include <optional>
#include <span>
#include <vector>

#include "desktops/x11/connection.h"
#include "desktops/x11/pixel_rect.h"
#include "desktops/x11/struts.h"

namespace hushpane::x11 {

// What the window manager says it leaves to windows on the current workspace. It knows of bars that are no windows,
// such as those that it draws itself.
struct WorkAreas {
  std::vector<PixelRect> monitors;  // _GTK_WORKAREAS_Dn
  std::optional<PixelRect> all;     // _NET_WORKAREA: one rectangle for all monitors together
  PixelRect root;
};

// Costs a few waits for the server.
WorkAreas readWorkAreas(Connection& connection);

// What is free on a screen. Of the rectangle for all monitors only the outer edges count, and these only where no strut
// tells which screens the bar stands on. Managers publish nonsense, too: what would leave less than a third of the
// screen is ignored.
PixelRect freeArea(const PixelRect& screen, std::span<const Strut> struts, const WorkAreas& areas);

}  // namespace hushpane::x11
