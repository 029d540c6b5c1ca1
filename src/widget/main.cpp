#include <csignal>
#include <iostream>
#include <optional>
#include <span>
#include <variant>

#include "desktops/session/dbus_notification_center.h"
#include "desktops/session/dbus_session.h"
#include "desktops/session/main_queue.h"
#include "desktops/session/output_watch.h"
#include "desktops/session/run_loop.h"
#include "desktops/shared/xdg_directories.h"
#include "state/widget_bridge.h"
#include "widget/command_line.h"
#include "widget/mode_follower.h"
#include "widget/shared_mode.h"
#include "widget/status_line.h"

namespace {

using namespace hushpane;
using namespace hushpane::widget;

constexpr int notStoredExit = 1;
constexpr int usageExit = 2;

SharedMode sharedMode(platform::MainQueue& queue) {
  return SharedMode({desktops::dataHome(), desktops::configHome()}, queue);
}

int run(const ShowHelp&) {
  std::cout << helpText;
  return 0;
}

int run(const ShowVersion&) {
  std::cout << "hushpane-widget " HUSHPANE_VERSION "\n";
  return 0;
}

int run(const UsageError& error) {
  std::cerr << "hushpane-widget: " << error.message << "; try --help\n";
  return usageExit;
}

int run(const PrintMode& command) {
  session::MainQueue queue;
  std::cout << statusLine(sharedMode(queue).read(), command.format) << '\n';
  return 0;
}

int run(const FollowMode& command) {
  session::RunLoop loop;
  session::MainQueue queue;
  const session::OutputWatch output([&] { loop.end(); });
  const auto mode = sharedMode(queue);
  const auto print = [&](VeilMode shown) {
    if (!(std::cout << statusLine(shown, command.format) << std::endl)) loop.end();
  };
  std::optional<ModeFollower> follower;
  queue.async([&] { follower.emplace(mode, queue, print); });
  loop.run();
  return 0;
}

int run(const SetMode& command) {
  session::MainQueue queue;
  if (!sharedMode(queue).write(command.mode)) {
    std::cerr << "hushpane-widget: the mode cannot be stored\n";
    return notStoredExit;
  }
  session::DbusSession session(queue);
  session::DbusNotificationCenter(session, queue).post(WidgetBridge::widgetModeChange);
  session.flush();
  return 0;
}

}  // namespace

int main(int count, char** words) {
  // A reader that went away is told by the stream, not by a signal.
  std::signal(SIGPIPE, SIG_IGN);
  const auto command = widget::parseCommandLine(std::span<const char* const>(words + 1, words + count));
  return std::visit([](const auto& chosen) { return run(chosen); }, command);
}
