#include "desktops/sim/sim_platform.h"

#include <utility>

#include "desktops/sim/sim_keyboard.h"

namespace hushpane::sim {

namespace {
constexpr std::int32_t ownPid = 100;
}  // namespace

SimPlatform::SimPlatform(Storage& storage, std::vector<platform::Screen> screens,
                         const std::filesystem::path& resources)
    : storage_(storage),
      screens_(notificationCenter_, std::move(screens)),
      standardDefaults_(storage.standardDefaults, announceDefaults()),
      sharedContainer_(storage),
      windowList_(windows_, ownPid),
      workspace_(queue_, windows_, ownPid),
      bundle_(resources) {
  queue_.setTurnEnded([this] { windows_.commit(); });
  application_.setTerminate([this] { endProgram(); });
}

SimPlatform::~SimPlatform() {
  releaseInstances();
}

std::int32_t SimPlatform::processIdentifier() const {
  return ownPid;
}

SimUserDefaults* SimPlatform::userDefaultsSuite(std::string_view name) {
  const std::string key(name);
  return &suites_.try_emplace(key, storage_.suites[key], announceDefaults()).first->second;
}

// One notification for all changes of one turn.
std::function<void()> SimPlatform::announceDefaults() {
  return [this] {
    if (std::exchange(defaultsAnnounced_, true)) return;
    queue_.async([this] {
      defaultsAnnounced_ = false;
      notificationCenter_.post(platform::notification::userDefaultsDidChange);
    });
  };
}

bool SimPlatform::typeKey(std::uint16_t keyCode) {
  eventMonitors_.pressKey(keyCode);
  const auto modifiers = eventMonitors_.modifierFlags();
  if (hotKeys_.press(keyCode, modifiers)) return false;
  queue_.async([this, press = keyPressOf(keyCode, modifiers)] {
    if (auto* const panel = panels_.keyPanel()) panel->contents().keyPressed(press);
  });
  return true;
}

void SimPlatform::endProgram() {
  releaseInstances();
  application_.forget();
  openPanel_.forget();
  statusItem_.forget();
  updateService_.forget();
  taskQueue_.clear();
  queue_.clear();
  frameClock_.forget();
  defaultsAnnounced_ = false;
}

void SimPlatform::setStatusBar(SimStatusItem::Bar bar) {
  statusItem_.setBar(bar);
  const double height = SimStatusItem::barHeight;
  screens_.setBars(bar == SimStatusItem::Bar::top ? height : 0, bar == SimStatusItem::Bar::bottom ? height : 0);
}

Scene SimPlatform::scene() {
  return {windows_.stack(), workspace_.desktopImage(), panels_.shown(), &statusItem_};
}

platform::Image SimPlatform::render(const platform::Screen& screen) {
  return renderScreen(scene(), screen);
}

platform::Image SimPlatform::render() {
  return screens_.screens().empty() ? platform::Image{} : render(screens_.screens().front());
}

platform::Image SimPlatform::renderAll() {
  return renderScreens(scene(), screens_.screens());
}

std::optional<std::uint32_t> SimPlatform::pixel(platform::Point point) {
  for (const auto& screen : screens_.screens())
    if (screen.frame.contains(point)) return renderPixel(scene(), screen, point);
  return std::nullopt;
}

}  // namespace hushpane::sim
