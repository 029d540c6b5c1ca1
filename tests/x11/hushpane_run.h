#pragma once

#include <gtest/gtest.h>

#include "tests/x11/seat.h"

namespace hushpane::x11_tests {

// The program under test at somebody's seat: it starts when the test says so; what the screen showed before is kept to
// judge what it shows since.
class HushpaneRun {
 protected:
  explicit HushpaneRun(const Seat& seat) : seat_(seat) {}

  // How dark the dim is at its strengths.
  static constexpr double subtle = 0.3, balanced = 0.5, strong = 0.7;

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

  // --- the program's windows ---
  // Those that cover at least that size, from back to front.
  std::vector<xcb_window_t> windowsFrom(double width, double height) const;
  // How often the program's main thread wakes up while nothing happens.
  int wakeUpsPerSecond() const;

 private:
  const Seat& seat_;
  std::unique_ptr<Process> hushpane_;
  Picture untouched_;
};

}  // namespace hushpane::x11_tests
