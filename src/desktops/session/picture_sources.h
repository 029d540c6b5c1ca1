#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "desktops/session/desktop_background.h"
#include "platform/screen.h"

namespace hushpane::session {

// What the settings of one desktop environment say of its background. Nothing when they are missing. No service is
// started.
std::optional<DesktopBackground> gnomeBackground();
std::optional<DesktopBackground> cinnamonBackground();
std::optional<DesktopBackground> mateBackground();

// What they name as the picture of a screen, where that is all they tell: a path as it is written there, not yet looked
// at. Nothing when the settings are missing or broken, or say that no picture is shown.
std::optional<std::filesystem::path> xfcePicture(const platform::Screen& screen);
std::optional<std::filesystem::path> plasmaPicture(const platform::Screen& screen);

// The first picture of a plan (XML) by which GNOME and its kin change pictures in the course of the day.
std::optional<std::filesystem::path> firstOfTimedPicture(const std::filesystem::path& plan);

// The file that a `file:` URI or an absolute path names.
std::optional<std::filesystem::path> localFile(const std::string& name);

}  // namespace hushpane::session
