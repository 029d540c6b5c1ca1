#include "state/review_policy.h"

#include <cmath>
#include <cstdint>
#include <string_view>

#include "state/stored_keys.h"

namespace hushpane {

namespace {

constexpr std::int64_t minimumSwitches = 5;
constexpr std::int64_t minimumSessions = 3;
constexpr double minimumDaysSinceFirstUse = 3;
constexpr double secondsPerDay = 86400;
constexpr double minimumPromptInterval = 604800;  // seconds

std::int64_t count(const platform::UserDefaults& defaults, std::string_view key) {
  return defaults.get<std::int64_t>(key).value_or(0);
}

// Counts never run over: a stored largest number stays.
std::int64_t countOneMore(platform::UserDefaults& defaults, std::string_view key) {
  const std::int64_t before = count(defaults, key);
  const std::int64_t after = before == INT64_MAX ? before : before + 1;
  defaults.set(key, after);
  return after;
}

}  // namespace

ReviewPolicy::ReviewPolicy(platform::Platform& platform)
    : defaults_(platform.userDefaults()), clock_(platform.mainQueue()) {}

void ReviewPolicy::recordSession() {
  countOneMore(defaults_, storedKeys::reviewSessionCount);
  if (!defaults_.get<platform::Date>(storedKeys::firstUseDate)) defaults_.set(storedKeys::firstUseDate, clock_.date());
}

bool ReviewPolicy::recordModeSwitch() {
  const std::int64_t switches = countOneMore(defaults_, storedKeys::reviewSwitchCount);
  const std::int64_t sessions = count(defaults_, storedKeys::reviewSessionCount);
  const platform::Date now = clock_.date();
  const platform::Date firstUse = defaults_.get<platform::Date>(storedKeys::firstUseDate).value_or(now);
  const double days = std::trunc(secondsBetween(firstUse, now) / secondsPerDay);
  if (switches < minimumSwitches || sessions < minimumSessions || days < minimumDaysSinceFirstUse) return false;

  const auto lastPrompt = defaults_.get<platform::Date>(storedKeys::lastReviewPromptDate);
  if (lastPrompt && secondsBetween(*lastPrompt, now) < minimumPromptInterval) return false;
  defaults_.set(storedKeys::lastReviewPromptDate, now);
  return true;
}

}  // namespace hushpane
