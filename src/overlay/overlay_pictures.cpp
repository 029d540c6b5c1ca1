#include <functional>
#include <utility>

#include "overlay/accent_hue.h"
#include "overlay/overlay_content_view.h"

// The part of the content view that waits for pictures. They are decoded in background tasks, one of each kind at a
// time; a task that ends after the view does nothing.
namespace hushpane {

namespace {

using platform::Animation;
using platform::ImagePtr;
using platform::TaskPriority;

constexpr std::string_view defaultWallpaperName = "HushpaneDefaultWallpaper";
constexpr Animation wallpaperCrossFade{0.45, platform::TimingFunction::easeInEaseOut};

}  // namespace

OverlayContentView::PictureKey OverlayContentView::keyOf(std::filesystem::path url) const {
  const auto& frame = window_.frame();
  const double scale = platform_.screens().scaleOf(frame);
  return {std::move(url), static_cast<int>(frame.width * scale), static_cast<int>(frame.height * scale)};
}

void OverlayContentView::showCustomWallpaper() {
  const auto url = preferences_.customWallpaperURL();
  const auto key = url ? std::optional(keyOf(*url)) : std::nullopt;
  if (key == cachedCustomWallpaperKey_ && cachedCustomWallpaper_) return showCachedCustomWallpaper();
  showDefaultWallpaper();
  warmCustomWallpaperCache(key);
}

void OverlayContentView::showCachedCustomWallpaper() {
  isDefaultWallpaperWanted_ = false;
  setWallpaperImage(cachedCustomWallpaper_);
}

void OverlayContentView::showDefaultWallpaper() {
  isDefaultWallpaperWanted_ = true;
  const auto url = platform_.bundle().imageURL(defaultWallpaperName);
  if (!url) return wallpaperView_.setContents(nullptr);
  const auto key = keyOf(*url);
  if (auto image = defaultWallpaper_.lock(); image && key == defaultWallpaperKey_)
    return setWallpaperImage(std::move(image));
  if (std::exchange(isLoadingDefaultWallpaper_, true)) return;
  platform_.taskQueue().run<ImagePtr>(
      TaskPriority::userInitiated,
      [key, &loader = platform_.imageLoader()] { return loader.load(key.url, key.width, key.height); },
      lifetime_.weak([this, key](ImagePtr image) {
        isLoadingDefaultWallpaper_ = false;
        if (!isDefaultWallpaperWanted_) return;
        defaultWallpaperKey_ = key;
        defaultWallpaper_ = image;
        setWallpaperImage(std::move(image));
      }));
}

void OverlayContentView::warmCustomWallpaperCache(const std::optional<PictureKey>& key) {
  if (!key) {
    cachedCustomWallpaperKey_.reset();
    cachedCustomWallpaper_.reset();
    return;
  }
  if (key == cachedCustomWallpaperKey_) return;  // known, be it a picture or a failure
  if (std::exchange(isWarmingWallpaperCache_, true)) return;
  platform_.taskQueue().run<ImagePtr>(
      TaskPriority::userInitiated,
      [key = *key, &loader = platform_.imageLoader()] { return loader.load(key.url, key.width, key.height); },
      lifetime_.weak([this, key = *key](ImagePtr image) {
        isWarmingWallpaperCache_ = false;
        cachedCustomWallpaperKey_ = key;
        cachedCustomWallpaper_ = std::move(image);
        if (!wallpaperView_.isHidden() && cachedCustomWallpaper_) showCachedCustomWallpaper();
      }));
}

// Cross-fades from a picture to another. The first picture of a surface that is already there fades in by itself.
void OverlayContentView::setWallpaperImage(ImagePtr image) {
  if (wallpaperView_.contents() && image) return wallpaperView_.setContents(std::move(image), wallpaperCrossFade);
  wallpaperView_.setContents(std::move(image));
  if (wallpaperView_.isHidden() || wallpaperView_.alpha() < 1) return;
  wallpaperView_.setAlpha(0);
  wallpaperView_.animateAlpha(1, surfaceFade);
}

void OverlayContentView::releaseWallpaper() {
  isDefaultWallpaperWanted_ = false;
  wallpaperView_.setContents(nullptr);
  cachedCustomWallpaperKey_.reset();
  cachedCustomWallpaper_.reset();
}

void OverlayContentView::computeHueIfNeeded() {
  const auto& screens = platform_.screens().screens();
  const auto url = screens.empty() ? std::nullopt : platform_.workspace().desktopImageURL(screens.front());
  if (!url || (url == cachedHueWallpaperURL_ && cachedHue_)) return;
  if (std::exchange(isComputingHue_, true)) return;
  platform_.taskQueue().run<std::optional<float>>(
      TaskPriority::utility,
      [url = *url, &loader = platform_.imageLoader()] {
        const auto picture = loader.scaled(url, accentHueSide, accentHueSide);
        return picture ? accentHue(*picture) : std::nullopt;
      },
      lifetime_.weak([this, url = *url](std::optional<float> hue) {
        isComputingHue_ = false;
        if (!hue) return;
        cachedHueWallpaperURL_ = url;
        cachedHue_ = hue;
        if (!gradientView_.view().isHidden()) gradientView_.setAccentHue(*hue);
      }));
}

}  // namespace hushpane
