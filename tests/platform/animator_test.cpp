#include "platform/animator.h"

#include <functional>
#include <limits>
#include <memory>
#include <utility>
#include <vector>

#include "platform/manual_desktop.h"

namespace hushpane::platform {
namespace {

constexpr Animation oneSecond{1, TimingFunction::linear};

class AnimatorTest : public ManualDesktop {
 protected:
  using Step = std::function<void(double)>;

  Token animate(Step step, std::function<void()> completion, double duration = 1) {
    return animator->animate({duration, TimingFunction::linear}, std::move(step), std::move(completion));
  }
};

const auto nothing = [](auto...) {};

TEST_F(AnimatorTest, StepsFollowTheClockAndEndWithExactlyOneAndTheCompletion) {
  std::vector<double> steps;
  int completions = 0;
  const auto token = animate([&](double part) { steps.push_back(part); },
                             [&] {
                               ++completions;
                               EXPECT_EQ(steps.back(), 1);
                             });
  EXPECT_TRUE(steps.empty()) << "the first step comes with the next frame";
  frameAfter(0.25);
  frameAfter(0.5);
  EXPECT_EQ(steps, (std::vector{0.25, 0.75}));
  EXPECT_EQ(completions, 0);
  frameAfter(3);
  EXPECT_EQ(steps.back(), 1);
  EXPECT_EQ(completions, 1);
  EXPECT_FALSE(isAnimating());
}

TEST_F(AnimatorTest, FramesAreAskedForUntilTheLastTokenIsDroppedAndNothingFollows) {
  int calls = 0;
  EXPECT_FALSE(isAnimating());
  const auto first = animate(nothing, nothing);
  auto second = animate([&](double) { ++calls; }, [&] { ++calls; }, 2);
  frameAfter(1);
  EXPECT_TRUE(isAnimating()) << "the second goes on";
  EXPECT_EQ(calls, 1);
  second.reset();
  EXPECT_FALSE(isAnimating());
  frameAfter(2);
  EXPECT_EQ(calls, 1);
}

TEST_F(AnimatorTest, AStepMayDropItsOwnTokenAndAnother) {
  int late = 0;
  Token other;
  Token own = animate(
      [&](double) {
        own.reset();
        other.reset();
      },
      [&] { ++late; });
  other = animate([&](double) { ++late; }, [&] { ++late; });
  frameAfter(1);
  frameAfter(1);
  EXPECT_EQ(late, 0);
  EXPECT_FALSE(isAnimating());
}

TEST_F(AnimatorTest, ACompletionMayStartTheNextAnimation) {
  int steps = 0;
  Token next;
  const auto first = animate(nothing, [&] { next = animate([&](double) { ++steps; }, nothing); });
  frameAfter(1);
  EXPECT_EQ(steps, 0) << "not in the frame that it was started in";
  EXPECT_TRUE(isAnimating());
  frameAfter(1);
  EXPECT_EQ(steps, 1);
}

TEST_F(AnimatorTest, ACompletionMayEndTheAnimator) {
  int late = 0;
  const auto ends = animate(nothing, [&] { animator.reset(); });
  const auto after = animate([&](double) { ++late; }, [&] { ++late; });
  frameAfter(1);
  EXPECT_EQ(late, 0);
  EXPECT_FALSE(isAnimating());
}

TEST_F(AnimatorTest, ADurationOfNothingEndsWithTheNextFrame) {
  for (const double duration : {0.0, -1.0}) {
    int completions = 0;
    const auto token = animate(
        nothing, [&] { ++completions; }, duration);
    EXPECT_EQ(completions, 0);
    frameAfter(0);
    EXPECT_EQ(completions, 1);
  }
}

TEST_F(AnimatorTest, AValueMayBeDestroyedOrAnimatedAgainByItsOwnCompletion) {
  auto value = std::make_unique<Animated<double>>(0.0);
  auto* watched = value.get();
  bool again = false;
  watched->animate(*animator, 1, oneSecond, nothing, [&] {
    EXPECT_FALSE(watched->isRunning());
    again = true;
    watched->animate(*animator, 0, oneSecond, nothing, [&] { value.reset(); });
  });
  frameAfter(1);
  ASSERT_TRUE(again);
  frameAfter(1);
  EXPECT_FALSE(value);
  EXPECT_FALSE(isAnimating());
}

TEST_F(AnimatorTest, AValueMayBeSetByItsOwnStep) {
  Animated<double> value(0);
  value.animate(
      *animator, 1, oneSecond, [&] { value.set(0.9); }, [] { ADD_FAILURE() << "it was interrupted"; });
  frameAfter(0.5);
  frameAfter(2);
  EXPECT_EQ(value.presentation(), 0.9);
}

TEST(TimingFunctionTest, CurvesRiseFromNothingToAllAndStayThere) {
  for (const auto timing :
       {TimingFunction::linear, TimingFunction::easeIn, TimingFunction::easeOut, TimingFunction::easeInEaseOut}) {
    EXPECT_EQ(evaluate(timing, -1), 0);
    EXPECT_EQ(evaluate(timing, std::numeric_limits<double>::quiet_NaN()), 0);
    EXPECT_EQ(evaluate(timing, 2), 1);
    double previous = 0;
    for (int step = 1; step < 100; ++step) {
      const double value = evaluate(timing, step / 100.0);
      EXPECT_GT(value, previous);
      previous = value;
    }
    EXPECT_LT(previous, 1);
  }
  EXPECT_GT(evaluate(TimingFunction::easeOut, 0.25), 0.25) << "fast at first";
  EXPECT_LT(evaluate(TimingFunction::easeIn, 0.25), evaluate(TimingFunction::easeInEaseOut, 0.25))
      << "slowest at first";
  EXPECT_LT(evaluate(TimingFunction::easeInEaseOut, 0.25), 0.25) << "slow at first";
  EXPECT_NEAR(evaluate(TimingFunction::easeInEaseOut, 0.5), 0.5, 1e-6) << "the same both ways";
}

}  // namespace
}  // namespace hushpane::platform
