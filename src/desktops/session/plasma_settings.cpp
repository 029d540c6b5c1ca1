#include "desktops/session/plasma_settings.h"

#include "desktops/shared/files.h"

namespace hushpane::session {

namespace {

constexpr std::size_t largestFile = 1 << 20;

}  // namespace

bool readPlasmaFile(const std::filesystem::path& file, const std::function<void(const PlasmaEntry&)>& take) {
  const auto contents = desktops::readFile(file, largestFile);
  if (!contents) return false;
  std::string_view group;
  for (std::string_view text = contents->bytes; !text.empty();) {
    const auto end = text.find('\n');
    auto line = text.substr(0, end);
    text = end == text.npos ? std::string_view() : text.substr(end + 1);
    if (line.ends_with('\r')) line.remove_suffix(1);
    const auto equals = line.find('=');
    if (line.starts_with('['))
      group = line;
    else if (equals != line.npos)
      take({group, line.substr(0, equals), line.substr(equals + 1)});
  }
  return true;
}

std::optional<std::string> plasmaSetting(std::span<const std::filesystem::path> files, std::string_view group,
                                         std::string_view key) {
  std::optional<std::string> found;
  for (const auto& file : files) {
    readPlasmaFile(file, [&](const PlasmaEntry& entry) {
      if (entry.group == group && entry.key == key) found = entry.value;
    });
    if (found) break;
  }
  return found;
}

}  // namespace hushpane::session
