#include "tests/x11/desktop.h"

#include <algorithm>

#include "tests/x11/screenshot.h"

namespace hushpane::x11_tests {

Desktop::Desktop(const WindowManagerKind& windowManager) : Session(windowManager, Monitors::both) {
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

void Desktop::chooseMode(const std::string& mode, const std::string& surface, SettingsValues more) {
  more.insert({{"hasSeenWelcome", xml(true)},
               {"hushpane.lastUserMode", xml(mode.c_str())},
               {"hushpane.ambientSurface", xml(surface.c_str())},
               {"hushpane.focusSurface", xml(surface.c_str())}});
  settings().write(more);
}

std::unique_ptr<Process> Desktop::spawnHushpane(const std::vector<std::string>& arguments) const {
  std::vector<std::string> command{HUSHPANE_BINARY};
  command.insert(command.end(), arguments.begin(), arguments.end());
  return std::make_unique<Process>(command, environment(), logs());
}

// The program has begun when it has published its mode.
void Desktop::startHushpane(const std::vector<std::string>& arguments) {
  const auto lastPublished = [file = sharedFile().path()] {
    std::error_code missing;
    return std::filesystem::last_write_time(file, missing);
  };
  const auto before = lastPublished();
  untouched_ = settledPicture();
  hushpane_ = spawnHushpane(arguments);
  waitUntil([&] { return lastPublished() != before || !hushpane_->isRunning(); });
  if (lastPublished() == before) {
    const auto status = hushpane_->wait(0ms);
    throw std::runtime_error("hushpane " + (status ? "ended with " + std::to_string(*status) : "hangs") +
                             " before it published its mode: " + hushpane_->errors());
  }
}

std::unique_ptr<Process> Desktop::runHushpane(const std::vector<std::string>& arguments) {
  auto process = spawnHushpane(arguments);
  process->wait();
  return process;
}

testing::AssertionResult Desktop::entersMode(const std::string& mode) const {
  std::optional<std::string> seen;
  if (waitUntil([&] { return (seen = sharedFile().value("hushpane.userMode")) == mode; })) {
    return testing::AssertionSuccess();
  }
  return testing::AssertionFailure() << "the mode is " << seen.value_or("absent") << " instead of " << mode;
}

testing::AssertionResult Desktop::shows(Point point, Pixel pixel, milliseconds limit) const {
  Pixel seen;
  if (waitUntil([&] { return isNear(seen = x().pixel(point), pixel); }, limit)) return testing::AssertionSuccess();
  return testing::AssertionFailure() << seen << " instead of " << pixel << " at " << point.x << "," << point.y;
}

testing::AssertionResult Desktop::keeps(Point point, Pixel pixel, milliseconds time) const {
  Pixel seen;
  if (holdsFor(time, [&] { return isNear(seen = x().pixel(point), pixel); })) return testing::AssertionSuccess();
  return testing::AssertionFailure() << seen << " instead of " << pixel << " at " << point.x << "," << point.y;
}

testing::AssertionResult Desktop::showsDimExcept(const std::vector<Rect>& clear, double alpha) const {
  Picture seen;
  const auto expected = [&](int column, int row) {
    const Point point{double(column), double(row)};
    const bool isClear =
        std::any_of(clear.begin(), clear.end(), [&](const Rect& area) { return area.contains(point); });
    return isClear ? untouched_.at(column, row) : dimmed(untouched_.at(column, row), alpha);
  };
  std::optional<std::pair<int, int>> wrong;
  const auto findWrong = [&] {
    for (int row = 0; row < seen.height; ++row) {
      for (int column = 0; column < seen.width; ++column) {
        if (!isNear(seen.at(column, row), expected(column, row))) return wrong = {column, row}, true;
      }
    }
    return wrong.reset(), false;
  };
  if (waitUntil([&] { return seen = x().capture(), !findWrong(); })) return testing::AssertionSuccess();
  return testing::AssertionFailure() << seen.at(wrong->first, wrong->second) << " instead of "
                                     << expected(wrong->first, wrong->second) << " at " << wrong->first << ','
                                     << wrong->second;
}

testing::AssertionResult Desktop::looksUntouched() const {
  return showsDimExcept({}, 0);
}

Picture Desktop::settledPicture() const {
  Picture last, now = x().capture();
  waitUntil([&] {
    std::this_thread::sleep_for(30ms);
    last = std::exchange(now, x().capture());
    return last == now;
  });
  return now;
}

void Desktop::shot(const std::string& name) const {
  saveForPeople(x().capture(), name);
}

}  // namespace hushpane::x11_tests
