#include "tests/whole_desktops/cover_moves.h"

#include <unistd.h>

#include <algorithm>
#include <sstream>

namespace hushpane::x11_tests {

CoverMoves::CoverMoves(const DesktopSession& session, const std::vector<xcb_window_t>& covers)
    : watcher_(session.display()) {
  for (const xcb_window_t cover : covers) windows_.push_back(watcher_.frameOf(cover));
  const auto owner = watcher_.numbers(watcher_.root(), "_NET_SUPPORTING_WM_CHECK");
  if (!owner.empty()) manager_ = watcher_.processOf(owner.front());
  const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
  xcb_change_window_attributes(watcher_.get(), watcher_.root(), XCB_CW_EVENT_MASK, &mask);
  watcher_.sync();
}

int CoverMoves::count() const {
  watcher_.sync();
  while (const auto event = own(xcb_poll_for_event(watcher_.get()))) {
    if ((event->response_type & 0x7f) != XCB_CONFIGURE_NOTIFY) continue;
    const auto window = reinterpret_cast<const xcb_configure_notify_event_t*>(event.get())->window;
    count_ += int(std::count(windows_.begin(), windows_.end(), window));
  }
  return count_;
}

double CoverMoves::managerSeconds() const {
  const std::string line = contents("/proc/" + std::to_string(manager_) + "/stat");
  std::istringstream fields(line.substr(std::min(line.rfind(')') + 1, line.size())));
  std::string skipped;
  constexpr int before = 11;  // from the state to the time spent
  for (int field = 0; field < before; ++field) fields >> skipped;
  double user = 0, system = 0;
  fields >> user >> system;
  return (user + system) / double(sysconf(_SC_CLK_TCK));
}

}  // namespace hushpane::x11_tests
