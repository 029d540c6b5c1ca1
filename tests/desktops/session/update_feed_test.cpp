#include "desktops/session/update_feed.h"

#include <gtest/gtest.h>

#include "desktops/sim/sim_main_queue.h"
#include "desktops/sim/sim_user_defaults.h"

namespace hushpane::session::tests {
namespace {

using platform::UpdateAnswer;
using Kind = UpdateAnswer::Kind;

constexpr double hour = 3600, day = 24 * hour;

class UpdateFeedTest : public testing::Test {
 protected:
  sim::SimMainQueue queue;
  platform::Dictionary stored;
  platform::NotificationCenter center;
  sim::SimUserDefaults defaults{stored, [this] { center.post(platform::notification::userDefaultsDidChange); }};
  int checks = 0;
  std::function<void(UpdateAnswer)> pending;
  std::vector<std::pair<Kind, bool>> told;  // and whether the user had asked
  std::unique_ptr<UpdateFeed> feed;

  void start(std::optional<double> interval = day) {
    feed.reset();
    feed = std::make_unique<UpdateFeed>(queue, defaults, center, interval, [this](auto answer) {
      ++checks;
      pending = std::move(answer);
      return platform::Token([] {});
    });
    feed->start([this](const auto& answer, bool isUserInitiated) { told.emplace_back(answer.kind, isUserInitiated); });
  }
  void answer(UpdateAnswer found) { std::exchange(pending, nullptr)(std::move(found)); }
  int checksWithin(double seconds) {
    const int before = checks;
    queue.advance(seconds);
    return checks - before;
  }
};

const UpdateAnswer newer{.kind = Kind::newer, .version = "1.4", .link = "https://example.org"};

TEST_F(UpdateFeedTest, ChecksSomeMinutesAfterTheStartAndThenAtItsInterval) {
  start();
  EXPECT_EQ(checksWithin(60), 0);
  EXPECT_EQ(checksWithin(600), 1);
  EXPECT_EQ(checksWithin(3 * day), 0) << "one is under way";
  answer({.kind = Kind::unreachable});
  EXPECT_EQ(checksWithin(day - 1), 0);
  EXPECT_EQ(checksWithin(2), 1);
  answer({.kind = Kind::none});
  EXPECT_TRUE(told.empty()) << "nobody asked, and there is nothing to tell";
}

TEST_F(UpdateFeedTest, RemembersTheLastCheckAcrossStarts) {
  start();
  queue.advance(600);
  answer({});
  queue.advance(hour);
  start();
  EXPECT_EQ(checksWithin(22 * hour), 0);
  EXPECT_EQ(checksWithin(hour), 1);
  answer({});
  queue.advance(20 * day);
  answer({});
  // A clock that was set back does not put off checks for years.
  defaults.set(updateKey::lastCheck, platform::Date{queue.date().secondsSince1970 + 1000 * day});
  start();
  EXPECT_EQ(checksWithin(600), 1);
}

TEST_F(UpdateFeedTest, TellsOfAVersionOnceAndAnswersTheUserAlways) {
  start();
  queue.advance(600);
  answer(newer);
  EXPECT_EQ(told, (std::vector<std::pair<Kind, bool>>{{Kind::newer, false}}));
  start();
  queue.advance(day);
  answer(newer);
  EXPECT_EQ(told.size(), 1u);
  feed->checkForUpdates();
  feed->checkForUpdates();
  EXPECT_EQ(checks, 3) << "one at a time";
  answer(newer);
  EXPECT_EQ(told.size(), 3u);
  EXPECT_EQ(told.back(), std::pair(Kind::newer, true));
  queue.advance(day);
  feed->checkForUpdates();
  EXPECT_EQ(checks, 4) << "the user joins the one under way";
  answer({.kind = Kind::unreachable});
  EXPECT_EQ(told.back(), std::pair(Kind::unreachable, true));
  queue.advance(day);
  answer({.kind = Kind::newer, .version = "1.5"});
  EXPECT_EQ(told.back(), std::pair(Kind::newer, false));
}

TEST_F(UpdateFeedTest, RunsNoTimerWhileChecksAreOffOrThereIsNoFeed) {
  start(std::nullopt);
  EXPECT_EQ(queue.pendingCount(), 0u);
  feed->checkForUpdates();
  EXPECT_TRUE(told.empty()) << "inside the call";
  queue.drain();
  EXPECT_EQ(told, (std::vector<std::pair<Kind, bool>>{{Kind::notConfigured, true}}));
  EXPECT_TRUE(stored.empty());

  start();
  EXPECT_TRUE(feed->automaticallyChecksForUpdates());
  feed->setAutomaticallyChecksForUpdates(false);
  EXPECT_EQ(queue.pendingCount(), 0u);
  start();
  EXPECT_FALSE(feed->automaticallyChecksForUpdates());
  EXPECT_EQ(queue.pendingCount(), 0u);
  feed->checkForUpdates();
  answer(newer);
  EXPECT_EQ(queue.pendingCount(), 0u);
  EXPECT_EQ(told.back(), std::pair(Kind::newer, true));
  // Another program edits the settings.
  defaults.set(updateKey::automaticallyChecks, true);
  EXPECT_EQ(checksWithin(2 * day), 1);
  EXPECT_EQ(checks, 2);
}

}  // namespace
}  // namespace hushpane::session::tests
