#pragma once

#include <functional>
#include <optional>
#include <string>

#include "desktops/shared/update_configuration.h"
#include "platform/lifetime.h"
#include "platform/main_queue.h"
#include "platform/notification_center.h"
#include "platform/update_service.h"
#include "platform/user_defaults.h"

namespace hushpane::session {

namespace updateKey {
inline constexpr std::string_view automaticallyChecks = "hushpane.automaticallyChecksForUpdates";
inline constexpr std::string_view lastCheck = "hushpane.lastUpdateCheck";
inline constexpr std::string_view lastToldVersion = "hushpane.lastToldVersion";
}  // namespace updateKey

// When the feed of updates is asked, and what of its answers is told. The first check by itself comes some minutes
// after the start, later ones whenever the interval has passed since the last check of any kind, also across starts.
// While there is no feed, or checks do not happen by themselves, no timer runs.
class UpdateFeed : public platform::UpdateService {
 public:
  // Asks the feed once, in the background. The answer is given on the main queue, unless the token was dropped.
  using Check = std::function<platform::Token(std::function<void(platform::UpdateAnswer)>)>;

  // The interval between checks in seconds; nothing when no feed is configured, and then `check` is never called.
  UpdateFeed(platform::MainQueue& queue, platform::UserDefaults& defaults, platform::NotificationCenter& center,
             std::optional<double> interval, Check check);

  void start(AnswerHandler handler) override;
  bool automaticallyChecksForUpdates() const override;
  void setAutomaticallyChecksForUpdates(bool checks) override;
  void checkForUpdates() override;

 private:
  void schedule();
  void scheduledCheck();
  double secondsToNextCheck() const;
  void ask();
  void answered(const platform::UpdateAnswer& answer);
  bool isTold(const platform::UpdateAnswer& answer) const;

  platform::MainQueue& queue_;
  platform::UserDefaults& defaults_;
  std::optional<double> interval_;
  Check check_;
  AnswerHandler handler_;
  double start_ = 0;          // seconds of the queue's clock
  bool isScheduled_ = false;  // and not yet due
  platform::WorkItem next_;
  platform::Token underWay_;
  unsigned waitingUsers_ = 0;  // who asked, and have no answer yet
  platform::Token settings_;
  platform::Lifetime lifetime_;
};

}  // namespace hushpane::session
