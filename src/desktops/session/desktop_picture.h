#pragma once

#include <filesystem>
#include <optional>

#include "platform/screen.h"

namespace hushpane::session {

// The file of the desktop picture of a screen, as the settings of the running desktop environment name it. Nothing when
// that environment is not known, shows no picture, or names none that is a regular file.
std::optional<std::filesystem::path> desktopPicture(const platform::Screen& screen);

}  // namespace hushpane::session
