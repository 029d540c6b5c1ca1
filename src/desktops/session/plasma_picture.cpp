#include <algorithm>
#include <map>

#include "desktops/session/picture_sources.h"
#include "desktops/shared/files.h"
#include "desktops/shared/xdg_directories.h"

namespace hushpane::session {

namespace {

constexpr std::size_t largestFile = 1 << 20;
constexpr std::string_view imagePlugin = "org.kde.image";

// One desktop of Plasma: what shows it, where, and the picture in it.
struct Containment {
  std::string plugin{imagePlugin};
  std::string screen;
  std::string image;
};

// Reads lines of KEY=VALUE below lines of [GROUP][GROUP...].
class AppletsReader {
 public:
  std::map<std::string, Containment, std::less<>> containments;

  void read(std::string_view line) {
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (line.starts_with('[')) {
      group_ = line;
      return;
    }
    const auto equals = line.find('=');
    if (equals == line.npos || !group_.starts_with(prefix)) return;
    const auto rest = group_.substr(prefix.size());
    const auto end = rest.find(']');
    if (end == rest.npos) return;
    auto& containment = containments[std::string(rest.substr(0, end))];
    take(containment, rest.substr(end + 1), line.substr(0, equals), line.substr(equals + 1));
  }

 private:
  static constexpr std::string_view prefix = "[Containments][";

  static void take(Containment& containment, std::string_view inner, std::string_view key, std::string_view value) {
    if (inner.empty() && key == "wallpaperplugin") containment.plugin = value;
    if (inner.empty() && key == "lastScreen") containment.screen = value;
    if (inner == "[Wallpaper][org.kde.image][General]" && key == "Image") containment.image = value;
  }

  std::string_view group_;
};

}  // namespace

std::optional<std::filesystem::path> plasmaPicture(const platform::Screen&) {
  const auto home = desktops::configHome();
  const auto file =
      home ? desktops::readFile(*home / "plasma-org.kde.plasma.desktop-appletsrc", largestFile) : std::nullopt;
  if (!file) return std::nullopt;
  AppletsReader reader;
  for (std::string_view text = file->bytes; !text.empty();) {
    const auto end = text.find('\n');
    reader.read(text.substr(0, end));
    text = end == text.npos ? std::string_view() : text.substr(end + 1);
  }
  auto& containments = reader.containments;
  std::erase_if(containments, [](const auto& entry) { return entry.second.image.empty(); });
  auto chosen = std::ranges::find_if(containments, [](const auto& entry) { return entry.second.screen == "0"; });
  if (chosen == containments.end()) chosen = containments.begin();
  if (chosen == containments.end() || chosen->second.plugin != imagePlugin) return std::nullopt;
  return localFile(chosen->second.image);
}

}  // namespace hushpane::session
