#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "platform/open_panel.h"

namespace hushpane::session {

// The kinds of pictures to choose from, and the ends of their files' names.
struct PictureKind {
  const char* mimeType;
  std::vector<const char*> extensions;
};
const std::vector<PictureKind>& pictureKinds();
// What a list of these kinds is called, in any language.
inline constexpr const char* pictureKindsTitle = "PNG, JPEG, WebP, GIF, TIFF, BMP, SVG";

// The command line of a program, found in PATH, that lets the user choose a file and prints its path; nothing when none
// is installed.
std::optional<std::vector<std::string>> chooserCommand(const platform::OpenPanel::Options& options);
bool hasChooserProgram();

// The path in what such a program printed; nothing when that is no absolute path.
std::optional<std::filesystem::path> chosenFile(std::string output);

}  // namespace hushpane::session
