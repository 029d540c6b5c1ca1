#pragma once

#include "declarative/element.h"
#include "ui/menu/mode_settings.h"
#include "ui/menu/wallpaper_preview.h"

namespace hushpane {

// The two pictures that a mode can cover the desktop with: the program's own and the user's.
struct WallpaperChoice {
  VeilMode mode = VeilMode::cleanDesktop;
  PreferencesStore& prefs;
  declarative::AdaptiveColor accent;
  declarative::State<WallpaperPreview> customWallpaper;

  declarative::Element body(declarative::Context& context) const;

 private:
  void chooseSource(WallpaperSource source) const;
  void chooseCustom() const;
  void removeCustom() const;
};

}  // namespace hushpane
