#include "overlay/overlay_content_view.h"

#include <string>

#include "state/surface_settings.h"

namespace hushpane {

namespace {

using platform::Animation;
using platform::TimingFunction;
using platform::View;

constexpr std::string_view defaultWallpaperName = "HushpaneDefaultWallpaper";
constexpr Animation surfaceFade{0.7, TimingFunction::easeOut};
constexpr Animation dimChange{0.7, TimingFunction::easeOut};
constexpr Animation wallpaperCrossFade{0.45, TimingFunction::easeInEaseOut};
constexpr double hiddenAlpha = 0.001;  // at most this much counts as faded out

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

OverlayContentView::OverlayContentView(View& root, platform::Platform& platform, PreferencesStore& preferences)
    : platform_(platform),
      preferences_(preferences),
      effectView_(root.addSubview()),
      dimView_(root.addSubview()),
      wallpaperView_(root.addSubview()) {
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
    case SurfaceType::blur: showBlur(); break;
    case SurfaceType::dim: showDim(role); break;
    case SurfaceType::wallpaper: showWallpaper(); break;
  }
}

void OverlayContentView::hideAllSurfaces(bool animated) {
  for (View* view : {&effectView_, &dimView_, &wallpaperView_}) animated ? fadeOut(*view) : hideAtOnce(*view);
  if (!animated) releaseWallpaper();
}

void OverlayContentView::showBlur() {
  fadeIn(effectView_);
  fadeOut(dimView_);
  fadeOut(wallpaperView_);
  releaseWallpaper();
}

void OverlayContentView::showDim(Role role) {
  const std::string intensity =
      role == Role::ambient ? preferences_.ambientDimIntensityRaw.get() : preferences_.focusDimIntensityRaw.get();
  setDimAlpha(alphaOf(fromRawValue<DimIntensity>(intensity).value_or(DimIntensity::balanced)));
  fadeOut(effectView_);
  fadeOut(wallpaperView_);
  fadeIn(dimView_);
  releaseWallpaper();
}

void OverlayContentView::showWallpaper() {
  showDefaultWallpaper();
  fadeOut(effectView_);
  fadeOut(dimView_);
  fadeIn(wallpaperView_);
}

void OverlayContentView::showDefaultWallpaper() {
  auto image = platform_.bundle().image(defaultWallpaperName);
  if (image && wallpaperView_.contents())
    wallpaperView_.setContents(std::move(image), wallpaperCrossFade);
  else
    wallpaperView_.setContents(std::move(image));
}

void OverlayContentView::setDimAlpha(double alpha) {
  platform::Color target = platform::black;
  target.alpha = alpha;
  dimView_.animateLayerColor(target, dimChange);
}

void OverlayContentView::releaseWallpaper() {
  wallpaperView_.setContents(nullptr);
}

}  // namespace hushpane
