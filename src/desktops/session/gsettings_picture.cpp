#include <glib.h>

#include <memory>

#include "desktops/session/desktop_settings.h"
#include "desktops/session/picture_sources.h"

namespace hushpane::session {

namespace {

std::optional<std::string> setting(const char* schemaId, const char* key) {
  const auto settings = textSettings(schemaId, key);
  return settings ? std::optional(settings->get_string(key).raw()) : std::nullopt;
}

std::optional<std::filesystem::path> pictureIn(const char* schemaId, const char* key) {
  if (setting(schemaId, "picture-options") == "none") return std::nullopt;
  const auto name = setting(schemaId, key);
  return name ? localFile(*name) : std::nullopt;
}

}  // namespace

std::optional<std::filesystem::path> localFile(const std::string& name) {
  if (name.starts_with('/')) return name;
  char* host = nullptr;
  const std::unique_ptr<char, void (*)(void*)> file(g_filename_from_uri(name.c_str(), &host, nullptr), g_free);
  const std::unique_ptr<char, void (*)(void*)> named(host, g_free);
  return file && !named ? std::optional<std::filesystem::path>(file.get()) : std::nullopt;
}

std::optional<std::filesystem::path> gnomePicture(const platform::Screen&) {
  const bool isDark = setting("org.gnome.desktop.interface", "color-scheme") == "prefer-dark";
  constexpr auto schema = "org.gnome.desktop.background";
  auto dark = isDark ? pictureIn(schema, "picture-uri-dark") : std::nullopt;
  return dark ? dark : pictureIn(schema, "picture-uri");
}

std::optional<std::filesystem::path> cinnamonPicture(const platform::Screen&) {
  return pictureIn("org.cinnamon.desktop.background", "picture-uri");
}

std::optional<std::filesystem::path> matePicture(const platform::Screen&) {
  return pictureIn("org.mate.background", "picture-filename");
}

}  // namespace hushpane::session
