#include "ui/menu/wallpaper_choice.h"

#include <utility>

#include "platform/platform.h"
#include "state/stored_keys.h"
#include "ui/localized.h"
#include "ui/menu/surface_change.h"
#include "ui/menu/wallpaper_picker.h"
#include "ui/menu/wallpaper_slot_view.h"

namespace hushpane {

using namespace declarative;

namespace {

constexpr std::string_view defaultWallpaperName = "HushpaneDefaultWallpaper";

void loadDefaultWallpaper(const State<platform::ImagePtr>& picture) {
  if (const auto file = platform::Platform::current().bundle().imageURL(defaultWallpaperName))
    loadSlotPicture(*file, [picture](platform::ImagePtr image) { picture.set(std::move(image)); });
}

Element plus() {
  return symbol({.name = "plus", .font = {.size = 18, .weight = platform::FontWeight::ultraLight}})
      .foreground(tertiary);
}

// Where no file can be chosen by the pointer, the tooltip says how else.
Element withHint(Element slot) {
  if (platform::Platform::current().openPanel()) return slot;
  const std::string key(storedKeys::customWallpaperBookmarkData);
  return slot.tooltip(localized("Choose a picture in the settings file: %@"_key, {key}));
}

}  // namespace

Element WallpaperChoice::body(Context& context) const {
  const auto defaultWallpaper = context.state("defaultWallpaper", platform::ImagePtr());
  const auto& image = customWallpaper.get().image;
  const bool isCustom = ModeSettings(mode, prefs).wallpaperSource() == WallpaperSource::custom;

  const WallpaperSlotView defaultSlot{.isSelected = !isCustom,
                                      .onTap = [view = *this] { view.chooseSource(WallpaperSource::standard); },
                                      .onRemove = {},
                                      .content = picture(defaultWallpaper.get()),
                                      .accent = accent};
  WallpaperSlotView customSlot{.isSelected = isCustom,
                               .onTap = [view = *this] { view.chooseCustom(); },
                               .onRemove = {},
                               .content = image ? picture(image) : plus(),
                               .accent = accent};
  if (image) customSlot.onRemove = [view = *this] { view.removeCustom(); };
  return horizontalStack({}, {defaultSlot, image ? Element(customSlot) : withHint(customSlot)})
      .onAppear([defaultWallpaper] { loadDefaultWallpaper(defaultWallpaper); });
}

void WallpaperChoice::chooseSource(WallpaperSource source) const {
  ModeSettings(mode, prefs).setWallpaperSource(source);
  announceSurfaceChange(prefs);
}

void WallpaperChoice::chooseCustom() const {
  if (customWallpaper.get().image) return chooseSource(WallpaperSource::custom);
  openWallpaperPicker([view = *this](platform::Data bookmark) {
    view.prefs.customWallpaperBookmarkData = std::move(bookmark);
    ModeSettings(view.mode, view.prefs).setWallpaperSource(WallpaperSource::custom);
    view.prefs.objectWillChange();
    loadWallpaperPreview(view.prefs, view.customWallpaper);
    reapplyOverlays();
  });
}

// The other mode keeps its source: it shows its custom slot as chosen, and empty.
void WallpaperChoice::removeCustom() const {
  prefs.customWallpaperBookmarkData = platform::Data();
  chooseSource(WallpaperSource::standard);
}

}  // namespace hushpane
