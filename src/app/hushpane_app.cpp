#include "app/hushpane_app.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/menu_bar_hint_window_controller.h"
#include "state/corvane_updater.h"
#include "ui/panel/panel_root.h"

namespace hushpane {

HushpaneApp::HushpaneApp(platform::Platform& platform)
    : appDelegate_(platform, AppRouter::shared()),
      menuBarItem_(platform),
      panel_(platform, [] { return PanelRoot(); }) {
  appDelegate_.showMenuBarHint = [] { MenuBarHintWindowController::shared().show(); };
  appDelegate_.applicationDidFinishLaunching();
  CorvaneUpdater::shared().showMessage = [this](std::string text) { panel_.showMessage(std::move(text)); };
  platform.statusItem().setClickHandler([this](std::optional<platform::Point> point) {
    menuBarItem_.hideToolTip();
    panel_.toggle(point);
  });
  platform.statusItem().setHoverHandler(
      [this](bool isOver) { isOver && !panel_.isOpen() ? menuBarItem_.showToolTip() : menuBarItem_.hideToolTip(); });
  auto& application = platform.application();
  application.setReopenHandler([this] { panel_.open(); });
  application.setOpenUrlsHandler([this](const std::vector<std::string>& urls) { appDelegate_.handleOpenURLs(urls); });
}

void HushpaneApp::launch(platform::Platform& platform) {
  platform.instance<HushpaneApp>();
}

}  // namespace hushpane
