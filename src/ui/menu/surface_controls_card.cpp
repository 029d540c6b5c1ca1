#include "ui/menu/surface_controls_card.h"

#include <utility>

#include "ui/controls/pell_segmented_picker.h"
#include "ui/localized.h"
#include "ui/menu/mode_settings.h"
#include "ui/menu/surface_change.h"
#include "ui/menu/wallpaper_choice.h"
#include "ui/stored_changes.h"

namespace hushpane {

namespace {

using namespace declarative;

constexpr double spacing = 10, wideItem = 64, narrowItem = 36;  // points
constexpr TransitionEffect fade{.opacity = 0};
constexpr Animation growth = spring(0.5, 0.92), controlsFade = easeOut(0.18), noteFade = easeOut(0.15);

Element labelledRow(LocalizationKey label, Element control) {
  const platform::Font font{.size = 12, .weight = platform::FontWeight::medium};
  return horizontalStack({}, {text(localized(label), font).foreground(secondary), spacer(), std::move(control)});
}

Element surfaceRow(const SurfaceControlsCard& card) {
  const ModeSettings settings(card.mode, card.prefs);
  const auto choose = [settings, &prefs = card.prefs](SurfaceType surface) {
    settings.setSurface(surface);
    announceSurfaceChange(prefs);
  };
  return labelledRow("Surface"_key,
                     PellSegmentedPicker<SurfaceType>{.selection = {[settings] { return settings.surface(); }, choose},
                                                      .options = {{"Blur"_key, SurfaceType::blur},
                                                                  {"Dim"_key, SurfaceType::dim},
                                                                  {"Wallpaper"_key, SurfaceType::wallpaper}},
                                                      .activeTint = card.accent,
                                                      .itemWidth = wideItem});
}

Element intensityRow(const SurfaceControlsCard& card) {
  const ModeSettings settings(card.mode, card.prefs);
  const auto choose = [settings, &prefs = card.prefs](DimIntensity intensity) {
    settings.setDimIntensity(intensity);
    announceSurfaceChange(prefs);
  };
  return labelledRow("Intensity"_key, PellSegmentedPicker<DimIntensity>{
                                          .selection = {[settings] { return settings.dimIntensity(); }, choose},
                                          .options = {{"Subtle"_key, DimIntensity::subtle},
                                                      {"Balanced"_key, DimIntensity::balanced},
                                                      {"Strong"_key, DimIntensity::strong}},
                                          .activeTint = card.accent,
                                          .itemWidth = wideItem});
}

// The live gradient over the blur of clean desktop. Its choice announces nothing; the card hears of the stored value.
Element gradientControls(const SurfaceControlsCard& card) {
  const auto choose = [&prefs = card.prefs](bool isOn) {
    prefs.ambientGradientEnabled = isOn;
    reapplyOverlays();
  };
  const bool isOn = card.prefs.ambientGradientEnabled.get();
  const PellSegmentedPicker<bool> picker{
      .selection = {[&prefs = card.prefs] { return prefs.ambientGradientEnabled.get(); }, choose},
      .options = {{"Off"_key, false}, {"On"_key, true}},
      .activeTint = card.accent,
      .itemWidth = narrowItem};
  const Element note =
      text(localized("Uses additional GPU memory"_key), platform::Font{.size = 10}).foreground(tertiary);
  return verticalStack({.alignment = HorizontalAlignment::leading, .spacing = 5},
                       {labelledRow("Live Gradient"_key, picker), isOn ? note.transition(fade) : Element()})
      .animation(noteFade, isOn);
}

Element surfaceControls(const SurfaceControlsCard& card, SurfaceType surface,
                        const State<WallpaperPreview>& customWallpaper) {
  switch (surface) {
    case SurfaceType::blur: return card.mode == VeilMode::cleanDesktop ? gradientControls(card) : Element();
    case SurfaceType::dim: return intensityRow(card);
    case SurfaceType::wallpaper: return WallpaperChoice{card.mode, card.prefs, card.accent, customWallpaper};
  }
  return {};
}

// The controls of one surface give way to those of another. Without any, their place is gone, too.
Element exchangedControls(const Element& controls, SurfaceType surface) {
  return verticalStack({.alignment = HorizontalAlignment::leading, .spacing = 0},
                       {controls.padding({.top = spacing}).transition(fade).id(surface)})
      .animation(controlsFade, surface);
}

}  // namespace

Element SurfaceControlsCard::body(Context& context) const {
  context.observe(prefs);
  StoredChanges storedChanges;
  context.observe(storedChanges);
  const auto customWallpaper = context.state("customWallpaper", WallpaperPreview());
  const auto loadPreview = [customWallpaper, &prefs = prefs] { loadWallpaperPreview(prefs, customWallpaper); };
  const auto followBookmark = [customWallpaper, loadPreview, &prefs = prefs] {
    if (customWallpaper.get().bookmark != prefs.customWallpaperBookmarkData.get()) loadPreview();
  };
  const SurfaceType surface = ModeSettings(mode, prefs).surface();
  constexpr Shape outline = RoundedRectangle{10};
  return verticalStack(
             {.alignment = HorizontalAlignment::leading, .spacing = 0},
             {surfaceRow(*this), exchangedControls(surfaceControls(*this, surface, customWallpaper), surface)})
      .padding(10)
      .clip(outline)  // controls that leave may be higher than the card that they leave
      .background(fill(outline, primary.opacity(0.04)))
      .overlay(stroke(outline, primary.opacity(0.07), 1))
      .animation(growth, surface)
      .onAppear(loadPreview)
      .onChange(prefs.customWallpaperBookmarkData.get(), followBookmark);
}

}  // namespace hushpane
