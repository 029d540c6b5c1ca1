#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <vector>

#include "desktops/x11/client_facts.h"
#include "desktops/x11/compositor_watch.h"
#include "desktops/x11/connection.h"
#include "desktops/x11/current_workspace.h"
#include "desktops/x11/manager_watch.h"
#include "desktops/x11/stack_model.h"
#include "platform/handler_list.h"

namespace hushpane::x11 {

// The cached model of the windows on the root. Events keep the order and the geometry; what only the server can tell is
// fetched at the next read after it became unknown, all in a few pipelined batches. A read that finds nothing new costs
// no round trip. Windows that vanish meanwhile are left out when the event about it arrives.
class WindowTree {
 public:
  WindowTree(Connection& connection, ManagerWatch& manager, CompositorWatch& compositor, CurrentWorkspace& workspace);

  // From bottom to top. Valid until the next event or read.
  const std::vector<StackEntry>& entries();
  // The child of the root that is the window or holds it; null when there is none.
  const StackEntry* topLevelOf(xcb_window_t window);

  // Another number after every change that a read could show.
  std::uint64_t revision() const { return revision_; }

  // The process that owns a window, by the cache or with one round trip.
  std::optional<std::int32_t> pidOf(xcb_window_t window);

  // A window of this program, just made: it is marked, as is the frame that it may get, and never asked about.
  void addOwn(xcb_window_t window, const PixelRect& bounds);
  void removeOwn(xcb_window_t window) { own_.erase(window); }

  // This program has just asked for that order with the request of that sequence number; the event that confirms it is
  // on its way.
  void expectAbove(xcb_window_t window, xcb_window_t sibling, std::uint32_t sequence);
  // The order may be another than the model says.
  void distrustOrder();

  // Called at each change, while events are being handled: note it, do not read.
  platform::Token addChangeHandler(std::function<void()> handler) { return handlers_.add(std::move(handler)); }

 private:
  void handle(const xcb_generic_event_t& event);
  void handleProperty(const xcb_property_notify_event_t& event);
  bool isOfServer(const xcb_generic_event_t& event) const;
  bool forgetReused(const xcb_generic_event_t& event);
  void changed();
  void readOrder();
  void readAttributes();
  void readClients();
  void readClientList();
  void searchClients();
  void resolveFrames(std::vector<xcb_window_t> clients);
  void assignClients();
  void readFacts();
  void findAway();

  Connection& connection_;
  ManagerWatch& manager_;
  CompositorWatch& compositor_;
  CurrentWorkspace& workspace_;
  ClientFactsReader factsReader_;
  StackModel model_;
  std::map<xcb_window_t, xcb_window_t> frameOfClient_;  // as the manager lists them
  std::map<xcb_window_t, xcb_window_t> frameOfUnlisted_;
  std::set<xcb_window_t> own_;
  std::set<xcb_window_t> watched_;
  std::uint64_t revision_ = 1;
  std::uint32_t orderSequence_ = 0;
  std::optional<std::uint32_t> expectedSequence_;  // of the latest order asked for, until the order is read
  bool isOrderKnown_ = false;
  bool areClientsKnown_ = false;
  bool hasUnread_ = true;
  platform::HandlerList<void()> handlers_;
  platform::Token events_;
  platform::Token managerChanges_;
  platform::Token compositorChanges_;
  platform::Token workspaceChanges_;
};

}  // namespace hushpane::x11
