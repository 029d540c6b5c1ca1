#pragma once

#include "state/preferences_store.h"
#include "state/surface_settings.h"
#include "state/veil_mode.h"

namespace hushpane {

// How one mode covers the desktop. Reading takes the default for texts that name no case.
class ModeSettings {
 public:
  // Clean desktop has settings of its own; every other mode counts as focus.
  ModeSettings(VeilMode mode, PreferencesStore& preferences) : mode_(mode), preferences_(preferences) {}

  SurfaceType surface() const { return fromRawValue<SurfaceType>(surfaceRaw().get()).value_or(SurfaceType::blur); }
  void setSurface(SurfaceType surface) const { surfaceRaw() = std::string(rawValue(surface)); }

  DimIntensity dimIntensity() const {
    return fromRawValue<DimIntensity>(dimIntensityRaw().get()).value_or(DimIntensity::balanced);
  }
  void setDimIntensity(DimIntensity intensity) const { dimIntensityRaw() = std::string(rawValue(intensity)); }

  WallpaperSource wallpaperSource() const {
    return fromRawValue<WallpaperSource>(wallpaperSourceRaw().get()).value_or(WallpaperSource::standard);
  }
  void setWallpaperSource(WallpaperSource source) const { wallpaperSourceRaw() = std::string(rawValue(source)); }

 private:
  using Raw = StoredValue<std::string>;
  Raw& pick(Raw& ambient, Raw& focus) const { return mode_ == VeilMode::cleanDesktop ? ambient : focus; }
  Raw& surfaceRaw() const { return pick(preferences_.ambientSurfaceRaw, preferences_.focusSurfaceRaw); }
  Raw& dimIntensityRaw() const { return pick(preferences_.ambientDimIntensityRaw, preferences_.focusDimIntensityRaw); }
  Raw& wallpaperSourceRaw() const {
    return pick(preferences_.ambientWallpaperSourceRaw, preferences_.focusWallpaperSourceRaw);
  }

  VeilMode mode_;
  PreferencesStore& preferences_;
};

}  // namespace hushpane
