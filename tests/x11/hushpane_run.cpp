#include "tests/x11/hushpane_run.h"

#include <algorithm>
#include <functional>

#include "tests/x11/screenshot.h"

namespace hushpane::x11_tests {

void HushpaneRun::chooseMode(const std::string& mode, const std::string& surface, SettingsValues more) {
  more.insert({{"hasSeenWelcome", xml(true)},
               {"hushpane.lastUserMode", xml(mode.c_str())},
               {"hushpane.ambientSurface", xml(surface.c_str())},
               {"hushpane.focusSurface", xml(surface.c_str())}});
  seat_.settings().write(more);
}

std::unique_ptr<Process> HushpaneRun::spawnHushpane(const std::vector<std::string>& arguments) const {
  std::vector<std::string> command{HUSHPANE_BINARY};
  command.insert(command.end(), arguments.begin(), arguments.end());
  return std::make_unique<Process>(command, seat_.environment(), seat_.logs());
}

// The program has begun when it has published its mode.
void HushpaneRun::startHushpane(const std::vector<std::string>& arguments) {
  const auto lastPublished = [file = seat_.sharedFile().path()] {
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

std::unique_ptr<Process> HushpaneRun::runHushpane(const std::vector<std::string>& arguments) {
  auto process = spawnHushpane(arguments);
  process->wait();
  return process;
}

testing::AssertionResult HushpaneRun::entersMode(const std::string& mode) const {
  std::optional<std::string> seen;
  if (waitUntil([&] { return (seen = seat_.sharedFile().value("hushpane.userMode")) == mode; })) {
    return testing::AssertionSuccess();
  }
  return testing::AssertionFailure() << "the mode is " << seen.value_or("absent") << " instead of " << mode;
}

testing::AssertionResult HushpaneRun::shows(Point point, Pixel pixel, milliseconds limit) const {
  Pixel seen;
  if (waitUntil([&] { return isNear(seen = seat_.x().pixel(point), pixel); }, limit))
    return testing::AssertionSuccess();
  return testing::AssertionFailure() << seen << " instead of " << pixel << " at " << point.x << "," << point.y;
}

testing::AssertionResult HushpaneRun::keeps(Point point, Pixel pixel, milliseconds time) const {
  Pixel seen;
  if (holdsFor(time, [&] { return isNear(seen = seat_.x().pixel(point), pixel); })) return testing::AssertionSuccess();
  return testing::AssertionFailure() << seen << " instead of " << pixel << " at " << point.x << "," << point.y;
}

testing::AssertionResult HushpaneRun::showsDimExcept(const std::vector<Rect>& clear, double alpha) const {
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
  if (waitUntil([&] { return seen = seat_.x().capture(), !findWrong(); })) return testing::AssertionSuccess();
  return testing::AssertionFailure() << seen.at(wrong->first, wrong->second) << " instead of "
                                     << expected(wrong->first, wrong->second) << " at " << wrong->first << ','
                                     << wrong->second;
}

testing::AssertionResult HushpaneRun::looksUntouched() const {
  return showsDimExcept({}, 0);
}

Picture HushpaneRun::settledPicture() const {
  Picture last, now = seat_.x().capture();
  waitUntil([&] {
    std::this_thread::sleep_for(30ms);
    last = std::exchange(now, seat_.x().capture());
    return last == now;
  });
  return now;
}

void HushpaneRun::shot(const std::string& name) const {
  saveForPeople(seat_.x().capture(), name);
}

std::vector<xcb_window_t> HushpaneRun::windowsFrom(double width, double height) const {
  std::vector<xcb_window_t> found;
  const XConnection& x = seat_.x();
  const std::function<void(xcb_window_t, int)> search = [&](xcb_window_t parent, int depth) {
    for (const xcb_window_t child : x.children(parent)) {
      const Rect bounds = x.bounds(child);
      if (bounds.width >= width && bounds.height >= height && x.processOf(child) == hushpanePid()) {
        found.push_back(child);
      } else if (depth > 1) {
        search(child, depth - 1);
      }
    }
  };
  search(x.root(), 4);
  return found;
}

int HushpaneRun::wakeUpsPerSecond() const {
  const auto count = [this] {
    const std::string status = contents("/proc/" + std::to_string(hushpanePid()) + "/status");
    const std::string name = "\nvoluntary_ctxt_switches:";
    return std::stoi(status.substr(status.find(name) + name.size()));
  };
  const int before = count();
  std::this_thread::sleep_for(1s);
  return count() - before;
}

}  // namespace hushpane::x11_tests
