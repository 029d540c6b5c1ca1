#include "desktops/session/desktop_picture.h"

namespace hushpane::session {

std::optional<std::filesystem::path> desktopPicture(const platform::Screen&) {
  return std::nullopt;
}

}  // namespace hushpane::session
