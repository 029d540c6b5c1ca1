// The panel: how soon it is there, what it costs in memory and pixmaps, what a mode switch in it takes, and that
// nothing of it is left once it is closed.

#include <giomm/dbusconnection.h>
#include <giomm/init.h>
#include <glibmm/variant.h>
#include <xcb/res.h>
#include <xcb/xtest.h>

#include <chrono>
#include <functional>
#include <map>
#include <stdexcept>
#include <vector>

#include "bench/desk.h"
#include "bench/display_client.h"
#include "bench/figure.h"
#include "bench/process_usage.h"
#include "desktops/session/dbus_session.h"

namespace {

using namespace hushpane;
using namespace hushpane::bench;

constexpr double settleSeconds = 3;
constexpr int measuredOpenings = 20, openings = 200, warmUp = 5, switches = 20;
constexpr double secondsToTheKeyboard = 0.1;  // which the panel gets when it is shown
constexpr double secondsOfASwitch = 1.2;      // its animations included
constexpr double twoFrames = 2.0 / 60;
constexpr double largestMemory = 26, largestGrowth = 0.5;  // MB
constexpr double libraryThreadSeconds = 30, idleSeconds = 30;
// Keycodes of the usual keyboard under X.
constexpr std::uint8_t escapeKey = 9, tabKey = 23, spaceKey = 65, shiftKey = 50;

double now() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

// The desktop as somebody uses the panel on it.
class Panel {
 public:
  Panel() : bus_(Gio::DBus::Connection::get_sync(Gio::DBus::BusType::SESSION)) {
    const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(client_.get(), client_.screen().root, XCB_CW_EVENT_MASK, &mask);
    client_.sync();
  }

  // As a second start of the program does. Seconds until the server shows the panel, drawn.
  double open() {
    forgetEvents();
    const auto data = Glib::Variant<std::map<Glib::ustring, Glib::VariantBase>>::create({});
    const double start = now();
    bus_->call(session::dbusName::path, "org.freedesktop.Application", "Activate",
               Glib::VariantContainerBase::create_tuple(data), {}, session::dbusName::bus);
    bus_->flush_sync();
    panel_ = waitFor(XCB_MAP_NOTIFY);
    return now() - start;
  }
  void close() {
    sleepSeconds(secondsToTheKeyboard);
    type(escapeKey);
    waitFor(XCB_DESTROY_NOTIFY);
  }
  void type(std::uint8_t key) {
    press(key, XCB_KEY_PRESS);
    press(key, XCB_KEY_RELEASE);
  }
  void press(std::uint8_t key, std::uint8_t action) {
    xcb_test_fake_input(client_.get(), action, key, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    client_.sync();
  }
  // Bytes of all pixmaps of the program, by any of its objects.
  std::uint64_t pixmapBytes(xcb_window_t window) {
    auto* reply = xcb_res_query_client_pixmap_bytes_reply(
        client_.get(), xcb_res_query_client_pixmap_bytes(client_.get(), window), nullptr);
    if (!reply) throw std::runtime_error("the server does not tell of pixmaps");
    const std::uint64_t bytes = reply->bytes | std::uint64_t{reply->bytes_overflow} << 32;
    std::free(reply);
    return bytes;
  }
  // The last panel that was shown; also when it is gone, its number is that of the program.
  xcb_window_t lastShown() const { return panel_; }

 private:
  void forgetEvents() {
    client_.sync();
    while (auto* event = xcb_poll_for_event(client_.get())) std::free(event);
  }
  xcb_window_t waitFor(int type) {
    const double limit = now() + 5;
    while (now() < limit) {
      auto* event = xcb_poll_for_event(client_.get());
      if (!event) {
        sleepSeconds(0.0002);
        continue;
      }
      const bool isIt = (event->response_type & 0x7f) == type;
      const auto window = reinterpret_cast<const xcb_map_notify_event_t*>(event)->window;
      std::free(event);
      if (isIt) return window;
    }
    throw std::runtime_error("the panel does not come or go");
  }

  DisplayClient client_;
  Glib::RefPtr<Gio::DBus::Connection> bus_;
  xcb_window_t panel_ = XCB_WINDOW_NONE;
};

struct Spent {
  double client = 0, server = 0;  // milliseconds of processor time
};

// Two modes by turns, by the keyboard.
Spent switchModes(Panel& panel, pid_t hushpane, pid_t server) {
  constexpr int stopsToFocus = 5;  // language, settings, three modes
  for (int stop = 0; stop < stopsToFocus; ++stop) panel.type(tabKey);
  panel.type(spaceKey);
  sleepSeconds(settleSeconds);
  const auto client = usageOf(hushpane).cpuSeconds, other = usageOf(server).cpuSeconds;
  for (int count = 0; count < switches; ++count) {
    const bool isBackwards = count % 2 == 0;
    if (isBackwards) panel.press(shiftKey, XCB_KEY_PRESS);
    panel.type(tabKey);
    if (isBackwards) panel.press(shiftKey, XCB_KEY_RELEASE);
    panel.type(spaceKey);
    sleepSeconds(secondsOfASwitch);
  }
  return {(usageOf(hushpane).cpuSeconds - client) * 1000 / switches,
          (usageOf(server).cpuSeconds - other) * 1000 / switches};
}

std::string kilobytes(std::uint64_t bytes) {
  return text(static_cast<double>(bytes) / 1024, "KB", 0);
}

}  // namespace

int main() {
  const auto server = static_cast<pid_t>(numberFrom("BENCH_SERVER", 0));
  if (!server) throw std::runtime_error("to be started by bench/run");
  Gio::init();
  choose("standard", "dim");
  const auto hushpane = startHushpane();
  sleepSeconds(settleSeconds);
  const pid_t process = hushpane->pid();
  const double never = memoryOf(process);
  Panel panel;
  panel.open();
  sleepSeconds(settleSeconds);
  const double open = memoryOf(process);
  const auto pixmapsOpen = panel.pixmapBytes(panel.lastShown());
  print({"memory (PSS) with the panel open", text(open, "MB"), "before it was ever open: " + text(never, "MB"),
         open / never, "under 26 MB", open < largestMemory});
  panel.close();
  const auto pixmapsClosed = panel.pixmapBytes(panel.lastShown());
  print({"server pixmaps with the panel open",
         kilobytes(pixmapsOpen),
         "closed again: " + kilobytes(pixmapsClosed),
         {},
         "0 closed",
         pixmapsClosed == 0});

  std::vector<double> times;
  for (int count = 0; count < measuredOpenings; ++count) {
    times.push_back(panel.open());
    sleepSeconds(0.5);
    panel.close();
  }
  print({"from the request to the panel's first frame", text(median(times) * 1000, "ms"), "two frames of 60 a second",
         median(times) / twoFrames, "under 1", median(times) < twoFrames});

  for (int count = 0; count < warmUp; ++count) {
    panel.open();
    panel.close();
  }
  sleepSeconds(settleSeconds);
  const double warm = ownMemoryOf(process);
  for (int count = 0; count < openings; ++count) {
    panel.open();
    panel.close();
  }
  sleepSeconds(settleSeconds);
  const double after = ownMemoryOf(process);
  print({"own memory after 200 openings more", text(after, "MB", 2), "after the first 26: " + text(warm, "MB", 2),
         after / warm, "under +0.5 MB", after - warm < largestGrowth});

  panel.open();
  const Spent spent = switchModes(panel, process, server);
  print({"processor time of a mode switch in the panel",
         text(spent.client, "ms"),
         "the server's for it: " + text(spent.server, "ms"),
         spent.client / spent.server,
         {},
         {}});
  for (int stop = 0; stop < 2; ++stop) {  // back to standard, from focus
    panel.press(shiftKey, XCB_KEY_PRESS);
    panel.type(tabKey);
    panel.press(shiftKey, XCB_KEY_RELEASE);
  }
  panel.type(spaceKey);
  sleepSeconds(1);
  panel.close();

  sleepSeconds(libraryThreadSeconds);
  const long before = usageOf(process).wakeUps;
  sleepSeconds(idleSeconds);
  const long wakeUps = usageOf(process).wakeUps - before;
  print({"wake-ups in 30 s, panel closed, standard mode", std::to_string(wakeUps), {}, {}, "none", wakeUps == 0});
}
