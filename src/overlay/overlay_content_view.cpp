#include "overlay/overlay_content_view.h"

#include <string>

#include "state/surface_settings.h"

namespace hushpane {

namespace {

using platform::Animation;
using platform::TimingFunction;
using platform::View;

constexpr auto surfaceFade = OverlayContentView::surfaceFade;
constexpr Animation dimChange{0.7, TimingFunction::easeOut};
constexpr double hiddenAlpha = 0.001;  // at most this much counts as faded out
constexpr float hueWithoutPicture = 0.68f;

constexpr double alphaOf(DimIntensity intensity) {
  switch (intensity) {
    case DimIntensity::subtle: return 0.3;
    case DimIntensity::balanced: return 0.5;
    case DimIntensity::strong: return 0.7;
  }
  return 0.5;
}

void fadeIn(View& view) {
  view.setHidden(false);
  if (view.alpha() < 1) view.setAlpha(0);
  view.animateAlpha(1, surfaceFade);
}

void fadeOut(View& view) {
  if (view.isHidden() && view.alpha() <= 0) return;
  view.animateAlpha(0, surfaceFade, [&view] {
    if (view.alpha() <= hiddenAlpha) view.setHidden(true);
  });
}

void hideAtOnce(View& view) {
  view.setAlpha(0);
  view.setHidden(true);
}

}  // namespace

OverlayContentView::OverlayContentView(platform::Window& window, platform::Platform& platform,
                                       PreferencesStore& preferences)
    : platform_(platform),
      preferences_(preferences),
      window_(window),
      effectView_(window.contentView().addSubview()),
      dimView_(window.contentView().addSubview()),
      wallpaperView_(window.contentView().addSubview()),
      gradientView_(window.contentView().addSubview(), window, platform) {
  effectView_.setMaterial(platform::EffectMaterial::darkHud);
  dimView_.setLayerColor(platform::black);
  hideAllSurfaces(false);
}

void OverlayContentView::apply(const RenderedState& state, bool animated) {
  if (!state.showsCover()) {
    hideAllSurfaces(animated);
    return;
  }
  const Role role = state.showCleanDesktop ? Role::ambient : Role::focus;
  const std::string surface =
      role == Role::ambient ? preferences_.ambientSurfaceRaw.get() : preferences_.focusSurfaceRaw.get();
  switch (fromRawValue<SurfaceType>(surface).value_or(SurfaceType::blur)) {
    case SurfaceType::blur: showBlur(role); break;
    case SurfaceType::dim: showDim(role); break;
    case SurfaceType::wallpaper: showWallpaper(role); break;
  }
}

void OverlayContentView::hideAllSurfaces(bool animated) {
  for (View* view : {&effectView_, &dimView_, &wallpaperView_, &gradientView_.view()})
    animated ? fadeOut(*view) : hideAtOnce(*view);
  gradientView_.setPaused(true);
  if (!animated) releaseWallpaper();
}

void OverlayContentView::showBlur(Role role) {
  fadeIn(effectView_);
  fadeOut(dimView_);
  fadeOut(wallpaperView_);
  if (role == Role::ambient && preferences_.ambientGradientEnabled.get()) {
    gradientView_.setAccentHue(cachedHue_.value_or(hueWithoutPicture));
    setGradientVisible(true);
    computeHueIfNeeded();
  } else {
    setGradientVisible(false);
  }
  releaseWallpaper();
}

void OverlayContentView::showDim(Role role) {
  const std::string intensity =
      role == Role::ambient ? preferences_.ambientDimIntensityRaw.get() : preferences_.focusDimIntensityRaw.get();
  setDimAlpha(alphaOf(fromRawValue<DimIntensity>(intensity).value_or(DimIntensity::balanced)));
  fadeOut(effectView_);
  fadeOut(wallpaperView_);
  setGradientVisible(false);
  fadeIn(dimView_);
  releaseWallpaper();
}

void OverlayContentView::showWallpaper(Role role) {
  const std::string source =
      role == Role::ambient ? preferences_.ambientWallpaperSourceRaw.get() : preferences_.focusWallpaperSourceRaw.get();
  if (fromRawValue<WallpaperSource>(source) == WallpaperSource::custom)
    showCustomWallpaper();
  else
    showDefaultWallpaper();
  fadeOut(effectView_);
  fadeOut(dimView_);
  fadeIn(wallpaperView_);
  setGradientVisible(false);
}

void OverlayContentView::setDimAlpha(double alpha) {
  platform::Color target = platform::black;
  target.alpha = alpha;
  dimView_.animateLayerColor(target, dimChange);
}

void OverlayContentView::setGradientVisible(bool visible) {
  auto& view = gradientView_.view();
  if (visible) {
    gradientView_.setPaused(false);
    fadeIn(view);
    return;
  }
  fadeOut(view);
  if (gradientView_.isPaused()) return;
  // A gradient that became visible again meanwhile keeps running.
  gradientPause_ = platform_.mainQueue().after(surfaceFade.duration, [this, &view] {
    if (view.isHidden() || view.alpha() <= hiddenAlpha) gradientView_.setPaused(true);
  });
}

}  // namespace hushpane
