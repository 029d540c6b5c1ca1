#include "tests/x11/both_ways.h"

namespace hushpane::x11_tests {
namespace {

class Start : public BothWays {};
HUSHPANE_RUN_BOTH_WAYS(Start);

TEST_P(Start, CoverFadesInWithoutAFlash) {
  for (const char* mode : {"cleanDesktop", "focus"}) {
    SCOPED_TRACE(mode);
    chooseMode(mode);
    ScreenWatch watch(display(), {leftSpot, red_->spot()});
    startHushpane();
    EXPECT_TRUE(shows(leftSpot, dimmed(background, balanced)));
    int tooDark = 0, backwards = 0, windowWrong = 0;
    Pixel last = background;
    for (const auto& look : watch.stop()) {
      const Pixel seen = look.pixels[0];
      tooDark += seen.brightness() < dimmed(background, balanced).brightness() - 6;
      backwards += seen.brightness() > last.brightness() + 6;
      windowWrong += !isNear(look.pixels[1], red_->color());
      last = seen;
    }
    EXPECT_EQ(tooDark, 0) << "looks";
    EXPECT_EQ(backwards, 0) << "looks";
    EXPECT_EQ(windowWrong, 0) << "looks";
    stopHushpane();
    EXPECT_TRUE(looksUntouched());
  }
}

}  // namespace
}  // namespace hushpane::x11_tests
