#pragma once

#include "tests/x11/hushpane_run.h"
#include "tests/x11/screen_watch.h"
#include "tests/x11/session.h"
#include "tests/x11/terminal.h"

namespace hushpane::x11_tests {

// A session for one test, with two monitors side by side and three terminals: red and green overlap on the left
// monitor, blue is on the right one, red is active. The program under test starts when the test says so.
class Desktop : public testing::Test, protected Session, protected HushpaneRun {
 protected:
  // Spots where nothing but the background is.
  static constexpr Point leftSpot{600, 900};
  static constexpr Point rightSpot{1800, 900};

  explicit Desktop(const WindowManagerKind& windowManager = openbox());
  // Where people ask for pictures, a test that failed leaves one of the end.
  void TearDown() override;

  // A window of the test's own application.
  std::unique_ptr<ClientWindow> openWindow(const ClientWindow::Look& look) const;

  std::unique_ptr<Terminal> red_, green_, blue_;
};

}  // namespace hushpane::x11_tests
