#include <map>
#include <optional>
#include <utility>

#include "contract/stage.h"
#include "desktops/sim/sim_platform.h"

namespace hushpane::contract_tests {
namespace {

class SimStage : public Stage {
 public:
  SimStage() { desktop_->taskQueue().setAutomatic(true); }

  platform::Platform& platform() override { return *desktop_; }

  bool waitUntil(const std::function<bool()>& condition, double limit) override {
    constexpr double step = 1.0 / 60;
    for (double waited = 0; !condition(); waited += step) {
      if (waited > limit) return false;
      desktop_->advance(step);
    }
    return true;
  }
  void run(double seconds) override { desktop_->advance(seconds); }

  AppWindow openWindow(int application, const platform::Rect& frame, std::uint32_t color) override {
    auto& workspace = desktop_->workspace();
    if (!pids_.contains(application)) pids_[application] = workspace.launch("App " + std::to_string(application));
    const auto channel = [color](unsigned shift) { return (color >> shift & 0xff) / 255.0; };
    const auto number = desktop_->windows().add(
        {.ownerPid = pids_[application], .frame = frame, .color = {channel(16), channel(8), channel(0), 1}});
    activateWindow(number);
    return {pids_[application], number};
  }
  void activateWindow(platform::WindowNumber number) override {
    desktop_->workspace().activateWindow(number);
    desktop_->drain();
  }
  void moveWindow(platform::WindowNumber number, const platform::Rect& frame) override {
    desktop_->windows().setFrame(number, frame);
  }
  void closeWindow(platform::WindowNumber number) override { desktop_->windows().close(number); }
  std::uint32_t pixel(platform::Point point) override { return desktop_->pixel(point).value_or(0) & 0xffffff; }

  void plugInDisplay() override { desktop_->screens().add({{1440, 0, 800, 600}, 2, "Second", 1}); }
  void unplugDisplay() override { desktop_->screens().remove(2); }

  void pressModifier(platform::ModifierFlags modifier) override { desktop_->eventMonitors().pressModifier(modifier); }
  void releaseModifier(platform::ModifierFlags modifier) override {
    desktop_->eventMonitors().releaseModifier(modifier);
  }
  void typeKey(std::uint16_t keyCode) override { desktop_->typeKey(keyCode); }
  bool takeHotKey(std::uint16_t keyCode, platform::ModifierFlags modifiers) override {
    return desktop_->hotKeys().take(keyCode, modifiers);
  }
  void swapKeys() override {
    constexpr std::uint16_t letterJ = 38, letterK = 40;
    desktop_->hotKeys().swapPlaces(letterJ, letterK);
  }
  void moveMouse(double points) override { desktop_->eventMonitors().moveMouse(points); }

  void changeSetting(const std::string& key, const platform::Value& value) override {
    desktop_->userDefaults().set(key, value);
  }
  void postDistributed(const std::string& name) override {
    desktop_->distributedNotificationCenter().postFromOutside(name);
  }
  void openUrls(const std::vector<std::string>& urls) override { desktop_->application().openUrls(urls); }

  void endPlatform() override { desktop_.reset(); }

 private:
  sim::Storage storage_;
  std::optional<sim::SimPlatform> desktop_{std::in_place, storage_};
  std::map<int, std::int32_t> pids_;
};

const StageFactory simulated{"SimulatedDesktop", [] { return std::make_unique<SimStage>(); }};

INSTANTIATE_TEST_SUITE_P(Sim, ContractTest, testing::Values(simulated), nameOf);

}  // namespace
}  // namespace hushpane::contract_tests
