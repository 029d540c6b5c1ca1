#include "desktops/sim/sim_shared_container.h"

#include <system_error>

namespace hushpane::sim {

std::optional<std::filesystem::path> SimSharedContainer::url(std::string_view groupIdentifier) {
  if (storage_.folder().empty()) return std::nullopt;
  const auto folder = storage_.groupContainer(groupIdentifier);
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  return error ? std::nullopt : std::optional(folder);
}

}  // namespace hushpane::sim
