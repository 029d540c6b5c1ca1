#pragma once

#include <sys/types.h>
#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "platform/geometry.h"
#include "tests/x11/pixel.h"

namespace hushpane::x11_tests {

using platform::Point;
using platform::Rect;

template <class Reply>
using ReplyPtr = std::unique_ptr<Reply, decltype(&std::free)>;

template <class Reply>
ReplyPtr<Reply> own(Reply* reply) {
  return {reply, &std::free};
}

inline Point center(const Rect& rect) {
  return {rect.x + rect.width / 2, rect.y + rect.height / 2};
}

// A rectangle of the screen as it is seen, copied.
struct Picture {
  int width = 0;
  int height = 0;
  std::vector<std::uint32_t> pixels;

  Pixel at(int x, int y) const { return {pixels[static_cast<std::size_t>(y * width + x)]}; }
  bool operator==(const Picture&) const = default;
};

// A client of the X server that looks at the screen and at what the window manager says. Throws when there is no
// server; answers about windows that are gone are empty.
class XConnection {
 public:
  explicit XConnection(const std::string& display);

  xcb_connection_t* get() const { return connection_.get(); }
  xcb_window_t root() const { return screen_->root; }
  const xcb_screen_t& screen() const { return *screen_; }
  xcb_atom_t atom(const std::string& name) const;

  // A property of 32-bit numbers, or of text.
  std::vector<std::uint32_t> numbers(xcb_window_t window, const std::string& property) const;
  std::string text(xcb_window_t window, const std::string& property) const;
  void setNumbers(xcb_window_t window, const std::string& property, const std::string& type,
                  const std::vector<std::uint32_t>& values) const;

  // 0 when there is none.
  xcb_window_t activeWindow() const;
  // Those that the window manager handles, whether it lists them or not.
  std::vector<xcb_window_t> managedWindows() const;
  // The one with that title, 0 when there is none.
  xcb_window_t windowTitled(const std::string& title) const;
  // The child of the root that holds the window: its frame.
  xcb_window_t frameOf(xcb_window_t window) const;
  // The process that made the window, 0 when the server cannot tell.
  pid_t processOf(xcb_window_t window) const;
  // In coordinates of the root.
  Rect bounds(xcb_window_t window) const;
  void setBounds(xcb_window_t window, const Rect& bounds) const;
  bool isOnScreen(xcb_window_t window) const;
  // From back to front.
  std::vector<xcb_window_t> children(xcb_window_t window) const;
  std::vector<xcb_window_t> stacking() const { return children(root()); }

  Pixel pixel(Point point) const;
  Picture capture(const Rect& area) const;
  Picture capture() const;

  // Until the server has done everything asked so far.
  void sync() const;

 private:
  std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> connection_;
  const xcb_screen_t* screen_ = nullptr;
};

}  // namespace hushpane::x11_tests
