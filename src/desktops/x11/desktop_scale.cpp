#include "desktops/x11/desktop_scale.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace hushpane::x11 {

namespace {

constexpr double ordinaryDpi = 96;
constexpr double steps = 4;  // of a scale, per 1
constexpr double smallest = 1, largest = 4;

// The value on a line "NAME: VALUE", empty on any other line.
std::string_view valueOf(std::string_view line, std::string_view name) {
  constexpr std::string_view blanks = " \t";
  if (!line.starts_with(name)) return {};
  line.remove_prefix(name.size());
  line.remove_prefix(std::min(line.find_first_not_of(blanks), line.size()));
  if (!line.starts_with(':')) return {};
  line.remove_prefix(1);
  line.remove_prefix(std::min(line.find_first_not_of(blanks), line.size()));
  return line;
}

}  // namespace

double scaleIn(std::string_view resources) {
  double scale = 1;
  while (!resources.empty()) {
    const auto end = std::min(resources.find('\n'), resources.size());
    const auto value = valueOf(resources.substr(0, end), "Xft.dpi");
    resources.remove_prefix(std::min(end + 1, resources.size()));
    double dpi = 0;
    const auto read = std::from_chars(value.data(), value.data() + value.size(), dpi);
    if (read.ec == std::errc() && std::isfinite(dpi) && dpi > 0)
      scale = std::clamp(std::round(dpi / ordinaryDpi * steps) / steps, smallest, largest);
  }
  return scale;
}

}  // namespace hushpane::x11
