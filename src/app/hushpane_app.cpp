#include "app/hushpane_app.h"

#include <string>
#include <vector>

namespace hushpane {

HushpaneApp::HushpaneApp(platform::Platform& platform) : appDelegate_(platform, AppRouter::shared()) {
  appDelegate_.applicationDidFinishLaunching();
  platform.application().setOpenUrlsHandler(
      [this](const std::vector<std::string>& urls) { appDelegate_.handleOpenURLs(urls); });
}

void HushpaneApp::launch(platform::Platform& platform) {
  platform.instance<HushpaneApp>();
}

}  // namespace hushpane
