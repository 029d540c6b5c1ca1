#include "tests/x11/both_ways.h"

namespace hushpane::x11_tests {
namespace {

constexpr auto debounce = 280ms, fadeOut = 220ms, fadeIn = 700ms;
// What a busy machine may add to a time.
constexpr auto slack = 2000ms;
// How much longer than the debounce is long enough to see that nothing happens.
constexpr auto doubt = 250ms;

class Reveal : public BothWays {
 protected:
  Reveal() {
    chooseMode("cleanDesktop");
    startHushpane();
    EXPECT_TRUE(isCovered());
  }
  ~Reveal() override {
    for (const char* key : {"alt", "super"}) keyboard("keyup", key);
  }

  testing::AssertionResult isCovered() const { return shows(leftSpot, dimmed(background, balanced)); }
  testing::AssertionResult staysCovered() const {
    return keeps(leftSpot, dimmed(background, balanced), debounce + doubt);
  }
};
HUSHPANE_RUN_BOTH_WAYS(Reveal);

TEST_P(Reveal, HoldingTheKeyAloneLiftsTheCoverAfterTheDebounce) {
  ScreenWatch watch(display(), {leftSpot});
  const auto pressed = Clock::now();
  keyboard("keydown", "alt");
  EXPECT_TRUE(looksUntouched());
  EXPECT_TRUE(keeps(leftSpot, background, 500ms));
  const auto released = Clock::now();
  keyboard("keyup", "alt");
  EXPECT_TRUE(isCovered());

  const auto looks = watch.stop();
  const auto first = [&](Clock::time_point from, auto matches) {
    const auto look = std::find_if(looks.begin(), looks.end(),
                                   [&](const auto& one) { return one.time >= from && matches(one.pixels[0]); });
    return look == looks.end() ? Clock::time_point::max() : look->time;
  };
  const auto isCover = [](Pixel pixel) { return isNear(pixel, dimmed(background, balanced)); };
  const auto isClear = [](Pixel pixel) { return isNear(pixel, background); };
  const auto lifting = first(pressed, [&](Pixel pixel) { return !isCover(pixel); });
  const auto lifted = first(lifting, isClear);
  const auto covering = first(released, [&](Pixel pixel) { return !isClear(pixel); });
  const auto covered = first(covering, isCover);
  EXPECT_GE(lifting - pressed, debounce);
  EXPECT_LE(lifting - pressed, debounce + slack);
  EXPECT_GE(lifted - lifting, fadeOut / 2);  // the last steps of an ease-out are too small to see
  EXPECT_LE(lifted - lifting, fadeOut + slack);
  EXPECT_LE(covering - released, slack);
  EXPECT_GE(covered - covering, fadeIn / 2);
  EXPECT_LE(covered - covering, fadeIn + slack);
}

TEST_P(Reveal, FollowsTheChosenModifier) {
  stopHushpane();
  chooseMode("focus", "dim", {{"hushpane.revealModifier", xml("command")}});
  startHushpane();
  ASSERT_TRUE(isCovered());
  keyboard("keydown", "alt");
  EXPECT_TRUE(staysCovered());
  keyboard("keydown", "super");
  EXPECT_TRUE(staysCovered()) << "not alone";
  keyboard("keyup", "alt");
  EXPECT_TRUE(looksUntouched()) << "alone now";
  EXPECT_TRUE(entersMode("focus")) << "the widget never hears of it";
  keyboard("keyup", "super");
  EXPECT_TRUE(showsDimExcept({red_->frameBounds()}));
}

// From there: no jump of brightness in either direction beyond what a few frames of the fade move.
TEST_P(Reveal, InterruptedFadeGoesOnFromWhereItIs) {
  keyboard("keydown", "alt");
  ASSERT_TRUE(shows(leftSpot, background));
  ScreenWatch watch(display(), {leftSpot});
  keyboard("keyup", "alt");
  std::this_thread::sleep_for(120ms);
  keyboard("keydown", "alt");
  ASSERT_TRUE(shows(leftSpot, background));
  const auto looks = watch.stop();
  int darkest = background.brightness(), largestStep = 0;
  for (std::size_t index = 1; index < looks.size(); ++index) {
    const int now = looks[index].pixels[0].brightness();
    darkest = std::min(darkest, now);
    largestStep = std::max(largestStep, std::abs(now - looks[index - 1].pixels[0].brightness()));
  }
  const int depth = background.brightness() - dimmed(background, balanced).brightness();
  EXPECT_LT(darkest, background.brightness() - depth / 10);
  EXPECT_LT(largestStep, depth / 2);
}

}  // namespace
}  // namespace hushpane::x11_tests
