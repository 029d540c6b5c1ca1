#pragma once

#include <vector>

#include "desktops/sim/sim_window_server.h"
#include "platform/window_list.h"

namespace hushpane::sim {

// The window list of the simulated desktop. The program's own windows are in it.
class SimWindowList : public platform::WindowList {
 public:
  SimWindowList(SimWindowServer& server, std::int32_t ownPid) : server_(server), ownPid_(ownPid) {}

  std::optional<std::span<const platform::WindowInfo>> onScreenWindows() override;

  void setReadable(bool readable) { isReadable_ = readable; }

 private:
  platform::WindowInfo describe(const SimWindowServer::Shown& shown) const;

  SimWindowServer& server_;
  std::int32_t ownPid_;
  bool isReadable_ = true;
  std::vector<platform::WindowInfo> windows_;
};

}  // namespace hushpane::sim
