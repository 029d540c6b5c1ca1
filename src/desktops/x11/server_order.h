#pragma once

#include <xcb/xcb.h>

#include <span>
#include <vector>

#include "desktops/x11/pixel_rect.h"
#include "desktops/x11/stack_model.h"
#include "platform/window.h"

namespace hushpane::x11 {

// What a child of the root means to the order of the overlays.
enum class OrderRole {
  passive,   // not to be seen: it may lie anywhere
  desktop,   // the desktop itself
  ordinary,  // an application's window
  dock,      // a panel of the desktop
  raised,    // menus, notifications, windows kept above others
  overlay,   // a window of this program
};

struct OrderItem {
  xcb_window_t id = XCB_WINDOW_NONE;
  OrderRole role = OrderRole::passive;
  std::int32_t application = 0;  // the process that it belongs to, 0 when nobody knows
  PixelRect bounds;
  std::uint32_t moves = 0;   // how often somebody else has moved it in the stack
  bool isCompanion = false;  // a dialog or a palette: it belongs to another window of its application
};

std::vector<OrderItem> orderItemsOf(const std::vector<StackEntry>& stack);

// Where an overlay belongs.
struct PlacementWish {
  xcb_window_t window = XCB_WINDOW_NONE;
  int level = platform::windowLevel::normal;
  platform::Window::Place place = platform::Window::Place::front;
  xcb_window_t sibling = XCB_WINDOW_NONE;  // a child of the root, for Place::below; none when it is gone
  bool isPlaced = false;                   // it had a place before
  PixelRect bounds;
  std::vector<xcb_window_t> newcomers;  // what stands above the sibling only for now, and is let be
  bool sparesOwners = false;            // what a dialog belongs to may stay clear with it
  bool isHollow = false;                // above all windows, where it can only leave the sibling clear
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
// where it belongs. Level -1 is directly above the topmost desktop window, or at the bottom. Where windows that have
// nothing to do with the sibling stand above it, because the manager does not raise the active window, the overlay goes
// above the topmost of them. Overlays that want the same place keep the order that they have among themselves.
std::vector<Restack> restacksFor(const PlacementWish& wish, std::span<const OrderItem> stack);

// The windows above the wish's sibling on the overlay's display that have nothing to do with it, from bottom to top.
// None for other wishes than a place below.
std::vector<xcb_window_t> strangersAbove(const PlacementWish& wish, std::span<const OrderItem> stack);

// The windows beneath an overlay at its place that it must leave clear: the sibling and its dialogs above it, where the
// overlay is not beneath them all, and the docks that a manager keeps beneath the windows.
std::vector<xcb_window_t> leftClear(const PlacementWish& wish, std::span<const OrderItem> stack);

// Whether an overlay that belongs beneath all windows lies above one of them.
bool coversWindows(const PlacementWish& wish, std::span<const OrderItem> stack);

// Does to the model what the request does to the server's stack.
void carryOut(const Restack& restack, std::vector<OrderItem>& stack);

}  // namespace hushpane::x11
