#pragma once

#include <filesystem>
#include <map>
#include <string>

#include "platform/value.h"

namespace hushpane::sim {

// What outlives the program: build another SimPlatform over the same storage and the program was started again. Files
// are in a temporary folder that ends with the storage.
class Storage {
 public:
  Storage();
  ~Storage();
  Storage(const Storage&) = delete;
  Storage& operator=(const Storage&) = delete;

  // Empty when the temporary folder could not be made; nothing is stored in files then.
  const std::filesystem::path& folder() const { return folder_; }
  // Where the group's programs share files; it need not exist yet.
  std::filesystem::path groupContainer(std::string_view groupIdentifier) const;

  platform::Dictionary standardDefaults;
  std::map<std::string, platform::Dictionary, std::less<>> suites;
  bool isLoginItem = false;
  bool checksForUpdates = true;

 private:
  std::filesystem::path folder_;
};

}  // namespace hushpane::sim
