#include <cmath>

#include "desktops/sim/png.h"
#include "support/simulated_program.h"
#include "support/temporary_folder.h"

namespace hushpane::tests {
namespace {

constexpr RenderedState clean{true, false, VeilMode::cleanDesktop};
constexpr RenderedState standard{};
constexpr double fade = 0.72;       // seconds, a frame more than a surface fade takes
constexpr double crossFade = 0.47;  // and a picture's
constexpr std::uint32_t red = 0xffc02020, grey = 0xff808080;

class OverlayPicturesTest : public SimulatedProgram {
 protected:
  void SetUp() override {
    prepareDesktop();
    tasks().setAutomatic(false);
    launch();
    useSurface("wallpaper");
  }

  sim::SimTaskQueue& tasks() { return desktop->taskQueue(); }
  OverlayContentView& content() { return overlays().overlayWindows().at(7)->contentView(); }
  platform::View& wallpaper() { return *overlay(leftScreen).contentView().subviews().at(2); }
  // The colour in the middle of the picture that is shown; 0 when there is none.
  std::uint32_t shown() {
    const auto& image = wallpaper().contents();
    if (!image) return 0;
    return image->pixels[static_cast<std::size_t>(image->width) * (image->height / 2) + image->width / 2];
  }
  std::filesystem::path paint(const std::string& name, std::uint32_t color) {
    const platform::Image image{80, 60, std::vector<std::uint32_t>(80 * 60, color)};
    EXPECT_TRUE(sim::writePng(image, folder / name));
    return folder / name;
  }
  void choose(const std::filesystem::path& file) {
    PreferencesStore::shared().ambientWallpaperSourceRaw = "custom";
    PreferencesStore::shared().customWallpaperBookmarkData = desktop->bookmarks().create(file).value();
  }
  void show() { content().apply(clean, true); }
  void finishTasks() {
    tasks().runAll();
    desktop->drain();
  }
  void showWhenLoaded() {
    show();
    finishTasks();
  }
  void useSurface(const char* text) { PreferencesStore::shared().ambientSurfaceRaw = text; }
  int loads() { return desktop->imageLoader().loads(); }

  TemporaryFolder folder;
};

TEST_F(OverlayPicturesTest, TheDefaultWallpaperIsDecodedInTheBackgroundAndFadesInWithItsPicture) {
  show();
  show();
  EXPECT_EQ(tasks().pendingCount(platform::TaskPriority::userInitiated), 1u);
  desktop->advance(0.3);
  EXPECT_EQ(wallpaper().contents(), nullptr);
  finishTasks();
  ASSERT_NE(wallpaper().contents(), nullptr);
  EXPECT_EQ(wallpaper().presentationAlpha(), 0) << "no picture springs up";
  EXPECT_EQ(wallpaper().outgoingContents(), nullptr);
  desktop->advance(fade);
  EXPECT_EQ(wallpaper().presentationAlpha(), 1);
  show();
  EXPECT_EQ(tasks().pendingCount(), 0u) << "it is there";
  EXPECT_EQ(loads(), 1);
}

TEST_F(OverlayPicturesTest, ACustomWallpaperFollowsTheDefaultOneWithACrossFade) {
  choose(paint("red.png", red));
  show();
  EXPECT_TRUE(tasks().runNext());
  desktop->advance(fade);
  const auto first = wallpaper().contents();
  ASSERT_NE(first, nullptr);
  EXPECT_NE(shown(), red);
  finishTasks();
  EXPECT_EQ(shown(), red);
  EXPECT_EQ(wallpaper().outgoingContents(), first);
  desktop->advance(0.2);
  EXPECT_GT(wallpaper().contentsFade(), 0);
  EXPECT_LT(wallpaper().contentsFade(), 1);
  desktop->advance(crossFade - 0.2);
  EXPECT_EQ(wallpaper().outgoingContents(), nullptr);

  show();
  EXPECT_EQ(loads(), 2) << "the picture is kept while it is shown";
  EXPECT_EQ(wallpaper().outgoingContents(), nullptr);
  PreferencesStore::shared().ambientWallpaperSourceRaw = "Custom";
  showWhenLoaded();
  EXPECT_NE(shown(), red) << "any other source is the default";
}

TEST_F(OverlayPicturesTest, PicturesThatComeTooLateAreNotShown) {
  choose(paint("red.png", red));
  show();
  content().apply(standard, false);
  finishTasks();
  EXPECT_EQ(wallpaper().contents(), nullptr);
  show();
  EXPECT_EQ(shown(), red) << "but the custom one is known";
  EXPECT_EQ(wallpaper().outgoingContents(), nullptr) << "nothing was shown before";
}

TEST_F(OverlayPicturesTest, ASecondRequestIsDroppedWhileADecodingRuns) {
  const auto first = paint("red.png", red), second = paint("blue.png", 0xff2040c0);
  choose(first);
  show();
  show();
  choose(second);
  show();
  EXPECT_EQ(tasks().pendingCount(), 2u) << "the default one and the first one";
  finishTasks();
  EXPECT_EQ(shown(), red);
  showWhenLoaded();
  EXPECT_EQ(shown(), 0xff2040c0) << "asked for again";
}

TEST_F(OverlayPicturesTest, AFailureIsRememberedUntilAnotherPictureWasAskedFor) {
  const auto broken = folder / "broken.png";
  std::ofstream(broken) << "no picture";
  choose(broken);
  showWhenLoaded();
  const int after = loads();
  EXPECT_NE(shown(), 0u) << "the default one stays";
  showWhenLoaded();
  EXPECT_EQ(loads(), after);
  choose(paint("red.png", red));
  showWhenLoaded();
  EXPECT_EQ(shown(), red);
  desktop->advance(crossFade);
  choose(broken);
  showWhenLoaded();
  EXPECT_EQ(loads(), after + 3) << "the red one, the broken one, and the default one, which nothing had kept";
  EXPECT_NE(shown(), red);
}

TEST_F(OverlayPicturesTest, OtherSurfacesForgetThePicture) {
  choose(paint("red.png", red));
  for (const bool isHidden : {true, false}) {
    useSurface("wallpaper");
    showWhenLoaded();
    ASSERT_EQ(shown(), red);
    const int before = loads();
    content().apply(standard, true);
    show();
    EXPECT_EQ(shown(), red) << "a fade keeps it";
    EXPECT_EQ(loads(), before);
    if (isHidden) {
      content().apply(standard, false);
    } else {
      useSurface("blur");
      show();
    }
    EXPECT_EQ(wallpaper().contents(), nullptr);
    useSurface("wallpaper");
    showWhenLoaded();
    EXPECT_EQ(loads(), before + 2);
  }
}

TEST_F(OverlayPicturesTest, WithoutAnyPictureTheSurfaceShowsNothing) {
  desktop->bundle().setImageURL("HushpaneDefaultWallpaper", std::nullopt);
  choose(paint("red.png", red));
  std::filesystem::remove(folder / "red.png");
  show();
  EXPECT_EQ(tasks().pendingCount(), 0u);
  desktop->advance(fade);
  EXPECT_EQ(wallpaper().contents(), nullptr);
  EXPECT_EQ(wallpaper().presentationAlpha(), 1);
}

TEST_F(OverlayPicturesTest, ALargerDisplayGetsAPictureOfItsSize) {
  const platform::Image large{2000, 1500, std::vector<std::uint32_t>(2000 * 1500, red)};
  ASSERT_TRUE(sim::writePng(large, folder / "red.png"));
  choose(folder / "red.png");
  state().setMode(VeilMode::cleanDesktop);
  finishTasks();
  EXPECT_LT(wallpaper().contents()->width, 1400);
  screens[0].scale = 1.5;
  desktop->screens().set(screens);
  desktop->drain();
  finishTasks();
  EXPECT_GE(wallpaper().contents()->width, 1500);
}

TEST_F(OverlayPicturesTest, ADisplayThatGoesMeanwhileIsForgotten) {
  choose(paint("red.png", red));
  state().setMode(VeilMode::cleanDesktop);
  desktop->screens().remove(7);
  desktop->drain();
  finishTasks();
  EXPECT_FALSE(overlays().overlayWindows().contains(7));
  desktop.reset();  // and so is a program that ends before its tasks
}

class HueTest : public OverlayPicturesTest {
 protected:
  void SetUp() override {
    OverlayPicturesTest::SetUp();
    useSurface("blur");
    PreferencesStore::shared().ambientGradientEnabled = true;
  }
  float hue() { return content().gradientView().accentHue(); }
};

TEST_F(HueTest, FollowsTheDesktopPicture) {
  desktop->workspace().setDesktopImage(paint("blue.png", 0xff7378a0));
  show();
  show();
  EXPECT_EQ(tasks().pendingCount(platform::TaskPriority::utility), 1u);
  EXPECT_NEAR(hue(), 0.68f, 1e-6);
  finishTasks();
  const float blue = hue();
  EXPECT_NEAR(blue, 0.648, 0.02);
  show();
  EXPECT_EQ(tasks().pendingCount(), 0u) << "known";
  EXPECT_EQ(hue(), blue);

  desktop->workspace().setDesktopImage(paint("green.png", 0xff50a060));
  show();
  EXPECT_EQ(hue(), blue) << "until the new one is known";
  finishTasks();
  EXPECT_NEAR(hue(), 0.367, 0.02);
}

TEST_F(HueTest, APictureWithoutOneIsAskedAgainAndChangesNothing) {
  desktop->workspace().setDesktopImage(paint("grey.png", grey));
  for (int time = 0; time < 2; ++time) {
    show();
    EXPECT_EQ(tasks().pendingCount(), 1u);
    finishTasks();
    EXPECT_EQ(content().cachedHue(), std::nullopt);
    EXPECT_NEAR(hue(), 0.68f, 1e-6);
  }
  desktop->workspace().setDesktopImage(folder / "missing.png");
  showWhenLoaded();
  desktop->workspace().setDesktopImage(std::nullopt);
  show();
  EXPECT_EQ(tasks().pendingCount(), 0u);
}

TEST_F(HueTest, AHueThatComesWhenTheGradientIsGoneWaitsForTheNextTime) {
  desktop->workspace().setDesktopImage(paint("green.png", 0xff50a060));
  show();
  content().apply(standard, false);
  finishTasks();
  EXPECT_NEAR(hue(), 0.68f, 1e-6);
  EXPECT_NEAR(content().cachedHue().value(), 0.367, 0.02);
  show();
  EXPECT_NEAR(hue(), 0.367, 0.02);
}

}  // namespace
}  // namespace hushpane::tests
