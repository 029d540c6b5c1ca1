#pragma once

#include <functional>

#include "declarative/element.h"

namespace hushpane {

// One of the pictures to choose from, as a tile. With an `onRemove`, a button to remove the picture shows while the
// pointer is over the tile.
struct WallpaperSlotView {
  static constexpr double height = 90;  // points

  bool isSelected = false;
  std::function<void()> onTap;
  std::function<void()> onRemove;  // empty: the picture stays
  declarative::Element content;    // nothing, or what fills the tile
  declarative::AdaptiveColor accent;

  declarative::Element body(declarative::Context& context) const;
};

}  // namespace hushpane
