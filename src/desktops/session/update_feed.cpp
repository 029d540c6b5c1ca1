#include "desktops/session/update_feed.h"

#include <algorithm>
#include <utility>

namespace hushpane::session {

namespace {

constexpr double secondsToFirstCheck = 300;

using Kind = platform::UpdateAnswer::Kind;

}  // namespace

UpdateFeed::UpdateFeed(platform::MainQueue& queue, platform::UserDefaults& defaults,
                       platform::NotificationCenter& center, std::optional<double> interval, Check check)
    : queue_(queue), defaults_(defaults), interval_(interval), check_(std::move(check)) {
  if (interval_)
    settings_ = center.addObserver(platform::notification::userDefaultsDidChange, [this] {
      if (automaticallyChecksForUpdates() != isScheduled_) schedule();
    });
}

void UpdateFeed::start(AnswerHandler handler) {
  handler_ = std::move(handler);
  start_ = queue_.now();
  schedule();
}

bool UpdateFeed::automaticallyChecksForUpdates() const {
  return defaults_.get<bool>(updateKey::automaticallyChecks).value_or(true);
}

void UpdateFeed::setAutomaticallyChecksForUpdates(bool checks) {
  defaults_.set(updateKey::automaticallyChecks, checks);
  schedule();
}

void UpdateFeed::checkForUpdates() {
  ++waitingUsers_;
  if (underWay_) return;
  if (interval_) return ask();
  queue_.async(lifetime_.weak([this] { answered({.kind = Kind::notConfigured}); }));
}

void UpdateFeed::schedule() {
  isScheduled_ = interval_ && handler_ && automaticallyChecksForUpdates();
  next_ = isScheduled_ ? queue_.after(secondsToNextCheck(), [this] { scheduledCheck(); }) : platform::WorkItem();
}

void UpdateFeed::scheduledCheck() {
  if (!underWay_) ask();
}

// A last check in the future was made with another clock, and says nothing.
double UpdateFeed::secondsToNextCheck() const {
  const double first = std::max(0.0, start_ + secondsToFirstCheck - queue_.now());
  const auto last = defaults_.get<platform::Date>(updateKey::lastCheck);
  if (!last) return first;
  const double passed = platform::secondsBetween(*last, queue_.date());
  return passed < 0 ? first : std::max(first, *interval_ - passed);
}

void UpdateFeed::ask() {
  underWay_ = check_(lifetime_.weak([this](const platform::UpdateAnswer& answer) { answered(answer); }));
}

void UpdateFeed::answered(const platform::UpdateAnswer& answer) {
  underWay_.reset();
  if (interval_) {
    defaults_.set(updateKey::lastCheck, queue_.date());
    schedule();
  }
  const unsigned users = std::exchange(waitingUsers_, 0);
  const bool isNews = answer.kind == Kind::newer && !isTold(answer);
  if (isNews) defaults_.set(updateKey::lastToldVersion, answer.version);
  const auto handler = handler_;
  if (!handler) return;
  for (unsigned user = 0; user < users; ++user) handler(answer, true);
  if (users == 0 && isNews) handler(answer, false);
}

bool UpdateFeed::isTold(const platform::UpdateAnswer& answer) const {
  return defaults_.get<std::string>(updateKey::lastToldVersion) == answer.version;
}

}  // namespace hushpane::session
