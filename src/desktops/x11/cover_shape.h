#pragma once

#include <vector>

#include "desktops/x11/connection.h"
#include "desktops/x11/stack_model.h"

namespace hushpane::x11 {

// Where an overlay is to be seen: everywhere, nowhere, or everywhere but where windows that it must leave clear show
// through the windows above them.
class CoverShape {
 public:
  static CoverShape nothing();
  // `below` are the windows beneath the overlay, from bottom to top; `clear` are those to be left clear.
  static CoverShape around(const std::vector<StackEntry>& below, const std::vector<xcb_window_t>& clear);

  bool operator==(const CoverShape& other) const;
  bool hasHole() const { return !parts_.empty(); }
  // Some managers that composite go on to paint a window as it was cut before, once it has no shape at all: in their
  // hands it is to keep one.
  enum class Whole { unshaped, shaped };
  void apply(Connection& connection, xcb_window_t overlay, const PixelRect& bounds, Whole whole) const;

 private:
  struct Part {
    StackEntry window;
    bool isClear = false;
  };
  bool isNothing_ = false;
  std::vector<Part> parts_;  // from the lowest window that is clear on
};

}  // namespace hushpane::x11
