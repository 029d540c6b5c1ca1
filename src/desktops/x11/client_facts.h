#pragma once

#include <xcb/res.h>
#include <xcb/xcb.h>

#include <cstdint>
#include <optional>
#include <vector>

#include "desktops/x11/connection.h"
#include "desktops/x11/stack_model.h"

namespace hushpane::x11 {

// Reads what windows say about themselves.
class ClientFactsReader {
 public:
  explicit ClientFactsReader(Connection& connection) : connection_(connection) {}

  // Fills the facts of all entries given with one wait for the server.
  void read(const std::vector<StackEntry*>& entries);

  // The process that the server knows as the owner, else the one that the window names.
  std::optional<std::int32_t> readPid(xcb_window_t window);

  // Whether a change of that property changes facts.
  bool isRelevant(xcb_atom_t property);

 private:
  struct Request {
    StackEntry* entry;
    xcb_get_property_cookie_t types, states, pid, opacity, frameOpacity, workspace, owner, shadow, frame;
    xcb_res_query_client_ids_cookie_t process;
    bool hasProcess;
  };
  Request ask(StackEntry& entry);
  void answer(const Request& request);
  xcb_res_query_client_ids_cookie_t askOwner(xcb_window_t window);
  std::optional<std::int32_t> ownerPid(xcb_res_query_client_ids_cookie_t cookie);
  std::optional<WindowKind> kindOf(xcb_atom_t type);

  Connection& connection_;
};

}  // namespace hushpane::x11
