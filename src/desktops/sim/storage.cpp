#include "desktops/sim/storage.h"

#include <cstdlib>
#include <system_error>

namespace hushpane::sim {

Storage::Storage() {
  std::error_code error;
  std::string name = (std::filesystem::temp_directory_path(error) / "hushpane-XXXXXX").string();
  if (!error && mkdtemp(name.data())) folder_ = name;
}

Storage::~Storage() {
  std::error_code ignored;
  if (!folder_.empty()) std::filesystem::remove_all(folder_, ignored);
}

std::filesystem::path Storage::groupContainer(std::string_view groupIdentifier) const {
  return folder_ / groupIdentifier;
}

}  // namespace hushpane::sim
