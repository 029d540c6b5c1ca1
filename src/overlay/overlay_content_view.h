#pragma once

#include "platform/platform.h"
#include "state/preferences_store.h"
#include "state/rendered_state.h"

namespace hushpane {

// Stacks the surfaces of one overlay window and shows the one that the mode and the settings call for; changes
// cross-fade. Reads the settings afresh each time it applies a state. Lives inside the window whose content view it
// furnishes.
class OverlayContentView {
 public:
  OverlayContentView(platform::View& root, platform::Platform& platform, PreferencesStore& preferences);

  // `animated` false hides at once when nothing is to be shown; a surface that is to be shown always fades.
  void apply(const RenderedState& state, bool animated);

 private:
  enum class Role { ambient, focus };

  void hideAllSurfaces(bool animated);
  void showBlur();
  void showDim(Role role);
  void showWallpaper();
  void showDefaultWallpaper();
  void setDimAlpha(double alpha);
  void releaseWallpaper();

  platform::Platform& platform_;
  PreferencesStore& preferences_;
  platform::View& effectView_;
  platform::View& dimView_;
  platform::View& wallpaperView_;
};

}  // namespace hushpane
