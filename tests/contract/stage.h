#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "platform/platform.h"

namespace hushpane::contract_tests {

// A desktop that the contract suite runs on, with what happens to it from outside. Its main screen has its origin at
// 0, 0 and is at least 1000 by 700 points at scale 1, with nothing but background on it.
class Stage {
 public:
  struct AppWindow {
    std::int32_t ownerPid = 0;
    platform::WindowNumber number = 0;
  };

  virtual ~Stage() = default;

  virtual platform::Platform& platform() = 0;
  // The desktop runs until the condition holds; false when that takes longer than the limit (seconds). The limit is
  // never reached by a desktop that works.
  virtual bool waitUntil(const std::function<bool()>& condition, double limit = 8) = 0;
  // The desktop runs for that time.
  virtual void run(double seconds) = 0;

  // Another program's window filled with one colour, active once this returns. The same application number gives the
  // same program. The window manager may add a frame, so the bounds in the window list may be a little larger.
  virtual AppWindow openWindow(int application, const platform::Rect& frame, std::uint32_t color) = 0;
  virtual void activateWindow(platform::WindowNumber number) = 0;
  virtual void moveWindow(platform::WindowNumber number, const platform::Rect& frame) = 0;
  virtual void closeWindow(platform::WindowNumber number) = 0;
  // 0xRRGGBB as people see it now.
  virtual std::uint32_t pixel(platform::Point point) = 0;

  // A second display right of the main one; it is the same display each time.
  virtual void plugInDisplay() = 0;
  virtual void unplugDisplay() = 0;

  virtual void pressModifier(platform::ModifierFlags modifier) = 0;
  virtual void releaseModifier(platform::ModifierFlags modifier) = 0;
  virtual void typeKey(std::uint16_t keyCode) = 0;
  // Another program asks for a hot key and keeps it; false when it is refused.
  virtual bool takeHotKey(std::uint16_t keyCode, platform::ModifierFlags modifiers) = 0;
  // The keyboard map changes so that the keys J and K change their places; the next time they are back.
  virtual void swapKeys() = 0;
  // The mouse is moved; to the left where the distance is negative.
  virtual void moveMouse(double points) = 0;

  // Another process changes a stored setting of the program, or posts a distributed notification, or opens URLs with
  // the program.
  virtual void changeSetting(const std::string& key, const platform::Value& value) = 0;
  virtual void postDistributed(const std::string& name) = 0;
  virtual void openUrls(const std::vector<std::string>& urls) = 0;

  // Ends the platform, as at the end of the program.
  virtual void endPlatform() = 0;
};

struct StageFactory {
  std::string name;
  std::function<std::unique_ptr<Stage>()> make;
};

inline void PrintTo(const StageFactory& factory, std::ostream* stream) {
  *stream << factory.name;
}

inline std::string nameOf(const testing::TestParamInfo<StageFactory>& info) {
  return info.param.name;
}

// The contract of platform::Platform. A test program takes part by compiling this folder's sources and
//   INSTANTIATE_TEST_SUITE_P(Somewhere, ContractTest, testing::Values(StageFactory{...}), nameOf);
class ContractTest : public testing::TestWithParam<StageFactory> {
 protected:
  std::unique_ptr<Stage> stage = GetParam().make();

  platform::Platform& platform() { return stage->platform(); }
  platform::MainQueue& queue() { return platform().mainQueue(); }
};

}  // namespace hushpane::contract_tests
