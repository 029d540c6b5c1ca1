#include "overlay/fluid_gradient_view.h"

#include <memory>

#include "support/simulated_program.h"

namespace hushpane::tests {
namespace {

constexpr RenderedState clean{true, false, VeilMode::cleanDesktop};
constexpr RenderedState focus{false, true, VeilMode::focus};
constexpr RenderedState standard{};
constexpr double fade = 0.72;  // seconds, a frame more than a surface fade takes

// Notes what it is asked for.
class NotingDevice : public platform::GpuDevice {
 public:
  void draw(const platform::FluidUniforms& uniforms, int width, int height, platform::Image& frame) override {
    last = uniforms;
    size = {double(width), double(height)};
    ++frames;
    frame.width = frame.height = 1;
    frame.pixels.assign(1, 0x80402010);
  }
  platform::FluidUniforms last;
  platform::Size size;
  int frames = 0;
};

class FluidGradientViewTest : public SimulatedProgram {
 protected:
  void SetUp() override {
    prepareDesktop();
    desktop->setGpuDevice(&device);
    window = desktop->windows().makeWindow(leftScreen.frame, {});
    gradient = std::make_unique<FluidGradientView>(window->contentView().addSubview(), *window, *desktop);
  }
  void TearDown() override {
    gradient.reset();
    window.reset();
  }
  void run() {
    gradient->view().setHidden(false);
    window->orderFront();
    gradient->setPaused(false);
  }
  int framesIn(double seconds) {
    const int before = device.frames;
    desktop->advance(seconds);
    return device.frames - before;
  }

  NotingDevice device;
  std::unique_ptr<platform::Window> window;
  std::unique_ptr<FluidGradientView> gradient;
};

TEST_F(FluidGradientViewTest, DrawsThirtyFramesASecondWhileItRunsOnScreenAndNoneOtherwise) {
  EXPECT_TRUE(gradient->isPaused());
  window->orderFront();
  EXPECT_EQ(framesIn(1), 0) << "paused";
  run();
  EXPECT_NEAR(framesIn(10), 300, 2);
  gradient->setPaused(false);
  EXPECT_NEAR(framesIn(1), 30, 1) << "no second timer";
  gradient->view().setHidden(true);
  EXPECT_EQ(framesIn(1), 0);
  gradient->view().setHidden(false);
  window->orderOut();
  EXPECT_EQ(framesIn(1), 0);
  window->orderFront();
  EXPECT_NEAR(framesIn(1), 30, 2);
  gradient->setPaused(true);
  EXPECT_EQ(framesIn(1), 0);
}

TEST_F(FluidGradientViewTest, ItsClockRunsFromItsCreationPausesIncludedAndAnotherHueHoldsFromTheNextFrame) {
  desktop->advance(100);
  run();
  desktop->advance(1.0 / 30);
  EXPECT_NEAR(device.last.time, 100, 0.1);
  gradient->setAccentHue(0.9f);
  gradient->setPaused(true);
  desktop->advance(50);
  gradient->setPaused(false);
  desktop->drain();
  EXPECT_NEAR(device.last.time, 150, 0.2);
  EXPECT_EQ(device.last.hue, 0.9f);
}

TEST_F(FluidGradientViewTest, TheDrawableHasTheSizeOfTheWindowInPixelsWithinACap) {
  desktop->screens().set({{{0, 0, 2560, 1440}, 1, "Large", 2}, {{3000, 0, 1000, 500}, 2, "Small", 1}});
  desktop->drain();
  const std::pair<platform::Rect, platform::Size> cases[] = {{{0, 0, 2560, 1440}, {1920, 1200}},
                                                             {{3000, 0, 1000, 500}, {1000, 500}},
                                                             {{100, 100, 300, 0.2}, {600, 1}},
                                                             {{9000, 0, 10, 10}, {10, 10}}};
  run();
  for (const auto& [frame, size] : cases) {
    window->setFrame(frame);
    desktop->advance(0.1);
    EXPECT_EQ(device.size, size) << frame.width;
  }
  window->setFrame({0, 0, 0, 100});
  EXPECT_EQ(framesIn(1), 0) << "nothing to draw on";
}

TEST_F(FluidGradientViewTest, WithoutADeviceNothingIsDrawnAndTheRestGoesOn) {
  desktop->setGpuDevice(nullptr);
  run();
  desktop->advance(1);
  EXPECT_EQ(gradient->view().drawable(), nullptr);
  store(storedKeys::ambientGradientEnabled, true);
  launch();
  state().setMode(VeilMode::cleanDesktop);
  desktop->advance(1);
  EXPECT_EQ(overlay(leftScreen).contentView().subviews().at(0)->presentationAlpha(), 1);
}

class GradientSurfaceTest : public SimulatedProgram {
 protected:
  void SetUp() override {
    store(storedKeys::ambientGradientEnabled, true);
    launch();
  }
  OverlayContentView& content() { return overlays().overlayWindows().at(7)->contentView(); }
  platform::View& view() { return *overlay(leftScreen).contentView().subviews().at(3); }
  void settle() { desktop->advance(fade); }
};

TEST_F(GradientSurfaceTest, ShowsOverTheBlurOfCleanDesktopOnly) {
  state().setMode(VeilMode::cleanDesktop);
  settle();
  EXPECT_EQ(view().presentationAlpha(), 1);
  EXPECT_FALSE(content().gradientView().isPaused());
  EXPECT_NEAR(content().gradientView().accentHue(), 0.68f, 1e-6) << "no desktop picture";
  ASSERT_NE(view().drawable(), nullptr);
  const auto frame = view().drawableFrame();
  desktop->advance(1);
  EXPECT_NEAR(static_cast<double>(view().drawableFrame() - frame), 30, 1);

  state().setMode(VeilMode::focus);
  desktop->advance(0.6);
  EXPECT_FALSE(content().gradientView().isPaused()) << "still fading";
  EXPECT_FALSE(view().isHidden());
  desktop->advance(0.2);
  EXPECT_TRUE(content().gradientView().isPaused());
  EXPECT_TRUE(view().isHidden());
}

TEST_F(GradientSurfaceTest, OtherSurfacesAndNoCoverStopIt) {
  auto& surface = PreferencesStore::shared().ambientSurfaceRaw;
  const auto show = [&](const char* text) {
    surface = text;
    content().apply(clean, true);
    settle();
  };
  for (const char* other : {"dim", "wallpaper"}) {
    show("blur");
    show(other);
    EXPECT_TRUE(content().gradientView().isPaused()) << other;
    EXPECT_TRUE(view().isHidden()) << other;
  }
  show("blur");
  content().apply(standard, true);
  EXPECT_TRUE(content().gradientView().isPaused()) << "at once";
  settle();
  EXPECT_TRUE(view().isHidden());
}

TEST_F(GradientSurfaceTest, ComingBackBeforeThePauseKeepsItRunning) {
  state().setMode(VeilMode::cleanDesktop);
  settle();
  content().apply(focus, true);
  desktop->advance(0.3);
  content().apply(clean, true);
  EXPECT_EQ(view().presentationAlpha(), 0) << "comes in from nothing";
  desktop->advance(2);
  EXPECT_FALSE(content().gradientView().isPaused());
  EXPECT_EQ(view().presentationAlpha(), 1);
}

TEST_F(GradientSurfaceTest, TintsWhatIsSeen) {
  const auto pixelWith = [this](bool hasGradient) {
    PreferencesStore::shared().ambientGradientEnabled = hasGradient;
    state().setMode(VeilMode::cleanDesktop);
    desktop->advance(2);
    return *desktop->pixel({500, 400});
  };
  const auto without = pixelWith(false), with = pixelWith(true);
  const auto& drawable = *view().drawable();
  const auto tint = drawable.pixels[static_cast<std::size_t>(drawable.width) * (drawable.height / 2) +
                                    static_cast<std::size_t>(drawable.width) / 2];
  for (const int shift : {0, 8, 16}) {
    const double expected = (tint >> shift & 255) + (without >> shift & 255) * (1 - (tint >> 24) / 255.0);
    EXPECT_NEAR(with >> shift & 255, expected, 3);
  }
}

}  // namespace
}  // namespace hushpane::tests
