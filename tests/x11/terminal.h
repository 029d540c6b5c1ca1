#pragma once

#include "tests/x11/process.h"
#include "tests/x11/x_connection.h"

namespace hushpane::x11_tests {

// An xterm of one colour: another application, with a frame from the window manager.
class Terminal {
 public:
  struct Look {
    std::string title;
    Pixel color;
    Point origin;
  };

  Terminal(const Look& look, const Environment& environment, const std::filesystem::path& folder, const XConnection& x)
      : x_(x), look_(look), typedFile_(folder / (look.title + ".typed")), process_(command(), environment, folder) {}

  // Waits until the window stands on the screen.
  void waitForWindow() {
    if (!waitUntil([&] { return (window_ = x_.windowTitled(look_.title)) != XCB_NONE && isDrawn(); })) {
      throw std::runtime_error("xterm did not start: " + process_.errors());
    }
  }

  xcb_window_t window() const { return window_; }
  xcb_window_t frame() const { return x_.frameOf(window_); }
  Pixel color() const { return look_.color; }
  Rect bounds() const { return x_.bounds(window_); }
  Rect frameBounds() const { return x_.bounds(frame()); }
  // A place in the lower left corner where no text is.
  Point spot() const { return {bounds().x + 20, bounds().bottom() - 20}; }
  // All lines that came in from the keyboard so far.
  std::string typed() const { return contents(typedFile_); }

 private:
  std::vector<std::string> command() const {
    std::ostringstream color, place;
    color << look_.color;
    place << "60x24+" << look_.origin.x << '+' << look_.origin.y;
    return {"xterm",
            "-T",
            look_.title,
            "-bg",
            color.str(),
            "-fn",
            "fixed",
            "+sb",
            "-geometry",
            place.str(),
            "-e",
            "sh",
            "-c",
            "exec cat >\"$0\"",
            typedFile_.string()};
  }
  bool isDrawn() const { return x_.isOnScreen(window_) && isNear(x_.pixel(spot()), look_.color, 0); }

  const XConnection& x_;
  Look look_;
  std::filesystem::path typedFile_;
  Process process_;
  xcb_window_t window_ = XCB_NONE;
};

}  // namespace hushpane::x11_tests
