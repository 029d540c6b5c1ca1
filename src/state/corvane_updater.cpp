#include "state/corvane_updater.h"

#include <memory>
#include <utility>

#include "localization/localization_key.h"
#include "state/version_text.h"

namespace hushpane {

CorvaneUpdater& CorvaneUpdater::shared() {
  return platform::Platform::current().instance<CorvaneUpdater>([](platform::Platform& platform) {
    return std::make_shared<CorvaneUpdater>(platform, LanguageManager::shared());
  });
}

CorvaneUpdater::CorvaneUpdater(platform::Platform& platform, LanguageManager& languages)
    : platform_(platform), languages_(languages), service_(platform.updateService()) {
  service_.start(lifetime_.weak(
      [this](const platform::UpdateAnswer& answer, bool isUserInitiated) { tell(answer, isUserInitiated); }));
}

bool CorvaneUpdater::automaticallyChecksForUpdates() const {
  return service_.automaticallyChecksForUpdates();
}

void CorvaneUpdater::setAutomaticallyChecksForUpdates(bool checks) {
  objectWillChange();
  service_.setAutomaticallyChecksForUpdates(checks);
}

void CorvaneUpdater::checkForUpdates() {
  service_.checkForUpdates();
}

void CorvaneUpdater::tell(const platform::UpdateAnswer& answer, bool isUserInitiated) {
  auto notification = notificationOf(answer);
  auto message = notification.link.empty() ? notification.body : notification.body + "\n" + notification.link;
  platform_.userNotifications().post(
      std::move(notification), lifetime_.weak([this, isUserInitiated, message = std::move(message)](bool isTaken) {
        if (const auto show = showMessage; show && isUserInitiated && !isTaken) show(message);
      }));
}

platform::UserNotification CorvaneUpdater::notificationOf(const platform::UpdateAnswer& answer) const {
  using Kind = platform::UpdateAnswer::Kind;
  const auto text = [this](LocalizationKey key) { return languages_.localizedString(key.text); };
  const auto textWith = [this](LocalizationKey key, const std::string& version) {
    return languages_.localizedString(key.text, {version});
  };
  switch (answer.kind) {
    case Kind::newer: {
      platform::UserNotification newer{text("Update available"_key),
                                       textWith("Hushpane %@ is available."_key, answer.version)};
      if (!answer.link.empty()) {
        newer.link = answer.link;
        newer.linkTitle = text("Show update"_key);
      }
      return newer;
    }
    case Kind::none:
      return {text("No update available"_key),
              textWith("Hushpane %@ is the newest version."_key, versionText(platform_.bundle()))};
    case Kind::unreachable:
      return {text("Cannot check for updates"_key),
              text("The update server gave no valid answer. Try again later."_key)};
    case Kind::notConfigured: break;
  }
  return {text("Cannot check for updates"_key), text("No update server is set up for this copy of Hushpane."_key)};
}

}  // namespace hushpane
