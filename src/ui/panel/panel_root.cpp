#include "ui/panel/panel_root.h"

#include "state/app_router.h"
#include "state/preferences_store.h"
#include "state/state_controller.h"
#include "ui/global_accent.h"
#include "ui/localized_root.h"
#include "ui/menu/menu_root_view.h"
#include "ui/panel/menu_appear_animation.h"
#include "ui/preferences/preferences_view.h"
#include "ui/welcome/welcome_view.h"

namespace hushpane {

using namespace declarative;

namespace {

constexpr Animation settingsChange = spring(0.48, 0.9), welcomeChange = easeInOut(0.38);
constexpr double reviewDelay = 0.5;  // seconds for which a review may still be asked for after the panel closed

// Points towards the trailing edge from which a page comes, or to which it goes.
constexpr TransitionEffect fadedAt(double x) {
  return {.opacity = 0, .offset = {x, 0}};
}
constexpr Transition ofWelcome{.insertion = fadedAt(0), .removal = fadedAt(-18)};
constexpr TransitionEffect ofPreferences = fadedAt(28), ofMenu = fadedAt(-28);

Element welcomePage() {
  const WelcomeView page{.onContinue = [] { AppRouter::shared().continueFromWelcome(); }, .voltGreen = globalAccent};
  return Element(page).scrolling().transition(ofWelcome);
}

Element preferencesPage() {
  return Element(PreferencesView{PreferencesStore::shared()}).transition(ofPreferences);
}

Element menuPage() {
  const MenuRootView page{.state = StateController::shared(),
                          .prefs = PreferencesStore::shared(),
                          .onOpenSettings = [] { AppRouter::shared().openSettings(); }};
  return Element(page).scrolling().transition(ofMenu);
}

// The panel always opens on the menu, or on the welcome page.
void panelClosed() {
  AppRouter::shared().setShowingSettings(false);
  StateController::shared().clearReviewRequestAfter(reviewDelay);
}

// Pages scroll where the display is too low for them.
struct PanelPages {
  Element body(Context& context) const {
    auto& router = AppRouter::shared();
    context.observe(router);
    const bool isWelcome = router.showingWelcome();
    const bool isSettings = !isWelcome && router.showingSettings();
    const bool isMenu = !isWelcome && !isSettings;
    // Each page has a place of its own, so that one goes while the other comes.
    return overlaidStack(alignment::center,
                         {isWelcome ? welcomePage() : Element(), isSettings ? preferencesPage() : Element(),
                          isMenu ? menuPage() : Element()})
        .onDisappear(panelClosed)
        .animation(settingsChange, router.showingSettings())
        .animation(welcomeChange, router.showingWelcome());
  }
};

}  // namespace

Element PanelRoot::body(Context&) const {
  return LocalizedRoot{[] { return Element(MenuAppearAnimation{PanelPages{}}); }};
}

}  // namespace hushpane
