#include "ui/menu/menu_bar_icon.h"

#include "platform/path.h"

namespace hushpane {

namespace {

using platform::Rect;

constexpr double bodyHeight = 13;
constexpr double cornerRadius = 2.5;
constexpr double bandWidth = 5;  // at the right end
constexpr Rect body{1, (menuBarIconSize.height - bodyHeight) / 2, menuBarIconSize.width - 2, bodyHeight};
constexpr platform::Stroke line{.width = 1};

constexpr platform::Color ink(double alpha) {
  return {0, 0, 0, alpha};
}

}  // namespace

void drawMenuBarIcon(platform::Canvas& canvas, bool isActive) {
  const auto outline = platform::roundedRectanglePath(body, cornerRadius, platform::CornerStyle::circular);
  const double split = body.right() - bandWidth;
  if (isActive) {
    canvas.clip(outline);
    canvas.fill(platform::rectanglePath({split, body.y, bandWidth, body.height}), ink(1));
    canvas.restoreClip();
    canvas.stroke(outline, ink(1), line);
    return;
  }
  canvas.stroke(outline, ink(1), line);
  platform::Path divider;
  divider.moveTo({split, body.y + 1}).lineTo({split, body.bottom() - 1});
  canvas.stroke(divider, ink(0.38), line);
  canvas.fill(platform::rectanglePath({split + 0.5, body.y + 1, 3.5, body.height - 2}), ink(0.13));
}

}  // namespace hushpane
