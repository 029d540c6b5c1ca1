#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace hushpane::desktops {

// Where the program looks for newer versions, as its packager says in the file update.conf among the resources.
struct UpdateConfiguration {
  std::string address;    // of the feed
  std::string publicKey;  // Ed25519, in base64: who signs the feed's entries
  double secondsBetweenChecks = 0;
};

// Nothing when the file is missing or broken, or names no address and key that can be used.
std::optional<UpdateConfiguration> readUpdateConfiguration(const std::filesystem::path& file);

}  // namespace hushpane::desktops
