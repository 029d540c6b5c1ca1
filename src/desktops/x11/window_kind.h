#pragma once

#include <cstdint>

namespace hushpane::x11 {

// What a window is to the desktop, after the EWMH window types.
enum class WindowKind {
  normal,  // also windows without a type
  dialog,
  utility,
  toolbar,
  splash,
  menu,
  tooltip,
  notification,
  dragIcon,
  dock,
  desktop,
};

// What decides about a window's layer.
struct LayerFacts {
  WindowKind kind = WindowKind::normal;
  bool isOverrideRedirect = false;
  bool isAbove = false;  // asks to be kept above others
};

// 0 for the windows that people work in; menus, docks, notifications and windows kept above have other layers. Desktop
// windows lie below all.
std::int64_t layerOf(const LayerFacts& facts);

}  // namespace hushpane::x11
