#include "tests/x11/both_ways.h"
#include "tests/x11/server_pixmaps.h"

namespace hushpane::x11_tests {
namespace {

using Lifecycle = BothWays;
HUSHPANE_RUN_BOTH_WAYS(Lifecycle);

TEST_P(Lifecycle, CoverFadesInWithoutAFlash) {
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

TEST_P(Lifecycle, StandardModeAndTheEndLeaveNothingOnTheServer) {
  startBus();
  for (const char* surface : {"dim", "blur", "wallpaper"}) {
    SCOPED_TRACE(surface);
    chooseMode("focus", surface);
    startHushpane();
    const auto isCovered = [this] { return !isNear(x().pixel(leftSpot), background, 10); };
    EXPECT_TRUE(waitUntil(isCovered));
    runHushpane({"hushpane://mode/standard"});
    EXPECT_TRUE(looksUntouched());
    const auto pixmaps = [this] { return pixmapsOf(x(), hushpanePid()); };
    EXPECT_TRUE(waitUntil([&] { return pixmaps() == 0; })) << pixmaps() << " pixmaps";
    runHushpane({"hushpane://mode/focus"});
    EXPECT_TRUE(waitUntil(isCovered));
    EXPECT_EQ(stopHushpane(), 0);
    EXPECT_TRUE(looksUntouched());
    EXPECT_EQ(hushpane().output() + hushpane().errors(), "");
  }
}

TEST_P(Lifecycle, EndsQuietlyWithTheServer) {
  chooseMode("focus");
  startHushpane();
  ASSERT_TRUE(shows(leftSpot, dimmed(background, balanced)));
  endServer();
  const auto status = hushpane().wait();
  ASSERT_TRUE(status.has_value()) << "still running";
  EXPECT_LE(*status, 1);
  EXPECT_EQ(hushpane().output() + hushpane().errors(), "");
}

TEST_F(Desktop, WhatPreventsTheStartIsNamedInOneLine) {
  const auto expectOneLine = [this](const std::vector<std::string>& arguments, int status, const std::string& naming) {
    SCOPED_TRACE(naming);
    const auto process = runHushpane(arguments);
    EXPECT_EQ(process->wait(0ms), status);
    EXPECT_EQ(process->output(), "");
    const std::string line = process->errors();
    EXPECT_EQ(line.find('\n') + 1, line.size()) << line;
    EXPECT_NE(line.find(naming), std::string::npos) << line;
  };
  expectOneLine({"--no-such-option"}, 2, "--no-such-option");
  expectOneLine({"no-url"}, 2, "no-url");
  environment()["DISPLAY"] = ":64321";
  expectOneLine({}, 1, ":64321");
  environment().erase("DISPLAY");
  expectOneLine({}, 1, "display");
  environment()["WAYLAND_DISPLAY"] = "wayland-0";
  environment()["XDG_SESSION_TYPE"] = "wayland";
  expectOneLine({}, 1, "X11");
}

}  // namespace
}  // namespace hushpane::x11_tests
