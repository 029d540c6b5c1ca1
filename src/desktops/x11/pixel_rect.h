#pragma once

#include <xcb/xcb.h>

#include <algorithm>
#include <cstdint>
#include <vector>

namespace hushpane::x11 {

// A rectangle in pixels of the root window.
struct PixelRect {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;

  bool operator==(const PixelRect&) const = default;

  int right() const { return x + width; }
  int bottom() const { return y + height; }
  bool isEmpty() const { return width <= 0 || height <= 0; }

  PixelRect translated(int dx, int dy) const { return {x + dx, y + dy, width, height}; }
  PixelRect grown(int by) const { return {x - by, y - by, width + 2 * by, height + 2 * by}; }

  // The common part, empty (all 0) where there is none.
  PixelRect intersection(const PixelRect& other) const {
    const int left = std::max(x, other.x);
    const int top = std::max(y, other.y);
    const PixelRect common{left, top, std::min(right(), other.right()) - left,
                           std::min(bottom(), other.bottom()) - top};
    return common.isEmpty() ? PixelRect{} : common;
  }

  // The smallest rectangle around both; an empty one adds nothing.
  PixelRect united(const PixelRect& other) const {
    if (isEmpty()) return other;
    if (other.isEmpty()) return *this;
    const int left = std::min(x, other.x);
    const int top = std::min(y, other.y);
    return {left, top, std::max(right(), other.right()) - left, std::max(bottom(), other.bottom()) - top};
  }

  xcb_rectangle_t toXcb() const {
    return {static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), static_cast<std::uint16_t>(width),
            static_cast<std::uint16_t>(height)};
  }
};

// Rectangles that together need work. They may overlap; many small ones become one large one.
class PixelRegion {
 public:
  bool isEmpty() const { return rects_.empty(); }
  const std::vector<PixelRect>& rects() const { return rects_; }
  void clear() { rects_.clear(); }

  PixelRect bounds() const {
    PixelRect all;
    for (const auto& rect : rects_) all = all.united(rect);
    return all;
  }

  void add(const PixelRect& rect) {
    if (rect.isEmpty()) return;
    for (const auto& known : rects_)
      if (known.intersection(rect) == rect) return;
    rects_.push_back(rect);
    if (rects_.size() > largestCount) rects_ = {bounds()};
  }

 private:
  static constexpr std::size_t largestCount = 12;
  std::vector<PixelRect> rects_;
};

}  // namespace hushpane::x11
