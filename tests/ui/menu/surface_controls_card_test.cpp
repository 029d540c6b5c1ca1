#include "ui/menu/surface_controls_card.h"

#include "desktops/sim/png.h"
#include "support/page.h"
#include "support/temporary_folder.h"
#include "ui/global_accent.h"

namespace hushpane::tests {
namespace {

using namespace declarative;

constexpr double settled = 2;  // seconds after which nothing moves any more

class SurfaceControlsCardTest : public PageTest {
 protected:
  TemporaryFolder folder;
  int announcements = 0;
  platform::Token observer;

  void SetUp() override {
    PageTest::SetUp();
    launch();
    observer = preferences().observe([this] { ++announcements; });
  }
  void TearDown() override { observer.reset(); }

  PreferencesStore& preferences() { return PreferencesStore::shared(); }
  Page card(VeilMode mode) { return show(SurfaceControlsCard{mode, preferences(), globalAccent}, {}, 336); }
  Page wallpaperCard(VeilMode mode) {
    preferences().ambientSurfaceRaw = "wallpaper";
    preferences().focusSurfaceRaw = "wallpaper";
    return card(mode);
  }

  std::filesystem::path paint(const std::string& name, std::uint32_t color) {
    const platform::Image image{320, 180, std::vector<std::uint32_t>(320 * 180, color)};
    EXPECT_TRUE(sim::writePng(image, folder / name));
    return folder / name;
  }
  void keepPicture(const std::filesystem::path& file) {
    preferences().customWallpaperBookmarkData = desktop->bookmarks().create(file).value();
  }
  bool hasBookmark() { return !preferences().customWallpaperBookmarkData.get().empty(); }
  sim::SimOpenPanel& panel() { return *desktop->openPanel(); }

  static constexpr platform::Point defaultSlot{80, 80}, customSlot{250, 80};
  // Whether a title stands on the highlight of its picker.
  static bool isChosen(const Page& page, const std::string& title) {
    return hasColor(page.text(title), platform::black);
  }
  // Which slot has the accent's border.
  static bool isSelected(const Page& page, platform::Point slot) {
    for (const auto& border : page.strokes())
      if (hasColor(border, globalAccent.opacity(0.8).light) && border.frame.contains(slot)) return true;
    return false;
  }
  // The colour of the picture in the custom slot; 0 when it shows the plus sign.
  static std::uint32_t customPicture(const Page& page) {
    for (const auto& shown : page.images())
      if (shown.frame.contains(customSlot)) return shown.as<DrawnImage>()->image->pixels.front();
    return 0;
  }
  static constexpr std::uint32_t red = 0xffc02020, blue = 0xff2030c0;
};

TEST_F(SurfaceControlsCardTest, EachModeEditsItsOwnSettings) {
  preferences().ambientSurfaceRaw = "dim";
  preferences().ambientDimIntensityRaw = "strong";
  auto ambient = card(VeilMode::cleanDesktop);
  EXPECT_TRUE(isChosen(ambient, "Dim"));
  EXPECT_TRUE(isChosen(ambient, "Strong"));
  auto focus = card(VeilMode::focus);
  EXPECT_EQ(focus.words(), (std::vector<std::string>{"Surface", "Blur", "Dim", "Wallpaper"})) << "no gradient";
  EXPECT_TRUE(isChosen(focus, "Blur"));
  EXPECT_EQ(focus.size().height, 46) << "no place for controls that are not there";

  focus.click("Dim");
  focus.advance(settled);
  EXPECT_TRUE(isChosen(focus, "Balanced"));
  focus.click("Subtle");
  EXPECT_EQ(stored(storedKeys::focusSurface), platform::Value("dim"));
  EXPECT_EQ(stored(storedKeys::focusDimIntensity), platform::Value("subtle"));
  EXPECT_EQ(stored(storedKeys::ambientDimIntensity), platform::Value("strong"));
}

TEST_F(SurfaceControlsCardTest, UnknownTextsShowTheDefaults) {
  preferences().ambientSurfaceRaw = "Dim";
  EXPECT_TRUE(isChosen(card(VeilMode::cleanDesktop), "Blur"));
  preferences().focusSurfaceRaw = "dim";
  preferences().focusDimIntensityRaw = "";
  EXPECT_TRUE(isChosen(card(VeilMode::focus), "Balanced"));
  preferences().ambientWallpaperSourceRaw = "Custom";
  const auto page = wallpaperCard(VeilMode::cleanDesktop);
  EXPECT_TRUE(isSelected(page, defaultSlot));
  EXPECT_FALSE(isSelected(page, customSlot));
}

TEST_F(SurfaceControlsCardTest, AChoiceIsAnnouncedAndShowsOnTheOverlaysAtOnce) {
  state().setMode(VeilMode::cleanDesktop);
  desktop->advance(settled);
  auto page = card(VeilMode::cleanDesktop);
  auto& dim = *overlay(leftScreen).contentView().subviews().at(1);
  ASSERT_TRUE(dim.isHidden());
  announcements = 0;
  page.click("Dim");
  EXPECT_EQ(announcements, 1);
  EXPECT_FALSE(dim.isHidden());
  page.advance(settled);
  const double balanced = dim.layerColor()->alpha;
  page.click("Strong");
  EXPECT_EQ(announcements, 2);
  EXPECT_GT(dim.layerColor()->alpha, balanced);
}

TEST_F(SurfaceControlsCardTest, TheGradientsControlsComeAndGoWithTheirSurface) {
  const std::string note = "Uses additional GPU memory";
  auto page = card(VeilMode::cleanDesktop);
  EXPECT_TRUE(isChosen(page, "Off"));
  EXPECT_FALSE(page.shows(note));
  page.click("On");
  EXPECT_TRUE(preferences().ambientGradientEnabled.get());
  EXPECT_EQ(announcements, 0);
  page.advance(0.075);
  EXPECT_LT(page.text(note).opacity, 1);
  page.advance(settled);
  const double before = page.size().height;
  page.click("Wallpaper");
  page.advance(0.09);
  EXPECT_GT(page.text(note).opacity, 0);
  EXPECT_LT(page.text(note).opacity, 1);
  EXPECT_GT(page.size().height, before) << "the card is growing";
  EXPECT_LT(page.size().height, before + 60);
  page.advance(settled);
  EXPECT_FALSE(page.shows("Live Gradient"));
  EXPECT_EQ(page.size().height, 10 + 26 + 10 + 90 + 10);
}

TEST_F(SurfaceControlsCardTest, AnotherWritersChangeShows) {
  auto page = card(VeilMode::focus);
  desktop->userDefaults().set(storedKeys::focusSurface, platform::Value("dim"));
  page.advance(settled);
  EXPECT_TRUE(isChosen(page, "Dim"));
  EXPECT_TRUE(page.shows("Intensity"));
}

TEST_F(SurfaceControlsCardTest, AnEmptySlotOpensThePickerAndTheChoiceIsKeptAndShown) {
  auto page = wallpaperCard(VeilMode::focus);
  EXPECT_EQ(page.images().size(), 1u) << "the program's own picture";
  EXPECT_TRUE(isSelected(page, defaultSlot));
  const int activations = desktop->application().activations();
  page.click(customSlot);
  ASSERT_TRUE(panel().isOpen());
  EXPECT_EQ(desktop->application().activations(), activations + 1);
  EXPECT_TRUE(panel().options().imagesOnly);
  page.click(customSlot);
  EXPECT_EQ(panel().openings(), 1) << "one at a time";

  announcements = 0;
  panel().choose(paint("red.png", red));
  page.advance(settled);
  EXPECT_EQ(announcements, 1);
  EXPECT_TRUE(hasBookmark());
  EXPECT_EQ(stored(storedKeys::focusWallpaperSource), platform::Value("custom"));
  EXPECT_EQ(customPicture(page), red);
  EXPECT_TRUE(isSelected(page, customSlot));

  page.click(defaultSlot);
  EXPECT_EQ(stored(storedKeys::focusWallpaperSource), platform::Value("default"));
  page.click(customSlot);
  EXPECT_EQ(stored(storedKeys::focusWallpaperSource), platform::Value("custom")) << "the picture is there already";
  EXPECT_EQ(panel().openings(), 1);
  EXPECT_EQ(announcements, 3);
}

TEST_F(SurfaceControlsCardTest, ACancelledOrFailedChoiceChangesNothing) {
  auto page = wallpaperCard(VeilMode::cleanDesktop);
  announcements = 0;
  page.click(customSlot);
  panel().cancel();
  page.advance(0.1);
  page.click(customSlot);
  panel().choose(folder / "gone.png");
  page.advance(0.1);
  EXPECT_EQ(panel().openings(), 2);
  EXPECT_EQ(page.host().tooltip(customSlot), std::nullopt);
  desktop->setOpenPanelAbsent(true);
  page.click(customSlot);
  page.advance(0.1);
  EXPECT_FALSE(hasBookmark());
  EXPECT_EQ(stored(storedKeys::ambientWallpaperSource), platform::Value("absent"));
  EXPECT_EQ(announcements, 0);
  const std::string key(storedKeys::customWallpaperBookmarkData);
  EXPECT_EQ(wallpaperCard(VeilMode::focus).host().tooltip(customSlot), "Choose a picture in the settings file: " + key);
}

TEST_F(SurfaceControlsCardTest, AChoiceOutlivesTheCardThatAskedForIt) {
  {
    auto page = wallpaperCard(VeilMode::cleanDesktop);
    page.click(customSlot);
  }
  panel().choose(paint("red.png", red));
  desktop->advance(0.1);
  EXPECT_TRUE(hasBookmark());
  EXPECT_EQ(customPicture(card(VeilMode::cleanDesktop)), red);
}

TEST_F(SurfaceControlsCardTest, TheRemoveButtonIsInTheSlotsCornerUnderThePointerOnly) {
  keepPicture(paint("red.png", red));
  preferences().focusSurfaceRaw = "wallpaper";
  for (const auto& environment : {Environment{}, rightToLeft}) {
    auto page = show(SurfaceControlsCard{VeilMode::focus, preferences(), globalAccent}, environment, 336);
    page.advance(0.1);
    ASSERT_EQ(page.images().size(), 2u);
    const auto picture = page.images()[1].frame;
    page.hover(page.images()[1].center());
    page.advance(0.06);
    EXPECT_TRUE(page.fillsOf(18, 18).empty()) << "it is growing";
    page.advance(0.1);
    ASSERT_EQ(page.fillsOf(18, 18).size(), 1u);
    const auto button = page.fillsOf(18, 18)[0].frame;
    const bool isMirrored = environment.direction == platform::LayoutDirection::rightToLeft;
    EXPECT_NEAR(button.y, picture.y + 5, 0.01);
    EXPECT_NEAR(isMirrored ? button.x - picture.x : picture.right() - button.right(), 5, 0.01) << isMirrored;

    page.leave();
    page.advance(0.05);
    const auto leaving = page.fillsOf(windowBackground.opacity(0.85).light);
    ASSERT_EQ(leaving.size(), 1u);
    EXPECT_LT(leaving[0].opacity, 1);
    EXPECT_GT(leaving[0].order, page.images()[1].order) << "it goes in front of the picture";
    page.advance(0.1);
    EXPECT_TRUE(page.fillsOf(windowBackground.opacity(0.85).light).empty());
  }
}

TEST_F(SurfaceControlsCardTest, RemovingThePictureLeavesTheOtherModesSource) {
  keepPicture(paint("red.png", red));
  preferences().ambientWallpaperSourceRaw = "custom";
  preferences().focusWallpaperSourceRaw = "custom";
  auto page = wallpaperCard(VeilMode::cleanDesktop);
  page.advance(0.1);
  ASSERT_EQ(customPicture(page), red);
  announcements = 0;
  page.hover(customSlot);
  page.advance(0.2);
  page.click(page.fillsOf(18, 18).at(0).center());
  page.advance(settled);
  EXPECT_FALSE(hasBookmark());
  EXPECT_EQ(announcements, 1);
  EXPECT_TRUE(isSelected(page, defaultSlot));
  EXPECT_EQ(customPicture(page), 0u);
  EXPECT_TRUE(page.fillsOf(18, 18).empty()) << "nothing more to remove";

  auto other = wallpaperCard(VeilMode::focus);
  other.advance(0.1);
  EXPECT_TRUE(isSelected(other, customSlot));
  EXPECT_EQ(customPicture(other), 0u);
  other.click(customSlot);
  EXPECT_TRUE(panel().isOpen());
}

TEST_F(SurfaceControlsCardTest, AStaleBookmarkIsStoredAnew) {
  keepPicture(paint("red.png", red));
  const auto old = preferences().customWallpaperBookmarkData.get();
  std::filesystem::rename(folder / "red.png", folder / "renamed.png");
  const int loads = desktop->imageLoader().loads();
  auto page = wallpaperCard(VeilMode::focus);
  page.advance(0.1);
  EXPECT_EQ(customPicture(page), red);
  const auto fresh = preferences().customWallpaperBookmarkData.get();
  EXPECT_NE(fresh, old);
  EXPECT_FALSE(desktop->bookmarks().resolve(fresh)->isStale);
  EXPECT_EQ(desktop->imageLoader().loads(), loads + 2) << "the program's own picture and the user's, once each";
}

TEST_F(SurfaceControlsCardTest, APictureThatIsGoneOrBrokenLeavesThePlusSign) {
  keepPicture(paint("red.png", red));
  std::filesystem::remove(folder / "red.png");
  auto gone = wallpaperCard(VeilMode::focus);
  gone.advance(0.1);
  EXPECT_EQ(customPicture(gone), 0u);
  writeFile(folder / "broken.png", "no picture");
  keepPicture(folder / "broken.png");
  gone.advance(0.1);
  EXPECT_EQ(customPicture(gone), 0u);
  gone.click(customSlot);
  EXPECT_TRUE(panel().isOpen());
  panel().cancel();
  desktop->drain();
}

TEST_F(SurfaceControlsCardTest, ThePreviewFollowsTheBookmarkAndDropsPicturesThatComeLate) {
  keepPicture(paint("red.png", red));
  auto page = wallpaperCard(VeilMode::focus);
  page.advance(0.1);
  ASSERT_EQ(customPicture(page), red);
  desktop->taskQueue().setAutomatic(false);
  keepPicture(paint("blue.png", blue));
  page.advance(0.1);
  ASSERT_EQ(desktop->taskQueue().pendingCount(), 1u);
  EXPECT_EQ(customPicture(page), red) << "until the other one is read";
  preferences().customWallpaperBookmarkData = platform::Data();
  page.advance(0.1);
  EXPECT_EQ(customPicture(page), 0u);
  desktop->taskQueue().runAll();
  page.advance(0.1);
  EXPECT_EQ(customPicture(page), 0u) << "too late";
}

TEST_F(SurfaceControlsCardTest, ThePreviewIsReadWhateverSurfaceIsShown) {
  keepPicture(paint("red.png", red));
  desktop->bundle().setImageURL("HushpaneDefaultWallpaper", std::nullopt);
  auto page = card(VeilMode::focus);
  page.advance(0.1);
  desktop->taskQueue().setAutomatic(false);
  page.click("Wallpaper");
  page.advance(settled);
  EXPECT_EQ(customPicture(page), red);
  EXPECT_EQ(page.images().size(), 1u) << "without the program's picture its slot is empty";
  EXPECT_TRUE(isSelected(page, defaultSlot));
}

}  // namespace
}  // namespace hushpane::tests
