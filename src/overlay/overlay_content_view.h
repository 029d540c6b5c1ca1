#pragma once

#include <filesystem>
#include <memory>
#include <optional>

#include "overlay/fluid_gradient_view.h"
#include "platform/lifetime.h"
#include "platform/platform.h"
#include "state/preferences_store.h"
#include "state/rendered_state.h"

namespace hushpane {

// Stacks the surfaces of one overlay window and shows the one that the mode and the settings call for; changes
// cross-fade. Reads the settings afresh each time it applies a state. Furnishes the content view of its window, which
// outlives it. Where its pictures and the gradient's hue come from is in overlay_pictures.cpp.
class OverlayContentView {
 public:
  static constexpr platform::Animation surfaceFade{0.7, platform::TimingFunction::easeOut};

  OverlayContentView(platform::Window& window, platform::Platform& platform, PreferencesStore& preferences);

  // `animated` false hides at once when nothing is to be shown; a surface that is to be shown always fades.
  void apply(const RenderedState& state, bool animated);

  const FluidGradientView& gradientView() const { return gradientView_; }
  std::optional<float> cachedHue() const { return cachedHue_; }

 private:
  enum class Role { ambient, focus };
  // A file and the size in pixels that its picture is to fill.
  struct PictureKey {
    std::filesystem::path url;
    int width = 0;
    int height = 0;
    bool operator==(const PictureKey&) const = default;
  };

  void hideAllSurfaces(bool animated);
  void showBlur(Role role);
  void showDim(Role role);
  void showWallpaper(Role role);
  void setDimAlpha(double alpha);
  void setGradientVisible(bool visible);

  void showCustomWallpaper();
  void showCachedCustomWallpaper();
  void showDefaultWallpaper();
  void warmCustomWallpaperCache(const std::optional<PictureKey>& key);
  void setWallpaperImage(platform::ImagePtr image);
  void releaseWallpaper();
  PictureKey keyOf(std::filesystem::path url) const;
  void computeHueIfNeeded();

  platform::Platform& platform_;
  PreferencesStore& preferences_;
  platform::Window& window_;
  platform::View& effectView_;
  platform::View& dimView_;
  platform::View& wallpaperView_;
  FluidGradientView gradientView_;
  platform::WorkItem gradientPause_;

  std::optional<float> cachedHue_;
  std::optional<std::filesystem::path> cachedHueWallpaperURL_;
  bool isComputingHue_ = false;

  // What the last decoding of a custom wallpaper was of, and its result; no picture where it failed.
  std::optional<PictureKey> cachedCustomWallpaperKey_;
  platform::ImagePtr cachedCustomWallpaper_;
  bool isWarmingWallpaperCache_ = false;

  bool isDefaultWallpaperWanted_ = false;  // and not replaced by a custom one
  std::optional<PictureKey> defaultWallpaperKey_;
  std::weak_ptr<const platform::Image> defaultWallpaper_;  // kept only while it is shown
  bool isLoadingDefaultWallpaper_ = false;

  platform::Lifetime lifetime_;
};

}  // namespace hushpane
