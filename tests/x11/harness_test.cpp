#include "tests/x11/desktop.h"

namespace hushpane::x11_tests {
namespace {

using Harness = Desktop;

TEST_F(Harness, StandsAsTheTestsExpectIt) {
  EXPECT_TRUE(shows(leftSpot, background));
  EXPECT_TRUE(shows(rightSpot, background));
  for (const Terminal* terminal : {red_.get(), green_.get(), blue_.get()}) {
    EXPECT_TRUE(shows(terminal->spot(), terminal->color()));
  }
  EXPECT_EQ(x().activeWindow(), red_->window());
  shot("harness");
}

TEST_F(Harness, WatchSeesWhatHappensMillisecondByMillisecond) {
  const Rect overlap = red_->bounds().intersection(green_->bounds());
  EXPECT_TRUE(shows(center(overlap), red_->color()));
  ScreenWatch watch(display(), {center(overlap)});
  activate(green_->window());
  EXPECT_TRUE(shows(center(overlap), green_->color()));
  EXPECT_TRUE(waitUntil([&] { return x().activeWindow() == green_->window(); }));
  const auto looks = watch.stop();
  EXPECT_EQ(looks.front().activeWindow, red_->window());
  EXPECT_EQ(looks.front().pixels[0], red_->color());
  EXPECT_EQ(looks.back().activeWindow, green_->window());
  EXPECT_EQ(looks.back().pixels[0], green_->color());
}

TEST_F(Harness, CompositorShowsTheSamePicture) {
  const Picture before = settledPicture();
  startCompositor();
  EXPECT_TRUE(waitUntil([&] { return x().capture() == before; }));
  const auto window = openWindow({{700, 700, 100, 100}, {0xffffff}});
  EXPECT_TRUE(shows(window->spot(), window->color()));
}

TEST_F(Harness, InputReachesTheWindows) {
  const auto icons = openWindow({{0, 0, 1920, 1080}, {0x808040}, "_NET_WM_WINDOW_TYPE_DESKTOP"});
  EXPECT_TRUE(shows(leftSpot, icons->color()));
  EXPECT_TRUE(shows(red_->spot(), red_->color())) << "a desktop window lies beneath the others";
  click(leftSpot);
  EXPECT_TRUE(waitUntil([&] { return icons->clicks() == 1; }));
  click(green_->spot());
  EXPECT_TRUE(waitUntil([&] { return x().activeWindow() == green_->window(); }));
  keyboard("type", "here\n");
  EXPECT_TRUE(waitUntil([&] { return green_->typed() == "here\n"; })) << green_->typed();
}

TEST_F(Harness, MissingProgramIsNamed) {
  EXPECT_THROW(runTool({"a-program-that-nobody-has"}), std::runtime_error);
}

}  // namespace
}  // namespace hushpane::x11_tests
