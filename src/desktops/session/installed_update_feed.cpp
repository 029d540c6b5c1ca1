#include "desktops/session/installed_update_feed.h"

#include <optional>

#include "desktops/session/autostart_login_item.h"
#include "desktops/session/update_check.h"
#include "desktops/session/update_feed.h"

namespace hushpane::session {

std::unique_ptr<platform::UpdateService> makeInstalledUpdateFeed(platform::MainQueue& queue,
                                                                 platform::UserDefaults& defaults,
                                                                 platform::NotificationCenter& center,
                                                                 const std::filesystem::path& resources,
                                                                 const std::string& version) {
  const auto configuration = desktops::readUpdateConfiguration(resources / "update.conf");
  if (!configuration) return std::make_unique<UpdateFeed>(queue, defaults, center, std::nullopt, nullptr);
  return std::make_unique<UpdateFeed>(
      queue, defaults, center, configuration->secondsBetweenChecks,
      [check = UpdateCheck(updateCheckProgram(ownProgram()), *configuration, version, queue)](auto answer) {
        return check.run(std::move(answer));
      });
}

}  // namespace hushpane::session
