#include "state/review_policy.h"

#include "support/simulated_program.h"

namespace hushpane::tests {
namespace {

constexpr double day = 86400;

class ReviewPolicyTest : public SimulatedProgram {
 protected:
  void SetUp() override { prepareDesktop(); }

  platform::Date daysAgo(double days) { return {desktop->mainQueue().date().secondsSince1970 - days * day}; }
};

TEST_F(ReviewPolicyTest, AsksOnlyWhenAllConditionsHold) {
  struct Case {
    const char* name;
    int sessions;
    int switchesBefore;
    double firstUseDaysAgo;
    std::optional<double> lastPromptDaysAgo;
    bool asks;
  };
  const Case cases[] = {
      {"all hold", 3, 4, 3 + 1.0 / 1440, std::nullopt, true},
      {"one switch too few", 3, 3, 30, std::nullopt, false},
      {"one session too few", 2, 4, 30, std::nullopt, false},
      {"2 days and 23 hours", 3, 4, 3 - 1.0 / 24, std::nullopt, false},
      {"first use in the future", 3, 4, -10, std::nullopt, false},
      {"asked a moment less than a week ago", 3, 40, 30, 7 - 1 / day, false},
      {"asked a week and a second ago", 3, 40, 30, 7 + 1 / day, true},
      {"asked in the future", 3, 40, 30, -1, false},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.name);
    storage.standardDefaults.clear();
    store(storedKeys::reviewSessionCount, test.sessions);
    store(storedKeys::reviewSwitchCount, test.switchesBefore);
    store(storedKeys::firstUseDate, daysAgo(test.firstUseDaysAgo));
    if (test.lastPromptDaysAgo) store(storedKeys::lastReviewPromptDate, daysAgo(*test.lastPromptDaysAgo));
    ReviewPolicy policy(*desktop);
    EXPECT_EQ(policy.recordModeSwitch(), test.asks);
    EXPECT_EQ(stored(storedKeys::reviewSwitchCount), platform::Value(test.switchesBefore + 1));
    if (test.asks) {
      EXPECT_EQ(stored(storedKeys::lastReviewPromptDate), platform::Value(daysAgo(0)));
      EXPECT_FALSE(policy.recordModeSwitch());
    }
  }
}

TEST_F(ReviewPolicyTest, TheFirstSessionFixesTheDateOfFirstUse) {
  ReviewPolicy policy(*desktop);
  store(storedKeys::firstUseDate, "yesterday");  // no date: counts as absent
  policy.recordSession();
  const auto first = stored(storedKeys::firstUseDate);
  EXPECT_EQ(first, platform::Value(daysAgo(0)));
  desktop->advance(day);
  policy.recordSession();
  EXPECT_EQ(stored(storedKeys::firstUseDate), first);
  EXPECT_EQ(stored(storedKeys::reviewSessionCount), platform::Value(2));
}

TEST_F(ReviewPolicyTest, AFullCounterStays) {
  store(storedKeys::reviewSwitchCount, std::int64_t{INT64_MAX});
  ReviewPolicy(*desktop).recordModeSwitch();
  EXPECT_EQ(stored(storedKeys::reviewSwitchCount), platform::Value(std::int64_t{INT64_MAX}));
}

}  // namespace
}  // namespace hushpane::tests
