#include <giomm/settings.h>
#include <giomm/settingsschema.h>
#include <pango/pango-attributes.h>

#include <array>
#include <utility>
#include <vector>

#include "desktops/session/desktop_background.h"
#include "desktops/session/desktop_settings.h"
#include "desktops/session/picture_sources.h"

namespace hushpane::session {

namespace {

constexpr auto gnomeSchema = "org.gnome.desktop.background", gnomeInterface = "org.gnome.desktop.interface",
               cinnamonSchema = "org.cinnamon.desktop.background", mateSchema = "org.mate.background";
constexpr auto colorScheme = "color-scheme", placementKey = "picture-options";

std::optional<std::string> setting(const char* schemaId, const char* key) {
  const auto settings = textSettings(schemaId, key);
  return settings ? std::optional(settings->get_string(key).raw()) : std::nullopt;
}

template <class Value, std::size_t count>
Value valueOf(const std::optional<std::string>& name, const std::array<std::pair<const char*, Value>, count>& values,
              Value otherwise) {
  for (const auto& [known, value] : values)
    if (name == known) return value;
  return otherwise;
}

platform::Color colorIn(const char* schemaId, const char* key) {
  constexpr double largest = 0xffff;
  const auto text = setting(schemaId, key);
  PangoColor color;
  if (!text || !pango_color_parse(&color, text->c_str())) return platform::black;
  return {color.red / largest, color.green / largest, color.blue / largest, 1};
}

std::optional<std::filesystem::path> fileIn(const char* schemaId, const char* key) {
  const auto name = setting(schemaId, key);
  auto file = name ? localFile(*name) : std::nullopt;
  return file && file->extension() == ".xml" ? firstOfTimedPicture(*file) : file;
}

// Nothing when there is no such schema. The keys but for the pictures are the same everywhere.
std::optional<DesktopBackground> backgroundIn(const char* schemaId, const char* pictureKey) {
  constexpr std::array<std::pair<const char*, PicturePlacement>, 5> placements{
      {{"wallpaper", PicturePlacement::tiled},
       {"centered", PicturePlacement::centered},
       {"scaled", PicturePlacement::scaled},
       {"stretched", PicturePlacement::stretched},
       {"spanned", PicturePlacement::spanned}}};
  constexpr std::array<std::pair<const char*, ColorShading>, 2> shadings{
      {{"horizontal", ColorShading::horizontal}, {"vertical", ColorShading::vertical}}};
  if (!textSettings(schemaId, pictureKey)) return std::nullopt;
  const auto placement = setting(schemaId, placementKey);
  DesktopBackground background;
  if (placement != "none") background.picture = fileIn(schemaId, pictureKey);
  background.placement = valueOf(placement, placements, PicturePlacement::zoomed);
  background.primary = colorIn(schemaId, "primary-color");
  background.secondary = colorIn(schemaId, "secondary-color");
  background.shading = valueOf(setting(schemaId, "color-shading-type"), shadings, ColorShading::solid);
  return background;
}

}  // namespace

std::optional<DesktopBackground> gnomeBackground() {
  auto background = backgroundIn(gnomeSchema, "picture-uri");
  if (!background || !background->picture) return background;
  const bool isDark = setting(gnomeInterface, colorScheme) == "prefer-dark";
  auto dark = isDark ? fileIn(gnomeSchema, "picture-uri-dark") : std::nullopt;
  // The colours show only without a picture.
  return DesktopBackground{.picture = dark ? dark : background->picture, .placement = background->placement};
}

std::optional<DesktopBackground> cinnamonBackground() {
  return backgroundIn(cinnamonSchema, "picture-uri");
}

std::optional<DesktopBackground> mateBackground() {
  return backgroundIn(mateSchema, "picture-filename");
}

struct DesktopBackgroundWatch::Settings {
  std::vector<Glib::RefPtr<Gio::Settings>> watched;
  std::vector<sigc::connection> connections;
};

DesktopBackgroundWatch::DesktopBackgroundWatch(std::function<void()> onChange)
    : settings_(std::make_unique<Settings>()) {
  constexpr std::array<std::pair<const char*, const char*>, 4> sources{{{gnomeSchema, placementKey},
                                                                        {gnomeInterface, colorScheme},
                                                                        {cinnamonSchema, placementKey},
                                                                        {mateSchema, placementKey}}};
  for (const auto& [schemaId, key] : sources) {
    const auto settings = textSettings(schemaId, key);
    if (!settings) continue;
    settings_->connections.push_back(
        settings->signal_changed().connect([onChange](const Glib::ustring&) { onChange(); }));
    // Changes are told only of keys that were read since.
    Glib::VariantBase value;
    for (const auto& read : settings->property_settings_schema().get_value()->list_keys())
      settings->get_value(read, value);
    settings_->watched.push_back(settings);
  }
}

DesktopBackgroundWatch::~DesktopBackgroundWatch() {
  for (auto& connection : settings_->connections) connection.disconnect();
}

}  // namespace hushpane::session
