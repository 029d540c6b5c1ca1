// From the start of a program to its window over the whole display: Hushpane in clean desktop, a program that only
// loads the same libraries and maps a window, and one that loads nothing but the X client library.

#include <chrono>
#include <cstdlib>
#include <stdexcept>

#include "bench/child_process.h"
#include "bench/desk.h"
#include "bench/display_client.h"
#include "bench/figure.h"
#include "desktops/x11/xcb_handle.h"

namespace {

using namespace hushpane;
using namespace hushpane::bench;
using Clock = std::chrono::steady_clock;

constexpr int rounds = 21;

// Hears of every window that is mapped on the root.
class MapWatch {
 public:
  MapWatch() {
    const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(client_.get(), client_.screen().root, XCB_CW_EVENT_MASK, &mask);
    client_.sync();
  }

  // What is over must not be taken for news.
  void forget() {
    client_.sync();
    while (const x11::Reply<xcb_generic_event_t> event{xcb_poll_for_queued_event(client_.get())}) continue;
  }

  // Waits until a window outside the window manager is mapped.
  void wait() {
    while (const x11::Reply<xcb_generic_event_t> event{xcb_wait_for_event(client_.get())}) {
      if ((event->response_type & 0x7f) != XCB_MAP_NOTIFY) continue;
      if (reinterpret_cast<const xcb_map_notify_event_t&>(*event).override_redirect) return;
    }
    throw std::runtime_error("the server is gone");
  }

 private:
  DisplayClient client_;
};

double secondsToWindow(MapWatch& watch, const std::string& program) {
  watch.forget();
  const auto start = Clock::now();
  const ChildProcess process({program});
  watch.wait();
  return std::chrono::duration<double>(Clock::now() - start).count();
}

}  // namespace

int main() {
  choose("cleanDesktop", "dim");
  MapWatch watch;
  std::vector<double> hushpane, loaded, bare;
  for (int round = 0; round < rounds; ++round) {
    hushpane.push_back(secondsToWindow(watch, HUSHPANE_BINARY));
    loaded.push_back(secondsToWindow(watch, clientProgram("loaded_client")));
    bare.push_back(secondsToWindow(watch, clientProgram("bare_client")));
  }
  const double own = median(hushpane), libraries = median(loaded), least = median(bare);
  print({"start to covered desktop", text(own * 1e3, "ms"),
         "the same libraries and a window: " + text(libraries * 1e3, "ms"), own / libraries, "under 2",
         own / libraries < 2});
  print({"start to covered desktop",
         text(own * 1e3, "ms"),
         "a bare client and its window: " + text(least * 1e3, "ms"),
         own / least,
         {},
         {}});
}
