// How much memory the program takes in standard mode, at its start and after a thousand switches.

#include <giomm/dbusconnection.h>
#include <giomm/init.h>
#include <glibmm/variant.h>

#include <array>
#include <map>

#include "bench/child_process.h"
#include "bench/desk.h"
#include "bench/figure.h"
#include "bench/process_usage.h"
#include "desktops/session/dbus_session.h"

namespace {

using namespace hushpane;
using namespace hushpane::bench;

constexpr double settleSeconds = 3;
constexpr int warmUp = 102;                                // switches; what is made once is made by then
constexpr int switches = 1002;                             // a whole number of rounds
constexpr double between = 0.02;                           // seconds
constexpr double largestMemory = 16, largestGrowth = 0.5;  // MB
constexpr std::array modes{"cleanDesktop", "focus", "standard"};

// As other programs hand URLs to the running one.
void openUrl(Gio::DBus::Connection& bus, const std::string& url) {
  const auto urls = Glib::Variant<std::vector<Glib::ustring>>::create({url});
  const auto data = Glib::Variant<std::map<Glib::ustring, Glib::VariantBase>>::create({});
  bus.call_sync(session::dbusName::path, "org.freedesktop.Application", "Open",
                Glib::VariantContainerBase::create_tuple({urls, data}), session::dbusName::bus);
}

void switchModes(Gio::DBus::Connection& bus, int count) {
  for (int index = 0; index < count; ++index) {
    openUrl(bus, std::string("hushpane://mode/") + modes[static_cast<std::size_t>(index) % modes.size()]);
    sleepSeconds(between);
  }
  sleepSeconds(settleSeconds);
}

double memoryOfLoadedClient() {
  const ChildProcess client({clientProgram("loaded_client"), "--wait"});
  sleepSeconds(settleSeconds);
  return memoryOf(client.pid());
}

}  // namespace

int main() {
  Gio::init();
  choose("standard", "blur");
  const double loaded = memoryOfLoadedClient();
  const auto hushpane = startHushpane();
  sleepSeconds(settleSeconds);
  const double start = memoryOf(hushpane->pid());
  print({"memory (PSS), standard mode", text(start, "MB"), "only the same libraries: " + text(loaded, "MB"),
         start / loaded, "under 16 MB", start < largestMemory});

  const auto bus = Gio::DBus::Connection::get_sync(Gio::DBus::BusType::SESSION);
  switchModes(*bus, warmUp);
  const double warm = ownMemoryOf(hushpane->pid());
  switchModes(*bus, switches);
  const double end = ownMemoryOf(hushpane->pid());
  print({"own memory after 1,000 switches more", text(end, "MB", 2), "after the first 100: " + text(warm, "MB", 2),
         end / warm, "under +0.5 MB", end - warm < largestGrowth});
}
