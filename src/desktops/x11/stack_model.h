#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <optional>
#include <vector>

#include "desktops/x11/pixel_rect.h"
#include "desktops/x11/window_kind.h"

namespace hushpane::x11 {

// How much of a window lies outside another part of it, at each side, in pixels.
struct Insets {
  int left = 0, right = 0, top = 0, bottom = 0;
  bool isEmpty() const { return left == 0 && right == 0 && top == 0 && bottom == 0; }
  bool operator==(const Insets&) const = default;
};

// What an application, or the window manager, says about its window.
struct ClientFacts {
  WindowKind kind = WindowKind::normal;
  std::optional<std::int32_t> pid;
  double opacity = 1;
  bool isAbove = false;
  bool isBelow = false;                    // asks to be kept beneath others
  bool isHidden = false;                   // minimised: nothing of it is to be seen
  std::optional<std::uint32_t> workspace;  // on all when absent
  Insets shadow;                           // of its own, which the application draws inside the window
  Insets frame;                            // that the manager puts around it
};

// A child of the root window: a frame of the window manager's with an application's window inside, or such a window
// itself.
struct StackEntry {
  xcb_window_t id = XCB_WINDOW_NONE;
  PixelRect bounds;  // border included
  int border = 0;
  bool isMapped = false;
  bool isOverrideRedirect = false;
  bool isOwn = false;                     // a window of this program, or the frame of one
  xcb_window_t client = XCB_WINDOW_NONE;  // the application's window inside, when there is one
  // Known only after the server was asked, which is put off until the window is mapped.
  bool hasAttributes = false;
  bool isInputOnly = false;
  bool isSearched = false;  // for an application's window that no list names
  xcb_visualid_t visual = XCB_NONE;
  bool hasFacts = false;
  ClientFacts facts;
  bool isAway = false;                  // on a workspace that is not shown, though the manager keeps it mapped
  std::uint32_t moves = 0;              // how often somebody else has changed its place in the order
  std::uint32_t contentGeneration = 0;  // another value whenever the server gave the window a new pixmap

  xcb_window_t clientOrSelf() const { return client ? client : id; }
  bool isVisible() const { return isMapped && hasAttributes && !isInputOnly; }
  // Whether people can see it where no other window hides it; the facts must be known.
  bool isOnScreen() const { return isVisible() && !isAway && !facts.isHidden; }
  // What people take for the window: without the shadow that it draws itself.
  PixelRect bodyBounds() const;
  LayerFacts layerFacts() const { return {facts.kind, isOverrideRedirect && !client, facts.isAbove}; }
};

// The children of the root window from bottom to top, kept by the events that the root reports about them.
class StackModel {
 public:
  explicit StackModel(xcb_window_t root) : root_(root) {}

  const std::vector<StackEntry>& entries() const { return entries_; }
  std::vector<StackEntry>& entries() { return entries_; }
  StackEntry* find(xcb_window_t id);

  // Replaces the order; entries that are already known keep what is known about them.
  void setOrder(const xcb_window_t* ids, int count);

  // Takes part in the model where the event is about a child of the root; returns whether anything changed.
  bool apply(const xcb_generic_event_t& event);

  // Puts `id` directly above `sibling`, or to the bottom without one.
  bool moveAbove(xcb_window_t id, xcb_window_t sibling);

 private:
  using Iterator = std::vector<StackEntry>::iterator;
  Iterator locate(xcb_window_t id);
  bool create(const xcb_create_notify_event_t& event);
  bool followMove(xcb_window_t id, xcb_window_t sibling);
  bool configure(const xcb_configure_notify_event_t& event);
  bool reparent(const xcb_reparent_notify_event_t& event);
  bool circulate(const xcb_circulate_notify_event_t& event);
  bool setMapped(xcb_window_t id, bool isMapped);
  bool erase(xcb_window_t id);

  xcb_window_t root_;
  std::vector<StackEntry> entries_;
};

}  // namespace hushpane::x11
