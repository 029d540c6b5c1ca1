#include "desktops/shared/group_container.h"

#include <utility>

#include "desktops/shared/debug_log.h"
#include "desktops/shared/files.h"
#include "desktops/shared/xdg_directories.h"

namespace hushpane::desktops {

GroupContainer::GroupContainer(std::optional<std::filesystem::path> dataHome, Missing missing)
    : dataHome_(std::move(dataHome)), missing_(missing) {}

std::optional<std::filesystem::path> GroupContainer::url(std::string_view groupIdentifier) {
  if (!dataHome_ || !isPlainFileName(groupIdentifier)) return std::nullopt;
  auto folder = *dataHome_ / groupIdentifier;
  std::error_code error;
  if (missing_ == Missing::leave ? std::filesystem::is_directory(folder, error) : makePrivateFolder(folder))
    return folder;
  debugLog("no shared folder at " + folder.string());
  return std::nullopt;
}

}  // namespace hushpane::desktops
