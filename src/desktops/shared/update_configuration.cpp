#include "desktops/shared/update_configuration.h"

#include <glibmm/base64.h>
#include <glibmm/error.h>
#include <glibmm/keyfile.h>

#include <algorithm>

#include "desktops/shared/debug_log.h"
#include "desktops/shared/feed_address.h"
#include "desktops/shared/files.h"

namespace hushpane::desktops {

namespace {

constexpr std::size_t largestFile = 1 << 16;
constexpr std::size_t keyBytes = 32;
constexpr double secondsPerHour = 3600;
constexpr double fewestHours = 1, mostHours = 24.0 * 365;
constexpr const char* group = "Updates";

UpdateConfiguration read(const std::string& bytes) {
  const auto file = Glib::KeyFile::create();
  file->load_from_data(bytes);
  return {.address = file->get_string(group, "Address"),
          .publicKey = file->get_string(group, "PublicKey"),
          .secondsBetweenChecks =
              std::clamp(file->get_double(group, "IntervalHours"), fewestHours, mostHours) * secondsPerHour};
}

}  // namespace

std::optional<UpdateConfiguration> readUpdateConfiguration(const std::filesystem::path& file) {
  const auto contents = readFile(file, largestFile);
  if (!contents) return std::nullopt;
  try {
    auto configuration = read(contents->bytes);
    if (configuration.address.empty()) return std::nullopt;
    if (isFeedAddress(configuration.address) && Glib::Base64::decode(configuration.publicKey).size() == keyBytes)
      return configuration;
    debugLog("update.conf names no feed that can be trusted");
  } catch (const Glib::Error& error) {
    debugLog(std::string("update.conf is broken: ") + error.what());
  }
  return std::nullopt;
}

}  // namespace hushpane::desktops
