#include "desktops/x11/blur.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace hushpane::x11 {

namespace {

// Halving by averages and doubling between neighbours again, down to pixels of the size p, spreads a spot with a
// variance of p² (1/12 + 2/9): the box of the smallest pixel and the tents of every doubling.
const double deviationPerReduction = std::sqrt(1.0 / 12 + 2.0 / 9);

}  // namespace

std::vector<double> blurReductions(double radius) {
  const double smallest = radius / 2 / deviationPerReduction;
  std::vector<double> reductions;
  for (double reduction = 2; reduction < smallest; reduction *= 2) reductions.push_back(reduction);
  // A last step of less than a fifth changes little.
  while (reductions.size() > 2 && reductions.back() * 1.2 > smallest) reductions.pop_back();
  while (reductions.size() < 2) reductions.push_back(reductions.empty() ? 2 : reductions.back() * 2);
  if (smallest > reductions.back()) reductions.push_back(smallest);
  return reductions;
}

Blur::Blur(Render& render, const BlurLook& look, int width, int height)
    : render_(render), look_(look), width_(width), height_(height) {
  const auto reductions = blurReductions(look.radius);
  firstScale_ = static_cast<int>(reductions.front());
  for (const double reduction : reductions) {
    const int levelWidth = std::max(1, static_cast<int>(std::ceil(width / reduction)));
    const int levelHeight = std::max(1, static_cast<int>(std::ceil(height / reduction)));
    Level level{render.makeSurface(SurfaceFormat::opaque, levelWidth, levelHeight), reduction, reduction};
    if (!levels_.empty()) {
      level.scaleX = static_cast<double>(width) / levelWidth;
      level.scaleY = static_cast<double>(height) / levelHeight;
    }
    levels_.push_back(std::move(level));
  }
  const auto& size = levels_[resultLevel];
  result_ = {render_.makeSurface(SurfaceFormat::argb, size.surface.width, size.surface.height), size.scaleX,
             size.scaleY};
}

PixelRect Blur::areaOn(const Level& level, const PixelRect& onOverlay) {
  const int left = static_cast<int>(std::floor(onOverlay.x / level.scaleX)) - 1;
  const int top = static_cast<int>(std::floor(onOverlay.y / level.scaleY)) - 1;
  const int right = static_cast<int>(std::ceil(onOverlay.right() / level.scaleX)) + 1;
  const int bottom = static_cast<int>(std::ceil(onOverlay.bottom() / level.scaleY)) + 1;
  return PixelRect{left, top, right - left, bottom - top}.intersection(
      {0, 0, level.surface.width, level.surface.height});
}

PixelRect Blur::onOverlay(const Level& level, const PixelRect& area) {
  const int left = static_cast<int>(std::floor(area.x * level.scaleX));
  const int top = static_cast<int>(std::floor(area.y * level.scaleY));
  return {left, top, static_cast<int>(std::ceil(area.right() * level.scaleX)) - left,
          static_cast<int>(std::ceil(area.bottom() * level.scaleY)) - top};
}

void Blur::scaleBetween(const Level& from, const Level& to, const PixelRect& area) {
  render_.stretch(from.surface.picture.get(), to.scaleX / from.scaleX, to.scaleY / from.scaleY);
  render_.composite(XCB_RENDER_PICT_OP_SRC, from.surface.picture.get(), XCB_NONE, to.surface.picture.get(), {0, 0},
                    area);
}

PixelRect Blur::refresh(Backdrop& backdrop, const PixelRegion& dirty) {
  if (dirty.isEmpty()) return {};
  backdrop.compose(levels_.front().surface, dirty, firstScale_);
  // On the way down each picture is drawn where the next smaller one reads it.
  const auto last = levels_.size() - 1;
  std::vector<PixelRect> areas(levels_.size());
  areas[last] = areaOn(levels_[last], dirty.bounds());
  for (auto level = last; level > resultLevel; --level)
    areas[level - 1] = areaOn(levels_[level - 1], onOverlay(levels_[level], areas[level]));
  for (std::size_t level = resultLevel; level <= last; ++level)
    scaleBetween(levels_[level - 1], levels_[level], areas[level]);
  // On the way up it is drawn wherever the smaller one changed; that is never less than on the way down.
  for (auto level = last; level > resultLevel; --level) {
    areas[level - 1] = areaOn(levels_[level - 1], onOverlay(levels_[level], areas[level].grown(1)));
    scaleBetween(levels_[level], level - 1 == resultLevel ? result_ : levels_[level - 1], areas[level - 1]);
  }
  if (last == resultLevel) scaleBetween(levels_[last], result_, areas[last]);
  const auto& changed = areas[resultLevel];
  render_.fill(XCB_RENDER_PICT_OP_OVER, result_.surface.picture.get(), look_.tint, std::span(&changed, 1));
  return onOverlay(result_, changed.grown(1)).intersection({0, 0, width_, height_});
}

xcb_render_picture_t Blur::picture(int width, int height) {
  const auto picture = result_.surface.picture.get();
  render_.stretch(picture, static_cast<double>(ownWidth()) / width, static_cast<double>(ownHeight()) / height);
  return picture;
}

}  // namespace hushpane::x11
