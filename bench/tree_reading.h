#pragma once

#include <xcb/xcb.h>

#include <array>
#include <vector>

namespace hushpane::bench {

// What a program does that keeps no model of the windows: it asks the server for everything at each tick. The requests
// of one step go out together, so that a reading costs five round trips, however many windows there are.
class TreeReading {
 public:
  explicit TreeReading(xcb_connection_t* connection);

  // Returns how many applications' windows were found, with their places.
  std::size_t read();

 private:
  std::vector<xcb_window_t> childrenOf(const std::vector<xcb_window_t>& windows);
  void readPlaces(const std::vector<xcb_window_t>& windows);
  std::size_t readProperties(const std::vector<xcb_window_t>& windows);

  xcb_connection_t* connection_;
  xcb_window_t root_;
  std::array<xcb_atom_t, 6> properties_{};
};

}  // namespace hushpane::bench
