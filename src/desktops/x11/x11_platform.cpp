#include "desktops/x11/x11_platform.h"

#include <giomm/init.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string_view>
#include <utility>

#include "desktops/session/installed_update_feed.h"
#include "desktops/session/portal.h"
#include "desktops/shared/xdg_directories.h"
#include "desktops/x11/xwayland.h"

namespace hushpane::x11 {

namespace {

constexpr std::string_view settingsName = "com.corvane.Hushpane";

bool isSet(const char* variable) {
  const char* value = std::getenv(variable);
  return value && *value;
}

constexpr std::string_view xwaylandFailure =
    "XWayland cannot cover the windows of a Wayland session; an X11 session is needed for now";

std::string displayFailure() {
  if (isSet("DISPLAY")) return std::string("cannot open the X display ") + std::getenv("DISPLAY");
  if (isSet("WAYLAND_DISPLAY")) return "this is a Wayland session; an X11 session is needed for now";
  return "no X display: DISPLAY is not set";
}

// Nothing when the server has all that drawing needs.
std::optional<std::string> missingExtension(const Connection& connection) {
  constexpr std::array<std::pair<Extension, std::string_view>, 5> needed{{{Extension::composite, "Composite"},
                                                                          {Extension::damage, "DAMAGE"},
                                                                          {Extension::render, "RENDER"},
                                                                          {Extension::shape, "SHAPE"},
                                                                          {Extension::xfixes, "XFIXES"}}};
  for (const auto& [extension, name] : needed)
    if (!connection.extension(extension)) return "the X server lacks the extension " + std::string(name);
  return std::nullopt;
}

}  // namespace

X11Platform::Start X11Platform::start(std::vector<std::string> urls) {
  // A server that went away is told by the connection, not by a signal.
  std::signal(SIGPIPE, SIG_IGN);
  Gio::init();
  auto base = std::make_unique<Base>();
  switch (base->application.claim(std::move(urls))) {
    case session::DbusApplication::Claim::first: break;
    case session::DbusApplication::Claim::handedOver: return HandedOver{};
    case session::DbusApplication::Claim::unanswered: return Failure{"another instance runs but does not answer"};
  }
  auto connection = Connection::open(nullptr);
  if (!connection) return Failure{displayFailure()};
  if (auto missing = missingExtension(*connection)) return Failure{std::move(*missing)};
  if (isXwayland(*connection)) return Failure{std::string(xwaylandFailure)};
  return std::unique_ptr<X11Platform>(new X11Platform(std::move(base), std::move(connection)));
}

X11Platform::X11Platform(std::unique_ptr<Base> base, std::unique_ptr<Connection> connection)
    : base_(std::move(base)),
      connection_(std::move(connection)),
      eventSource_(*connection_, turnEnd_, [this] { loop_.end(); }),
      frameClock_(base_->queue),
      animator_(base_->queue, frameClock_),
      distributedCenter_(base_->session, base_->queue),
      widgetCenter_(base_->session),
      defaults_(desktops::settingsFolder(desktops::configHome()), base_->queue, notificationCenter_),
      standardDefaults_(defaults_.open(settingsName)),
      sharedContainer_(desktops::dataHome()),
      bundle_(desktops::resourceFolder()),
      screens_(*connection_, base_->queue, notificationCenter_),
      manager_(*connection_, base_->queue),
      compositor_(*connection_, base_->queue),
      currentWorkspace_(*connection_),
      tree_(*connection_, manager_, compositor_, currentWorkspace_),
      activeWindow_(*connection_, base_->queue, manager_, tree_),
      portal_(base_->session, session::portal::name),
      workspace_(*connection_, base_->queue, tree_, activeWindow_, currentWorkspace_, urls_),
      wakeWatch_(workspace_.notificationCenter()),
      windowList_(*connection_, tree_, screens_, workspace_),
      keyboard_(*connection_),
      eventMonitors_(*connection_, keyboard_, screens_),
      hotKeys_(*connection_, base_->queue, keyboard_),
      render_(*connection_),
      coveredWindows_(*connection_, render_),
      paintedBackground_(*connection_, render_, screens_, base_->queue, notificationCenter_, taskQueue_),
      rootBackground_(*connection_, render_, compositor_, paintedBackground_),
      placement_(*connection_, base_->queue, tree_, manager_, compositor_, activeWindow_),
      stage_(animator_, base_->queue, turnEnd_, placement_,
             {*connection_, render_, tree_, screens_, manager_, compositor_, coveredWindows_, rootBackground_}),
      updateService_(session::makeInstalledUpdateFeed(base_->queue, *standardDefaults_, notificationCenter_,
                                                      desktops::resourceFolder(),
                                                      bundle_.infoString(platform::bundleKey::shortVersion))),
      activations_(workspace_.notificationCenter().addObserver(platform::notification::didActivateApplication,
                                                               [this] { placement_.activationChanged(); })),
      taskQueue_(base_->queue) {}

X11Platform::~X11Platform() {
  releaseInstances();
  connection_->flush();
}

int X11Platform::run() {
  base_->application.setTerminate([this] { loop_.end(); });
  if (!connection_->isBroken()) loop_.run();
  return 0;
}

std::int32_t X11Platform::processIdentifier() const {
  return static_cast<std::int32_t>(getpid());
}

}  // namespace hushpane::x11
