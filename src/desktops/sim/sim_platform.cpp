#include "desktops/sim/sim_platform.h"

#include <utility>

#include "desktops/sim/compositor.h"

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
}

SimPlatform::~SimPlatform() {
  releaseInstances();
}

std::int32_t SimPlatform::processIdentifier() const {
  return ownPid;
}

SimUserDefaults* SimPlatform::userDefaultsSuite(std::string_view name) {
  if (suitesAbsent_) return nullptr;
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
  return !hotKeys_.press(keyCode, eventMonitors_.modifierFlags());
}

void SimPlatform::endProgram() {
  releaseInstances();
  application_.forget();
  openPanel_.forget();
  taskQueue_.clear();
  queue_.clear();
  frameClock_.forget();
  defaultsAnnounced_ = false;
}

platform::Image SimPlatform::render(const platform::Screen& screen) {
  return renderScreen({windows_.stack(), workspace_.desktopImage()}, screen);
}

platform::Image SimPlatform::render() {
  return screens_.screens().empty() ? platform::Image{} : render(screens_.screens().front());
}

platform::Image SimPlatform::renderAll() {
  return renderScreens({windows_.stack(), workspace_.desktopImage()}, screens_.screens());
}

std::optional<std::uint32_t> SimPlatform::pixel(platform::Point point) {
  for (const auto& screen : screens_.screens())
    if (screen.frame.contains(point)) return renderPixel({windows_.stack(), workspace_.desktopImage()}, screen, point);
  return std::nullopt;
}

}  // namespace hushpane::sim
