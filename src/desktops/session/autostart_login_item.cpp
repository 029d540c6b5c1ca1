#include "desktops/session/autostart_login_item.h"

#include <glib.h>
#include <glibmm/keyfile.h>
#include <glibmm/miscutils.h>
#include <glibmm/shell.h>

#include <cstdlib>
#include <optional>
#include <sstream>
#include <vector>

#include "desktops/shared/files.h"
#include "desktops/shared/xdg_directories.h"

namespace hushpane::session {

namespace {

namespace fs = std::filesystem;

constexpr const char* entryName = "com.corvane.Hushpane.desktop";
constexpr const char* group = "Desktop Entry";
constexpr std::size_t largestEntry = 1 << 16;

using KeyFile = Glib::RefPtr<Glib::KeyFile>;

std::optional<fs::path> userFolder() {
  const auto config = desktops::configHome();
  return config ? std::optional(*config / "autostart") : std::nullopt;
}

std::vector<std::string> split(const char* text, char separator) {
  std::vector<std::string> parts;
  std::istringstream stream(text ? text : "");
  for (std::string part; std::getline(stream, part, separator);)
    if (!part.empty()) parts.push_back(part);
  return parts;
}

std::optional<fs::path> systemEntry() {
  const char* named = std::getenv("XDG_CONFIG_DIRS");
  std::error_code error;
  for (const auto& folder : split(named && *named ? named : "/etc/xdg", ':'))
    if (auto entry = fs::path(folder) / "autostart" / entryName; entry.is_absolute() && fs::exists(entry, error))
      return entry;
  return std::nullopt;
}

// The first file of that name counts, whatever it says.
std::optional<fs::path> decidingEntry() {
  const auto folder = userFolder();
  std::error_code error;
  if (folder && fs::exists(*folder / entryName, error)) return *folder / entryName;
  return systemEntry();
}

// Nothing when the file cannot be read, or not as a desktop entry.
KeyFile readEntry(const fs::path& file) {
  const auto contents = desktops::readFile(file, largestEntry);
  if (!contents) return {};
  try {
    auto entry = Glib::KeyFile::create();
    entry->load_from_data(contents->bytes);
    return entry;
  } catch (const Glib::Error&) {
    return {};
  }
}

std::string text(const KeyFile& entry, const char* key) {
  return entry->has_key(group, key) ? entry->get_string(group, key).raw() : std::string();
}

bool truth(const KeyFile& entry, const char* key, bool otherwise) {
  return entry->has_key(group, key) ? entry->get_boolean(group, key) : otherwise;
}

// Whether one of the names of the running desktop is in that list.
bool namesThisDesktop(const KeyFile& entry, const char* key) {
  for (const auto& name : entry->get_string_list(group, key))
    for (const auto& current : split(std::getenv("XDG_CURRENT_DESKTOP"), ':'))
      if (name.raw() == current) return true;
  return false;
}

bool isForThisDesktop(const KeyFile& entry) {
  if (entry->has_key(group, "OnlyShowIn") && !namesThisDesktop(entry, "OnlyShowIn")) return false;
  return !entry->has_key(group, "NotShowIn") || !namesThisDesktop(entry, "NotShowIn");
}

bool hasProgram(const KeyFile& entry) {
  const auto tried = text(entry, "TryExec");
  if (!tried.empty() && Glib::find_program_in_path(tried).empty()) return false;
  return !Glib::shell_parse_argv(text(entry, "Exec")).empty();
}

// Throws when a value is broken, as it does when the group is missing.
bool isOn(const KeyFile& entry) {
  return text(entry, "Type") == "Application" && !truth(entry, "Hidden", false) &&
         truth(entry, "X-GNOME-Autostart-enabled", true) && isForThisDesktop(entry) && hasProgram(entry);
}

// Backslashes and the like, as the values of all keys have them.
std::string escaped(const std::string& value) {
  std::string result;
  for (const char letter : value) {
    if (letter == '\\')
      result += "\\\\";
    else if (letter == '\n')
      result += "\\n";
    else if (letter == '\t')
      result += "\\t";
    else if (letter == '\r')
      result += "\\r";
    else
      result += letter;
  }
  return result;
}

// One word of a command line, as the key Exec has it.
std::string quoted(const std::string& word) {
  std::string result = "\"";
  for (const char letter : word) {
    if (std::string_view("\"`$\\").find(letter) != std::string_view::npos) result += '\\';
    result += letter == '%' ? std::string("%%") : std::string(1, letter);
  }
  return result + '"';
}

bool writeUserEntry(const std::string& bytes) {
  const auto folder = userFolder();
  return folder && desktops::makePrivateFolder(*folder) && desktops::replaceFile(*folder / entryName, bytes);
}

}  // namespace

bool AutostartLoginItem::isEnabled() const {
  const auto file = decidingEntry();
  const auto entry = file ? readEntry(*file) : KeyFile();
  try {
    return entry && isOn(entry);
  } catch (const Glib::Error&) {
    return false;
  }
}

bool AutostartLoginItem::registerItem() {
  const auto& path = program_.native();
  if (path.empty() || !g_utf8_validate(path.data(), static_cast<gssize>(path.size()), nullptr)) return false;
  return writeUserEntry("[Desktop Entry]\nType=Application\nName=Hushpane\nExec=" + escaped(quoted(path)) +
                        "\nTryExec=" + escaped(path) +
                        "\nIcon=com.corvane.Hushpane\nTerminal=false\n"
                        "StartupNotify=false\nX-GNOME-Autostart-enabled=true\n");
}

bool AutostartLoginItem::unregisterItem() {
  if (systemEntry()) return writeUserEntry("[Desktop Entry]\nType=Application\nName=Hushpane\nHidden=true\n");
  const auto folder = userFolder();
  std::error_code error;
  if (folder) fs::remove(*folder / entryName, error);
  return !error;
}

fs::path ownProgram() {
  std::error_code error;
  auto program = fs::read_symlink("/proc/self/exe", error);
  return !error && fs::exists(program, error) ? program : fs::path();
}

}  // namespace hushpane::session
