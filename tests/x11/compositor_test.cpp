#include <csignal>
#include <iostream>

#include "tests/x11/desktop.h"

namespace hushpane::x11_tests {
namespace {

// A compositor that comes and goes beneath a standing cover of the desktop.
class CompositorChange : public Desktop {
 protected:
  testing::AssertionResult isRight() const {
    return showsDimExcept({red_->frameBounds(), green_->frameBounds(), blue_->frameBounds()});
  }

  // Counts what people would have noticed while the change went on.
  template <class Change>
  void watchThrough(const std::string& what, Change change) {
    ScreenWatch watch(display(), {leftSpot, red_->spot()});
    change();
    EXPECT_TRUE(isRight());
    activate(green_->window());  // what must be drawn anew
    activate(red_->window());
    EXPECT_TRUE(isRight());
    EXPECT_TRUE(keeps(leftSpot, dimmed(background, balanced), 300ms));
    int black = 0, bright = 0, covered = 0, longest = 0, run = 0;
    for (const auto& look : watch.stop()) {
      const bool isRight = isNear(look.pixels[0], dimmed(background, balanced));
      black += look.pixels[0].brightness() < dimmed(background, balanced).brightness() / 2;
      bright += look.pixels[0].brightness() > dimmed(background, balanced).brightness() + 12;
      covered += !isNear(look.pixels[1], red_->color());
      longest = std::max(longest, run = isRight ? 0 : run + 1);
    }
    std::cout << what << ": " << black << " looks black, " << bright << " bright, " << covered
              << " with the active window wrong, the longest run " << longest << " looks\n";
    RecordProperty(what, std::to_string(black) + " black, " + std::to_string(bright) + " bright");
    EXPECT_LE(longest, 100) << "a thousand looks are a second";
  }
};

TEST_F(CompositorChange, CoverStaysAsItIs) {
  chooseMode("cleanDesktop");
  startHushpane();
  EXPECT_TRUE(isRight());
  watchThrough("start", [this] { startCompositor(); });
  watchThrough("kill", [this] { killCompositor(SIGKILL); });
  watchThrough("start again", [this] { startCompositor(); });
  watchThrough("end", [this] { killCompositor(SIGTERM); });
}

}  // namespace
}  // namespace hushpane::x11_tests
