#include <algorithm>
#include <cstdlib>

#include "contract/stage.h"

namespace hushpane::contract_tests {
namespace {

using platform::Point;
using platform::Rect;

// Two windows that overlap, and spots where only the one, only the other, and neither is.
constexpr Rect firstFrame{100, 100, 300, 240};
constexpr Rect secondFrame{200, 180, 300, 240};
constexpr Point firstSpot{150, 250};
constexpr Point secondSpot{450, 385};
constexpr Point overlapSpot{300, 290};
constexpr Point backgroundSpot{700, 560};
constexpr std::uint32_t red = 0xc04040;
constexpr std::uint32_t green = 0x40a050;
constexpr platform::WindowConfiguration overlayConfiguration{.isOpaque = false,
                                                             .hasShadow = false,
                                                             .ignoresMouseEvents = true,
                                                             .canBecomeKeyWindow = false,
                                                             .canBecomeMainWindow = false,
                                                             .canHide = false,
                                                             .collectionBehavior = 0x51};

int distance(std::uint32_t a, std::uint32_t b) {
  int largest = 0;
  for (const unsigned shift : {16u, 8u, 0u})
    largest = std::max(largest, std::abs(static_cast<int>(a >> shift & 0xff) - static_cast<int>(b >> shift & 0xff)));
  return largest;
}

std::uint32_t halved(std::uint32_t color) {
  return color >> 1 & 0x7f7f7f;
}

// Two windows, and a half black cover of the main screen that is not ordered in yet.
struct Scene {
  Stage& stage;
  const std::uint32_t behindSecond = stage.pixel(secondSpot);
  const std::uint32_t background = stage.pixel(backgroundSpot);
  Stage::AppWindow first = stage.openWindow(1, firstFrame, red);
  Stage::AppWindow second = stage.openWindow(2, secondFrame, green);
  std::unique_ptr<platform::Window> cover =
      stage.platform().windows().makeWindow(stage.platform().screens().screens().front().frame, overlayConfiguration);

  explicit Scene(Stage& actual) : stage(actual) { cover->contentView().setLayerColor({0, 0, 0, 0.5}); }

  // Whether the spots come to show these colours.
  testing::AssertionResult shows(std::uint32_t onFirst, std::uint32_t onSecond, std::uint32_t onBackground) {
    const auto looks = [this](Point spot, std::uint32_t color) {
      constexpr int tolerance = 3;
      return distance(stage.pixel(spot), color) <= tolerance;
    };
    if (stage.waitUntil([&] {
          return looks(firstSpot, onFirst) && looks(secondSpot, onSecond) && looks(backgroundSpot, onBackground);
        }))
      return testing::AssertionSuccess();
    return testing::AssertionFailure() << std::hex << "first " << stage.pixel(firstSpot) << " instead of " << onFirst
                                       << ", second " << stage.pixel(secondSpot) << " instead of " << onSecond
                                       << ", background " << stage.pixel(backgroundSpot) << " instead of "
                                       << onBackground;
  }
};

TEST_P(ContractTest, AWindowAboveTheDesktopCoversOnlyTheDesktop) {
  Scene scene(*stage);
  scene.cover->setLevel(platform::windowLevel::aboveDesktop);
  scene.cover->orderFront();
  EXPECT_TRUE(scene.shows(red, green, halved(scene.background)));
  scene.cover->setAlpha(0.5);
  EXPECT_TRUE(scene.shows(red, green, scene.background - (scene.background >> 2 & 0x3f3f3f)));
  scene.cover->orderOut();
  EXPECT_TRUE(scene.shows(red, green, scene.background));
}

TEST_P(ContractTest, AWindowBelowASiblingCoversAllButWhatIsInFrontOfIt) {
  Scene scene(*stage);
  scene.cover->orderBelow(scene.second.number);
  EXPECT_TRUE(scene.shows(halved(red), green, halved(scene.background)));
  EXPECT_EQ(stage->pixel(overlapSpot), green);

  stage->activateWindow(scene.first.number);
  scene.cover->orderBelow(scene.first.number);
  EXPECT_TRUE(scene.shows(red, halved(green), halved(scene.background)));
  EXPECT_EQ(stage->pixel(overlapSpot), red);
}

TEST_P(ContractTest, OnlyTheLastPlaceOfATurnCounts) {
  Scene scene(*stage);
  scene.cover->setLevel(platform::windowLevel::aboveDesktop);
  scene.cover->orderFront();
  scene.cover->setLevel(platform::windowLevel::normal);
  scene.cover->orderBelow(scene.first.number);
  scene.cover->orderBelow(scene.second.number);
  EXPECT_TRUE(scene.shows(halved(red), green, halved(scene.background)));
}

TEST_P(ContractTest, ASiblingThatIsGoneLeavesTheOldPlace) {
  Scene scene(*stage);
  scene.cover->orderBelow(scene.second.number);
  ASSERT_TRUE(scene.shows(halved(red), green, halved(scene.background)));
  scene.cover->orderBelow(0xfffffff);
  stage->run(0.2);
  EXPECT_TRUE(scene.shows(halved(red), green, halved(scene.background)));

  stage->closeWindow(scene.second.number);
  EXPECT_TRUE(scene.shows(halved(red), halved(scene.behindSecond), halved(scene.background)));
}

TEST_P(ContractTest, AWindowInFrontCoversAllAndLeavesNothingBehindWhenItIsDestroyed) {
  Scene scene(*stage);
  scene.cover->orderFront();
  ASSERT_TRUE(scene.shows(halved(red), halved(green), halved(scene.background)));
  scene.cover->animateAlpha(0.5, {1, platform::TimingFunction::linear},
                            [] { ADD_FAILURE() << "called for a dead window"; });
  scene.cover.reset();
  EXPECT_TRUE(scene.shows(red, green, scene.background));
  stage->run(1.1);
}

TEST_P(ContractTest, AlphaFadesAndCompletesOnce) {
  Scene scene(*stage);
  int completions = 0;
  bool wasBetween = false;
  scene.cover->setAlpha(0);
  scene.cover->orderFront();
  scene.cover->animateAlpha(1, {0.4, platform::TimingFunction::easeOut}, [&] { ++completions; });
  EXPECT_EQ(scene.cover->alpha(), 1);
  EXPECT_EQ(scene.cover->presentationAlpha(), 0);
  EXPECT_TRUE(stage->waitUntil([&] {
    const double alpha = scene.cover->presentationAlpha();
    wasBetween |= alpha > 0.05 && alpha < 0.95;
    return completions > 0;
  }));
  EXPECT_TRUE(wasBetween);
  EXPECT_EQ(scene.cover->presentationAlpha(), 1);
  EXPECT_TRUE(scene.shows(halved(red), halved(green), halved(scene.background)));
  scene.cover->animateAlpha(0, {0.1, platform::TimingFunction::linear});
  EXPECT_TRUE(scene.shows(red, green, scene.background));
  stage->run(0.5);
  EXPECT_EQ(completions, 1);
}

TEST_P(ContractTest, TheWindowListAndTheFrontmostApplicationFollowTheWindows) {
  Scene scene(*stage);
  const auto others = [&] {
    std::vector<platform::WindowInfo> result;
    const auto list = platform().windowList().onScreenWindows();
    if (!list) return result;
    for (const auto& info : *list)
      if (info.ownerPid == scene.first.ownerPid || info.ownerPid == scene.second.ownerPid) result.push_back(info);
    return result;
  };
  const auto frontIs = [&](platform::WindowNumber number) {
    const auto windows = others();
    return !windows.empty() && windows.front().number == number;
  };
  auto& workspace = platform().workspace();
  const auto frontmost = [&] {
    const auto application = workspace.frontmostApplication();
    return application ? application->processIdentifier : 0;
  };
  EXPECT_TRUE(stage->waitUntil([&] { return others().size() == 2 && frontIs(scene.second.number); }));
  EXPECT_TRUE(stage->waitUntil([&] { return frontmost() == scene.second.ownerPid; }));
  EXPECT_NE(scene.second.ownerPid, platform().processIdentifier());
  std::int32_t told = 0;
  auto observer = workspace.notificationCenter().addObserver(platform::notification::didActivateApplication,
                                                             [&] { told = frontmost(); });
  stage->activateWindow(scene.first.number);
  EXPECT_TRUE(stage->waitUntil([&] { return told == scene.first.ownerPid; }));
  ASSERT_TRUE(stage->waitUntil([&] { return frontIs(scene.first.number); }));
  const auto windows = others();
  EXPECT_EQ(windows[0].ownerPid, scene.first.ownerPid);
  EXPECT_EQ(windows[1].ownerPid, scene.second.ownerPid);
  EXPECT_EQ(windows[0].layer, 0);
  EXPECT_EQ(windows[0].alpha, 1);

  stage->moveWindow(scene.first.number, {320, 60, 420, 380});
  EXPECT_TRUE(stage->waitUntil([&] {
    const auto bounds = others().front().bounds;
    const auto isNear = [](std::optional<double> value, double expected) {
      constexpr double frameWidth = 60;  // what a window manager may add
      return value && std::abs(*value - expected) < frameWidth;
    };
    return isNear(bounds.x, 320) && isNear(bounds.y, 60) && isNear(bounds.width, 420) && isNear(bounds.height, 380);
  }));
  stage->closeWindow(scene.first.number);
  EXPECT_TRUE(stage->waitUntil([&] { return others().size() == 1 && frontIs(scene.second.number); }));
}

}  // namespace
}  // namespace hushpane::contract_tests
