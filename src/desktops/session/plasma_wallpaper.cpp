#include <algorithm>
#include <charconv>
#include <cmath>
#include <tuple>
#include <vector>

#include "desktops/session/picture_sources.h"
#include "desktops/session/plasma_settings.h"
#include "desktops/shared/files.h"
#include "desktops/shared/xdg_directories.h"

namespace hushpane::session {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view usualTheme = "org.kde.breeze.desktop";
constexpr int darkest = 128;  // of 255: a background below is dark

// The user's settings, those that go with the global theme, and the system's.
std::vector<fs::path> globalSettings() {
  auto folders = desktops::configFolders();
  if (const auto own = desktops::configHome()) folders.insert(folders.begin() + 1, *own / "kdedefaults");
  for (auto& folder : folders) folder /= "kdeglobals";
  return folders;
}

std::optional<fs::path> installed(const fs::path& name) {
  std::error_code error;
  for (const auto& folder : desktops::dataFolders())
    if (fs::exists(folder / name, error)) return folder / name;
  return std::nullopt;
}

// Whether windows have a dark background: three numbers, for red, green and blue.
bool isDark() {
  const auto color = plasmaSetting(globalSettings(), "[Colors:Window]", "BackgroundNormal");
  if (!color) return false;
  int sum = 0, count = 0;
  for (const char *at = color->data(), *end = at + color->size(); at < end && count < 3;) {
    int channel = 0;
    const auto read = std::from_chars(at, end, channel);
    if (read.ec != std::errc()) return false;
    sum += channel;
    ++count;
    at = read.ptr + 1;
  }
  return count == 3 && sum < 3 * darkest;
}

struct Size {
  double width = 0;
  double height = 0;
};

// By a name such as "1920x1080.png".
std::optional<Size> sizeOf(const fs::path& file) {
  const auto name = file.stem().string();
  const char* const end = name.data() + name.size();
  int width = 0, height = 0;
  const auto first = std::from_chars(name.data(), end, width);
  if (first.ec != std::errc() || first.ptr == end || *first.ptr != 'x') return std::nullopt;
  const auto second = std::from_chars(first.ptr + 1, end, height);
  if (second.ec != std::errc() || second.ptr != end || width <= 0 || height <= 0) return std::nullopt;
  return Size{double(width), double(height)};
}

// The smaller the better: a shape like the screen's comes first, then enough pixels, then not too many.
std::tuple<double, bool, double> misfit(const Size& size, const platform::Rect& frame, double scale) {
  const double shape = std::abs(std::log(size.width / size.height * frame.height / frame.width));
  const double pixels = std::log(size.width / (frame.width * scale));
  return {std::round(shape * 10), pixels < 0, std::abs(pixels)};
}

std::optional<fs::path> bestIn(const fs::path& folder, const platform::Screen& screen) {
  std::optional<fs::path> best;
  std::tuple<double, bool, double> least;
  std::error_code error;
  for (auto each = fs::directory_iterator(folder, error); !error && each != fs::directory_iterator();
       each.increment(error)) {
    const auto size = sizeOf(each->path());
    if (!size) continue;
    const auto fit = misfit(*size, screen.frame, screen.scale);
    if (best && fit >= least) continue;
    best = each->path();
    least = fit;
  }
  return best;
}

}  // namespace

std::optional<std::string> plasmaDefaultWallpaper() {
  const auto chosen = plasmaSetting(globalSettings(), "[KDE]", "LookAndFeelPackage");
  const auto theme = chosen && desktops::isPlainFileName(*chosen) ? *chosen : std::string(usualTheme);
  const auto defaults = installed(fs::path("plasma/look-and-feel") / theme / "contents/defaults");
  if (!defaults) return std::nullopt;
  return plasmaSetting(std::span(&*defaults, 1), "[Wallpaper]", "Image");
}

std::optional<fs::path> plasmaWallpaper(const std::string& name, const platform::Screen& screen) {
  auto path = desktops::isPlainFileName(name) ? installed(fs::path("wallpapers") / name) : localFile(name);
  std::error_code error;
  if (!path || !fs::is_directory(*path, error)) return path;
  auto dark = isDark() ? bestIn(*path / "contents/images_dark", screen) : std::nullopt;
  return dark ? dark : bestIn(*path / "contents/images", screen);
}

}  // namespace hushpane::session
