#include "desktops/session/chooser_program.h"

#include <glib.h>
#include <glibmm/miscutils.h>

#include <array>

namespace hushpane::session {

namespace {

using Options = platform::OpenPanel::Options;
using Words = std::vector<std::string>;

// A folder is told by its last slash.
std::string startFolder(const Options& options) {
  const auto folder = options.directory.empty() ? std::filesystem::path(g_get_home_dir()) : options.directory;
  return (folder / "").string();
}

std::string patterns() {
  std::string joined;
  for (const auto& kind : pictureKinds())
    for (const char* extension : kind.extensions) {
      std::string upper(extension);
      for (char& letter : upper) letter = g_ascii_toupper(letter);
      joined += std::string(" *.") + extension + " *." + upper;
    }
  return joined;
}

std::string mimeTypes() {
  std::string joined;
  for (const auto& kind : pictureKinds()) joined += (joined.empty() ? "" : " ") + std::string(kind.mimeType);
  return joined;
}

Words dialogOfGtk(const char* mode, const Options& options) {
  Words words{mode, "--title=" + options.title, "--filename=" + startFolder(options)};
  if (options.imagesOnly) words.push_back(std::string("--file-filter=") + pictureKindsTitle + " |" + patterns());
  return words;
}

Words zenity(const Options& options) {
  return dialogOfGtk("--file-selection", options);
}

Words yad(const Options& options) {
  return dialogOfGtk("--file", options);
}

Words kdialog(const Options& options) {
  Words words{"--title", options.title, "--getopenfilename", startFolder(options)};
  if (options.imagesOnly) words.push_back(mimeTypes());
  return words;
}

struct Chooser {
  const char* name;
  Words (*words)(const Options&);
};

constexpr std::array<Chooser, 4> choosers{{{"zenity", zenity}, {"qarma", zenity}, {"kdialog", kdialog}, {"yad", yad}}};

}  // namespace

const std::vector<PictureKind>& pictureKinds() {
  static const std::vector<PictureKind> kinds{{"image/png", {"png"}},          {"image/jpeg", {"jpg", "jpeg"}},
                                              {"image/webp", {"webp"}},        {"image/gif", {"gif"}},
                                              {"image/tiff", {"tif", "tiff"}}, {"image/bmp", {"bmp"}},
                                              {"image/svg+xml", {"svg"}}};
  return kinds;
}

std::optional<std::vector<std::string>> chooserCommand(const Options& options) {
  for (const auto& [name, wordsFor] : choosers) {
    const auto program = Glib::find_program_in_path(name);
    if (program.empty()) continue;
    Words command{program};
    for (auto& word : wordsFor(options)) command.push_back(std::move(word));
    return command;
  }
  return std::nullopt;
}

bool hasChooserProgram() {
  for (const auto& chooser : choosers)
    if (!Glib::find_program_in_path(chooser.name).empty()) return true;
  return false;
}

std::optional<std::filesystem::path> chosenFile(std::string output) {
  if (output.ends_with('\n')) output.pop_back();
  if (!output.starts_with('/') || output.find('\0') != output.npos) return std::nullopt;
  return output;
}

}  // namespace hushpane::session
