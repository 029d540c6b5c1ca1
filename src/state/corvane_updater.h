#pragma once

#include <functional>
#include <string>

#include "localization/language_manager.h"
#include "platform/lifetime.h"
#include "platform/platform.h"
#include "state/observable_object.h"

namespace hushpane {

// Looks for newer versions from its construction on, by itself where the user allows it, and whenever the user asks.
// What it finds is told by a notification of the desktop. Announces changes of automaticallyChecksForUpdates().
class CorvaneUpdater : public ObservableObject {
 public:
  // What a scheduled check finds comes beside the work, never in front of it.
  static constexpr bool supportsGentleScheduledUpdateReminders = true;

  static CorvaneUpdater& shared();
  CorvaneUpdater(platform::Platform& platform, LanguageManager& languages);

  // Answers a user who asked, where the desktop shows no notifications.
  std::function<void(std::string)> showMessage;

  bool automaticallyChecksForUpdates() const;
  void setAutomaticallyChecksForUpdates(bool checks);
  void checkForUpdates();

 private:
  void tell(const platform::UpdateAnswer& answer, bool isUserInitiated);
  platform::UserNotification notificationOf(const platform::UpdateAnswer& answer) const;

  platform::Platform& platform_;
  LanguageManager& languages_;
  platform::UpdateService& service_;
  platform::Lifetime lifetime_;
};

}  // namespace hushpane
