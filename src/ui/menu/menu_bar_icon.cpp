#include "ui/menu/menu_bar_icon.h"

#include <algorithm>
#include <cmath>

#include "platform/path.h"

namespace hushpane {

namespace {

using platform::Rect;

constexpr Rect outside{0.5, 3, menuBarIconSize.width - 1, menuBarIconSize.height - 6};  // of the outline
constexpr double cornerRadius = 2.5;
constexpr double bandWidth = 5;  // at the right end, to the middle of the outline
constexpr double gap = 0.5;      // between the outline and what it surrounds

constexpr platform::Color ink(double alpha) {
  return {0, 0, 0, alpha};
}

Rect inset(const Rect& rect, double by) {
  return {rect.x + by, rect.y + by, rect.width - 2 * by, rect.height - 2 * by};
}

// Lengths in points that are whole pixels.
class Pixels {
 public:
  explicit Pixels(double perPoint) : perPoint_(perPoint) {}

  double nearest(double points) const { return std::round(points * perPoint_) / perPoint_; }
  double below(double points) const { return std::floor(points * perPoint_) / perPoint_; }
  double thickness(double points) const { return std::max(nearest(points), 1 / perPoint_); }

 private:
  double perPoint_;
};

}  // namespace

void drawMenuBarIcon(platform::Canvas& canvas, double pixelsPerPoint, bool isActive) {
  const Pixels pixels(pixelsPerPoint);
  const double line = pixels.thickness(1);
  const double left = pixels.nearest(outside.x), top = pixels.nearest(outside.y);
  const Rect whole{left, top, menuBarIconSize.width - 2 * left, menuBarIconSize.height - 2 * top};
  const Rect body = inset(whole, line / 2);
  const auto outline = platform::roundedRectanglePath(body, cornerRadius, platform::CornerStyle::circular);
  const double split = pixels.nearest(body.right() - bandWidth - line / 2);
  if (isActive) {
    canvas.clip(outline);
    canvas.fill(platform::rectanglePath({split, body.y, body.right() - split, body.height}), ink(1));
    canvas.restoreClip();
    canvas.stroke(outline, ink(1), {.width = line});
    return;
  }
  canvas.stroke(outline, ink(1), {.width = line});
  const Rect inner = inset(whole, line + pixels.below(gap));
  canvas.fill(platform::rectanglePath({split, inner.y, line, inner.height}), ink(0.38));
  canvas.fill(platform::rectanglePath({split + line, inner.y, inner.right() - split - line, inner.height}), ink(0.13));
}

}  // namespace hushpane
