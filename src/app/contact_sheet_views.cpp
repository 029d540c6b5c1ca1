#include "app/contact_sheet_views.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <memory>
#include <utility>

#include "declarative/element.h"
#include "declarative/symbol.h"
#include "input/shortcut_registry.h"
#include "localization/localization_key.h"
#include "state/preferences_store.h"
#include "state/raw_text.h"
#include "state/state_controller.h"
#include "state/surface_settings.h"
#include "ui/controls/back_button.h"
#include "ui/controls/pell_segmented_picker.h"
#include "ui/controls/pell_switch_style.h"
#include "ui/controls/prominent_button.h"
#include "ui/controls/sub_option_toggle_style.h"
#include "ui/global_accent.h"
#include "ui/menu/menu_bar_hint_view.h"
#include "ui/menu/menu_root_view.h"
#include "ui/menu/mode_pod_view.h"
#include "ui/menu/surface_controls_card.h"
#include "ui/preferences/preferences_view.h"
#include "ui/welcome/welcome_view.h"

namespace hushpane {

namespace {

using declarative::Binding;
using declarative::Element;
using platform::Point;

using Views = std::vector<SheetView>;

constexpr double cardWidth = 336;  // points; what the panel leaves a card
constexpr double podWidth = 105;   // and a pod
constexpr double rowWidth = 240;

// A value of its own for one view.
template <class Type>
Binding<Type> constantly(Type value) {
  return {[value] { return value; }, [](Type) {}};
}

Views symbols(platform::Platform&) {
  using declarative::SymbolVariant;
  using platform::FontWeight;
  Views views;
  for (const std::string_view name : {"macwindow.on.rectangle", "rectangle.stack", "rectangle.on.rectangle", "circle",
                                      "plus", "minus", "gearshape", "chevron.left", "chevron.down", "checkmark"})
    for (const auto variant : {SymbolVariant::plain, SymbolVariant::filled})
      views.push_back({std::string(name) + (variant == SymbolVariant::filled ? ", filled" : ""), [=] {
                         std::vector<Element> sizes;
                         for (const double size : {10.0, 13.0, 18.0})
                           for (const auto weight : {FontWeight::ultraLight, FontWeight::medium, FontWeight::semibold})
                             sizes.push_back(declarative::symbol(
                                 {.name = name, .font = {.size = size, .weight = weight}, .variant = variant}));
                         return declarative::horizontalStack({.spacing = 6}, sizes);
                       }});
  return views;
}

// A picker over a state of its own, so that a click slides its highlight.
struct SlidingPicker {
  Element body(declarative::Context& context) const {
    const auto selection = context.state("selection", SurfaceType::blur);
    return PellSegmentedPicker<SurfaceType>{
        selection.binding(),
        {{"Blur"_key, SurfaceType::blur}, {"Dim"_key, SurfaceType::dim}, {"Wallpaper"_key, SurfaceType::wallpaper}},
        globalAccent,
        64};
  }
};

Views controls(platform::Platform&) {
  const auto row = [](const Element& content) { return content.frame({.width = rowWidth}); };
  const auto label = [] { return declarative::text(localized("Live Gradient"_key)); };
  Views views;
  for (const bool isOn : {true, false}) {
    const std::string state = isOn ? ", on" : ", off";
    views.push_back({"switch" + state, [=] {
                       return row(toggle(label(), constantly(isOn), PellSwitchStyle{globalAccent, 1}));
                     }});
    views.push_back({"sub-option" + state,
                     [=] { return row(toggle(label(), constantly(isOn), SubOptionToggleStyle{globalAccent})); }});
    views.push_back({"switch at double size" + state, [=] {
                       return row(toggle(label(), constantly(isOn), PellSwitchStyle{globalAccent, 2}));
                     }});
    views.push_back({"picker of a flag" + state, [=] {
                       return Element(PellSegmentedPicker<bool>{
                           constantly(isOn), {{"Off"_key, false}, {"On"_key, true}}, globalAccent, 36});
                     }});
  }
  for (int selected = 0; selected <= 3; ++selected)
    views.push_back(
        {selected < 3 ? "picker, option " + std::to_string(selected + 1) : "picker, no option", [=] {
           return Element(PellSegmentedPicker<int>{
               constantly(selected), {{"Subtle"_key, 0}, {"Balanced"_key, 1}, {"Strong"_key, 2}}, globalAccent, 64});
         }});
  views.push_back({.caption = "picker, sliding",
                   .make = [] { return Element(SlidingPicker{}); },
                   .click = Point{160, 12},
                   .seconds = 0.12});
  const auto back = [] { return Element(BackButton{[] {}}); };
  const auto prominent = [] {
    return Element(ProminentButton{localized("Get started"_key), [] {}, globalAccent, 110});
  };
  views.push_back({"back", back});
  views.push_back({"back, hovered", back, Point{11, 11}});
  views.push_back({.caption = "back, pressed", .make = back, .press = Point{11, 11}});
  views.push_back({"prominent", prominent});
  views.push_back({.caption = "prominent, pressed", .make = prominent, .press = Point{20, 14}});
  return views;
}

Views pods(platform::Platform&) {
  Views views;
  for (const bool isActive : {false, true})
    for (const bool isHovered : {false, true})
      for (const VeilMode mode : allCases) {
        auto caption = std::string(rawValue(mode)) + (isActive ? ", active" : "") + (isHovered ? ", hovered" : "");
        views.push_back({std::move(caption),
                         [=] {
                           return Element(ModePodView{mode, isActive, [] {}}).frame({.width = podWidth});
                         },
                         isHovered ? std::optional(Point{50, 25}) : std::nullopt});
      }
  return views;
}

struct CardState {
  const char* caption;
  VeilMode mode;
  const char* surface;
  const char* intensity = "balanced";
  bool hasGradient = false;
  const char* source = "default";
  const char* customPicture = nullptr;
  std::optional<Point> pointer = {};
};

constexpr const char* defaultPicture = "HushpaneDefaultWallpaper";
constexpr Point customSlot{250, 90};

constexpr CardState wallpaperOfCleanDesktop{"clean desktop, wallpaper", VeilMode::cleanDesktop, "wallpaper"};

constexpr std::array cardStates{
    CardState{"clean desktop, blur", VeilMode::cleanDesktop, "blur"},
    CardState{"clean desktop, blur with gradient", VeilMode::cleanDesktop, "blur", "balanced", true},
    CardState{"clean desktop, subtle dim", VeilMode::cleanDesktop, "dim", "subtle"},
    CardState{"focus, strong dim", VeilMode::focus, "dim", "strong"},
    CardState{"focus, blur", VeilMode::focus, "blur"},
    wallpaperOfCleanDesktop,
    CardState{"focus, picked wallpaper", VeilMode::focus, "wallpaper", "balanced", false, "custom", defaultPicture},
    CardState{"focus, picked wallpaper, hovered", VeilMode::focus, "wallpaper", "balanced", false, "custom",
              defaultPicture, customSlot},
    CardState{"focus, picked wallpaper gone", VeilMode::focus, "wallpaper", "balanced", false, "custom"},
};

void store(const CardState& state, platform::Platform& platform) {
  auto& prefs = PreferencesStore::shared();
  const bool isFocus = state.mode == VeilMode::focus;
  (isFocus ? prefs.focusSurfaceRaw : prefs.ambientSurfaceRaw) = std::string(state.surface);
  (isFocus ? prefs.focusDimIntensityRaw : prefs.ambientDimIntensityRaw) = std::string(state.intensity);
  (isFocus ? prefs.focusWallpaperSourceRaw : prefs.ambientWallpaperSourceRaw) = std::string(state.source);
  prefs.ambientGradientEnabled = state.hasGradient;
  const auto picture = state.customPicture ? platform.bundle().imageURL(state.customPicture) : std::nullopt;
  const auto bookmark = picture ? platform.bookmarks().create(*picture) : std::nullopt;
  prefs.customWallpaperBookmarkData = bookmark.value_or(platform::Data{});
}

Element makeCard(VeilMode mode) {
  return Element(SurfaceControlsCard{mode, PreferencesStore::shared(), globalAccent}).frame({.width = cardWidth});
}

Views card(platform::Platform& platform) {
  Views views;
  for (const CardState& state : cardStates)
    views.push_back({state.caption,
                     [&platform, &state] {
                       store(state, platform);
                       return makeCard(state.mode);
                     },
                     state.pointer});
  views.push_back({.caption = "from wallpaper to dim",
                   .make =
                       [&platform] {
                         store(wallpaperOfCleanDesktop, platform);
                         return makeCard(VeilMode::cleanDesktop);
                       },
                   .click = Point{230, 20},
                   .seconds = 0.1});
  return views;
}

struct MenuState {
  const char* caption;
  CardState card;
  bool isRevealHeld = false;
  std::optional<Point> pointer = {};
};

constexpr Point quitRow{180, 199};  // of the page in standard mode

constexpr std::array menuStates{
    MenuState{"standard", {"", VeilMode::standard, "blur"}},
    MenuState{"standard, quit hovered", {"", VeilMode::standard, "blur"}, false, quitRow},
    MenuState{"clean desktop", {"", VeilMode::cleanDesktop, "blur", "balanced", true}},
    MenuState{"focus, with a picture", {"", VeilMode::focus, "wallpaper"}},
    MenuState{"focus, reveal key held", {"", VeilMode::focus, "dim"}, true},
};

Views menu(platform::Platform& platform) {
  Views views;
  for (const MenuState& menu : menuStates)
    views.push_back({menu.caption,
                     [&platform, &menu] {
                       store(menu.card, platform);
                       auto& state = StateController::shared();
                       state.setMode(menu.card.mode);
                       const auto& reveal = state.revealMonitor();
                       if (const auto& change = menu.isRevealHeld ? reveal.onPressed : reveal.onReleased) change();
                       return Element(MenuRootView{state, PreferencesStore::shared(), [] {}});
                     },
                     menu.pointer});
  return views;
}

struct PreferencesState {
  const char* caption;
  bool appliesToAllDisplays = true;
  bool hasShortcuts = true;
  bool isShakeEnabled = false;
  RevealModifier revealModifier = RevealModifier::option;
  std::optional<Point> pointer = {};
};

constexpr std::array preferencesStates{
    PreferencesState{"as delivered"},
    PreferencesState{.caption = "displays one by one", .appliesToAllDisplays = false},
    PreferencesState{.caption = "without shortcuts, back hovered",
                     .hasShortcuts = false,
                     .isShakeEnabled = true,
                     .revealModifier = RevealModifier::command,
                     .pointer = Point{23, 23}},
};

void store(const PreferencesState& state) {
  auto& prefs = PreferencesStore::shared();
  prefs.applyToAllDisplays = state.appliesToAllDisplays;
  prefs.mouseShakeEnabled = state.isShakeEnabled;
  prefs.revealModifierRaw = std::string(rawValue(state.revealModifier));
  auto shortcuts = defaultShortcuts();
  for (auto& shortcut : shortcuts) shortcut.enabled = state.hasShortcuts;
  ShortcutRegistry::shared().setShortcuts(std::move(shortcuts));
}

Views preferences(platform::Platform&) {
  Views views;
  for (const PreferencesState& state : preferencesStates)
    views.push_back({state.caption,
                     [&state] {
                       store(state);
                       return Element(PreferencesView{PreferencesStore::shared()});
                     },
                     state.pointer});
  return views;
}

Views welcome(platform::Platform&) {
  const auto page = [] { return Element(WelcomeView{[] {}, globalAccent}); };
  return {{.caption = "at first", .make = page, .seconds = 0.5}, {.caption = "out of breath", .make = page}};
}

Views hint(platform::Platform&) {
  const auto hint = [] { return Element(MenuBarHintView()).frame({.width = 186, .height = 75}); };
  return {{.caption = "hint, at first", .make = hint, .seconds = 0.01},
          {.caption = "hint, breathed in", .make = hint, .seconds = 1.6},
          {.caption = "hint, risen", .make = hint, .seconds = 3}};
}

// Every page of the panel in the states that show its texts.
Views pages(platform::Platform& platform) {
  Views views;
  const auto add = [&](Views all, std::initializer_list<std::string_view> captions) {
    for (const auto caption : captions) views.push_back(*std::ranges::find(all, caption, &SheetView::caption));
  };
  add(menu(platform), {"standard", "clean desktop", "focus, with a picture", "focus, reveal key held"});
  add(preferences(platform), {"displays one by one"});
  add(welcome(platform), {"out of breath"});
  add(card(platform), {"focus, strong dim", "clean desktop, subtle dim"});
  add(hint(platform), {"hint, breathed in"});
  return views;
}

}  // namespace

std::optional<Views> sheetViews(platform::Platform& platform, std::string_view sheet) {
  using MakeViews = Views (*)(platform::Platform&);
  constexpr std::array<std::pair<std::string_view, MakeViews>, 9> sheets{{{"symbols", symbols},
                                                                          {"controls", controls},
                                                                          {"pods", pods},
                                                                          {"card", card},
                                                                          {"menu", menu},
                                                                          {"preferences", preferences},
                                                                          {"welcome", welcome},
                                                                          {"hint", hint},
                                                                          {"pages", pages}}};
  for (const auto& [name, views] : sheets)
    if (name == sheet) return views(platform);
  return std::nullopt;
}

}  // namespace hushpane
