#pragma once

#include "platform/canvas.h"

namespace hushpane {

inline constexpr platform::Size menuBarIconSize{20, 20};  // points

// The program's icon for a menu bar, in black: the bar itself gives it its colour. Active: a cover is on screen. Its
// lines lie on whole pixels and are as thick as whole ones.
void drawMenuBarIcon(platform::Canvas& canvas, double pixelsPerPoint, bool isActive);

}  // namespace hushpane
