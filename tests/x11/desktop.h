#pragma once

#include <gtest/gtest.h>

#include "tests/x11/screen_watch.h"
#include "tests/x11/session.h"
#include "tests/x11/terminal.h"

namespace hushpane::x11_tests {

// A session for one test, with two monitors side by side and three terminals: red and green overlap on the left
// monitor, blue is on the right one, red is active. The program under test starts when the test says so.
class Desktop : public testing::Test, protected Session {
 protected:
  // Spots where nothing but the background is.
  static constexpr Point leftSpot{600, 900};
  static constexpr Point rightSpot{1800, 900};
  // How dark the dim is at its strengths.
  static constexpr double subtle = 0.3, balanced = 0.5, strong = 0.7;

  explicit Desktop(const WindowManagerKind& windowManager = openbox());
  // Where people ask for pictures, a test that failed leaves one of the end.
  void TearDown() override;

  // A window of the test's own application.
  std::unique_ptr<ClientWindow> openWindow(const ClientWindow::Look& look) const;

  // --- the program ---
  // The settings of somebody who uses that mode with that surface, and more.
  void chooseMode(const std::string& mode, const std::string& surface = "dim", SettingsValues more = {});
  // Starts the program and waits until it has begun its work.
  void startHushpane(const std::vector<std::string>& arguments = {});
  // Starts it beside the first, or where it cannot run, and waits until it is over.
  std::unique_ptr<Process> runHushpane(const std::vector<std::string>& arguments);
  // Starts it beside the first and goes on.
  std::unique_ptr<Process> spawnHushpane(const std::vector<std::string>& arguments) const;
  // Asks it to end.
  std::optional<int> stopHushpane() { return hushpane_->terminate(); }
  Process& hushpane() { return *hushpane_; }
  pid_t hushpanePid() const { return hushpane_->pid(); }
  testing::AssertionResult entersMode(const std::string& mode) const;

  // --- what people see ---
  // Whether the spot comes to show the pixel, and what it shows where it does not.
  testing::AssertionResult shows(Point point, Pixel pixel, milliseconds limit = patience) const;
  // Whether the spot shows the pixel from now on for a while.
  testing::AssertionResult keeps(Point point, Pixel pixel, milliseconds time) const;
  // Whether the whole screen comes to look as it did before the start, beneath black of that alpha but for some areas.
  testing::AssertionResult showsDimExcept(const std::vector<Rect>& clear, double alpha = balanced) const;
  // Whether the whole screen comes to look as if the program did not run.
  testing::AssertionResult looksUntouched() const;
  // The screen before the start.
  const Picture& untouched() const { return untouched_; }
  // The screen once nothing draws on it any more.
  Picture settledPicture() const;
  // Saves a picture for people who ask for it.
  void shot(const std::string& name) const;

  std::unique_ptr<Terminal> red_, green_, blue_;

 private:
  std::unique_ptr<Process> hushpane_;
  Picture untouched_;
};

}  // namespace hushpane::x11_tests
