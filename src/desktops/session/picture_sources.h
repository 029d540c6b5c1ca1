#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "platform/screen.h"

namespace hushpane::session {

// What the settings of one desktop environment name as the picture of a screen: a path as it is written there, not yet
// looked at. Nothing when the settings are missing or broken, or say that no picture is shown. No service is started.
std::optional<std::filesystem::path> gnomePicture(const platform::Screen& screen);
std::optional<std::filesystem::path> cinnamonPicture(const platform::Screen& screen);
std::optional<std::filesystem::path> matePicture(const platform::Screen& screen);
std::optional<std::filesystem::path> xfcePicture(const platform::Screen& screen);
std::optional<std::filesystem::path> plasmaPicture(const platform::Screen& screen);

// The file that a `file:` URI or an absolute path names.
std::optional<std::filesystem::path> localFile(const std::string& name);

}  // namespace hushpane::session
