#include "state/preferences_store.h"

#include "state/stored_keys.h"

namespace hushpane {

PreferencesStore& PreferencesStore::shared() {
  return platform::Platform::current().instance<PreferencesStore>();
}

PreferencesStore::PreferencesStore(platform::Platform& platform)
    : revealModifierRaw(platform.userDefaults(), storedKeys::revealModifier, "option"),
      applyToAllDisplays(platform.userDefaults(), storedKeys::applyToAllDisplays, true),
      ambientSurfaceRaw(platform.userDefaults(), storedKeys::ambientSurface, "blur"),
      ambientGradientEnabled(platform.userDefaults(), storedKeys::ambientGradientEnabled, false),
      ambientDimIntensityRaw(platform.userDefaults(), storedKeys::ambientDimIntensity, "balanced"),
      ambientWallpaperSourceRaw(platform.userDefaults(), storedKeys::ambientWallpaperSource, "default"),
      focusSurfaceRaw(platform.userDefaults(), storedKeys::focusSurface, "blur"),
      focusDimIntensityRaw(platform.userDefaults(), storedKeys::focusDimIntensity, "balanced"),
      focusWallpaperSourceRaw(platform.userDefaults(), storedKeys::focusWallpaperSource, "default"),
      customWallpaperBookmarkData(platform.userDefaults(), storedKeys::customWallpaperBookmarkData, {}),
      mouseShakeEnabled(platform.userDefaults(), storedKeys::mouseShakeEnabled, false),
      bookmarks_(platform.bookmarks()) {}

std::optional<std::filesystem::path> PreferencesStore::customWallpaperURL() const {
  const platform::Data bookmark = customWallpaperBookmarkData.get();
  if (bookmark.empty()) return std::nullopt;
  const auto resolved = bookmarks_.resolve(bookmark);
  return resolved ? std::optional(resolved->path) : std::nullopt;
}

}  // namespace hushpane
