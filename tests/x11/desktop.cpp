#include "tests/x11/desktop.h"

#include <algorithm>

namespace hushpane::x11_tests {

Desktop::Desktop(const WindowManagerKind& windowManager)
    : Session(windowManager, Monitors::both), HushpaneRun(static_cast<const Seat&>(*this)) {
  const auto open = [this](const Terminal::Look& look) {
    return std::make_unique<Terminal>(look, environment(), logs(), x());
  };
  red_ = open({"red", {0xc03030}, {100, 100}});
  green_ = open({"green", {0x30a050}, {300, 250}});
  blue_ = open({"blue", {0x3050c0}, {1300, 300}});
  for (Terminal* terminal : {red_.get(), green_.get(), blue_.get()}) terminal->waitForWindow();
  activate(red_->window());
}

void Desktop::TearDown() {
  const auto* test = testing::UnitTest::GetInstance()->current_test_info();
  std::string name = std::string("failed-") + test->test_suite_name() + "-" + test->name();
  std::replace(name.begin(), name.end(), '/', '-');
  if (HasFailure()) shot(name);
}

std::unique_ptr<ClientWindow> Desktop::openWindow(const ClientWindow::Look& look) const {
  return std::make_unique<ClientWindow>(x(), look);
}

}  // namespace hushpane::x11_tests
