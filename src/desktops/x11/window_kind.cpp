#include "desktops/x11/window_kind.h"

namespace hushpane::x11 {

namespace {

constexpr std::int64_t desktopLayer = -1;
constexpr std::int64_t ordinaryLayer = 0;
constexpr std::int64_t floatingLayer = 3;
constexpr std::int64_t dockLayer = 20;
constexpr std::int64_t popupLayer = 101;

}  // namespace

std::int64_t layerOf(const LayerFacts& facts) {
  switch (facts.kind) {
    case WindowKind::desktop: return desktopLayer;
    case WindowKind::dock: return dockLayer;
    case WindowKind::menu:
    case WindowKind::tooltip:
    case WindowKind::notification:
    case WindowKind::dragIcon: return popupLayer;
    case WindowKind::toolbar:
    case WindowKind::splash: return floatingLayer;
    case WindowKind::normal:
    case WindowKind::dialog:
    case WindowKind::utility: break;
  }
  if (facts.isOverrideRedirect) return popupLayer;
  return facts.isAbove ? floatingLayer : ordinaryLayer;
}

}  // namespace hushpane::x11
