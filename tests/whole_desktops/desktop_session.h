#pragma once

#include "tests/whole_desktops/desktop_kinds.h"
#include "tests/x11/seat.h"

namespace hushpane::x11_tests {

// A desktop with one or two monitors.
struct DesktopWay {
  std::string name;
  const DesktopKind* kind;
  int monitors;
};
std::vector<DesktopWay> desktopWays();
inline std::ostream& operator<<(std::ostream& stream, const DesktopWay& way) {
  return stream << way.name;
}

// A whole desktop as a person finds it after the login. It starts once for all tests of a process and ends with it.
class DesktopSession : public Seat {
 public:
  static constexpr Rect screen{0, 0, 1600, 1000};
  static constexpr double leftWidth = 900;  // of two monitors
  // The upper and the lower half of the desktop picture.
  static constexpr Pixel upperColor{0xe08040}, lowerColor{0xb05820};
  static constexpr double edge = 500;
  // Places of the desktop where nothing else is, in each quarter.
  static constexpr Point bareSpots[]{{810, 250}, {810, 750}, {1550, 250}, {1550, 750}};

  static DesktopSession& running(const DesktopWay& way);
  explicit DesktopSession(const DesktopWay& way);

  const DesktopKind& kind() const { return *way_.kind; }
  int monitors() const { return way_.monitors; }
  // The parts of the screen that bars keep for themselves, on the first monitor.
  std::vector<Rect> bars() const;
  // The bars and whatever else stands on the desktop all the time.
  std::vector<Rect> furniture() const;
  // A click as people do it: the pointer is there for a moment.
  void clickSlowly(Point point) const;
  // Changes the picture of the desktop to two colours.
  void choosePicture(Pixel upper, Pixel lower);
  bool showsPicture(Pixel upper, Pixel lower) const;
  // Starts a program beside the others.
  Process& open(const std::vector<std::string>& command);
  // Runs a line of the shell to its end, whatever comes of it.
  void shell(const std::string& line, const std::string& argument = {}) const;
  void toWorkspace(std::uint32_t number);

 private:
  void addMonitor(const std::string& output, const std::string& width, const std::string& left) const;
  void writeFiles() const;
  void start();

  DesktopWay way_;
  int pictures_ = 0;
  std::vector<std::unique_ptr<Process>> processes_;
};

}  // namespace hushpane::x11_tests
