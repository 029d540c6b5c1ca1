#pragma once

#include <xcb/xcb.h>

#include <span>
#include <vector>

#include "platform/window.h"

namespace hushpane::x11 {

// What a child of the root means to the order of the overlays.
enum class OrderRole {
  passive,   // not to be seen: it may lie anywhere
  desktop,   // the desktop itself
  ordinary,  // an application's window
  raised,    // docks, menus, notifications
  overlay,   // a window of this program
};

struct OrderItem {
  xcb_window_t id = XCB_WINDOW_NONE;
  OrderRole role = OrderRole::passive;
};

// Where an overlay belongs.
struct PlacementWish {
  xcb_window_t window = XCB_WINDOW_NONE;
  int level = platform::windowLevel::normal;
  platform::Window::Place place = platform::Window::Place::front;
  xcb_window_t sibling = XCB_WINDOW_NONE;  // a child of the root, for Place::below; none when it is gone
  bool isPlaced = false;                   // it had a place before
  bool operator==(const PlacementWish&) const = default;
};

// Asks the server to put `window` directly above or below `sibling`, or to the bottom without one.
struct Restack {
  xcb_window_t window = XCB_WINDOW_NONE;
  xcb_window_t sibling = XCB_WINDOW_NONE;
  xcb_stack_mode_t mode = XCB_STACK_MODE_BELOW;
  bool operator==(const Restack&) const = default;
};

// The one request that fulfils the wish in that stack (bottom to top); an empty vector when the overlay already is
// where it belongs. Level -1 is directly above the topmost desktop window, or at the bottom. Overlays that want the
// same place keep the order that they have among themselves.
std::vector<Restack> restacksFor(const PlacementWish& wish, std::span<const OrderItem> stack);

// Does to the model what the request does to the server's stack.
void carryOut(const Restack& restack, std::vector<OrderItem>& stack);

}  // namespace hushpane::x11
