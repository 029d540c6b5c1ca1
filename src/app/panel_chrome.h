#pragma once

#include "declarative/element.h"

namespace hushpane {

// What surrounds a page of the program on the desktop.
struct PanelChrome {
  double radius = 0;  // of the corners
  double margin = 0;  // around the panel, for its shadow
  declarative::AdaptiveShadow shadow;

  // The page on the ground of a panel, cut to its outline.
  declarative::Element around(const declarative::Element& page) const;
  declarative::Shape outline() const { return declarative::RoundedRectangle{radius}; }
};

namespace chrome {
inline constexpr PanelChrome panel{12, 36, {declarative::opaqueBlack.opacity(0.28), 12, {0, 6}}};
inline constexpr PanelChrome list{8, 24, {declarative::opaqueBlack.opacity(0.26), 8, {0, 4}}};
inline constexpr PanelChrome tooltip{5, 9, {declarative::opaqueBlack.opacity(0.2), 3, {0, 1}}};
}  // namespace chrome

}  // namespace hushpane
