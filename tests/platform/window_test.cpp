#include "platform/window.h"

#include <memory>
#include <string>
#include <utility>

#include "platform/manual_desktop.h"

namespace hushpane::platform {
namespace {

constexpr Animation oneSecond{1, TimingFunction::linear};

// Tells each change by one letter: frame, order, alpha, content.
struct RecordingWindow : Window {
  explicit RecordingWindow(Animator& animator) : Window(animator, {0, 0, 100, 100}, {}) {}
  void frameChanged() override { changes += 'f'; }
  void orderChanged() override { changes += 'o'; }
  void alphaChanged() override { changes += 'a'; }
  void contentChanged() override { changes += 'c'; }
  std::string take() { return std::exchange(changes, {}); }
  std::string changes;
};

class WindowTest : public ManualDesktop {
 protected:
  RecordingWindow window{*animator};
};

TEST_F(WindowTest, TellsChangesOnlyWhereSomethingChanges) {
  window.setFrame({0, 0, 100, 100});
  window.setLevel(windowLevel::normal);
  window.setAlpha(1);
  window.orderOut();
  EXPECT_EQ(window.take(), "");
  window.setFrame({5, 0, 100, 100});
  EXPECT_EQ(window.take(), "f");
  window.orderBelow(7);
  EXPECT_EQ(window.take(), "o");
  window.orderBelow(7);
  EXPECT_EQ(window.take(), "") << "ten times a second";
  window.orderBelow(8);
  EXPECT_EQ(window.take(), "o");
  window.orderOut();
  EXPECT_FALSE(window.isVisible());
  window.orderBelow(8);
  EXPECT_EQ(window.take(), "oo");
  EXPECT_TRUE(window.isVisible());
  window.setLevel(windowLevel::aboveDesktop);
  EXPECT_EQ(window.take(), "o");
  EXPECT_EQ(window.place(), Window::Place::front) << "of its new level";
}

TEST_F(WindowTest, AlphaIsToldAtEachFrameAndCompletesAtTheRealEndOnly) {
  window.setAlpha(0);
  window.take();
  window.animateAlpha(1, oneSecond, [] { ADD_FAILURE() << "reversed before its end"; });
  frameAfter(0.4);
  EXPECT_EQ(window.take(), "a");
  int ends = 0;
  window.animateAlpha(0, oneSecond, [&] { ++ends; });
  EXPECT_EQ(window.alpha(), 0);
  EXPECT_DOUBLE_EQ(window.presentationAlpha(), 0.4);
  frameAfter(0.9);
  EXPECT_EQ(ends, 0);
  frameAfter(0.1);
  EXPECT_EQ(ends, 1);
  EXPECT_EQ(window.presentationAlpha(), 0);
}

TEST_F(WindowTest, SettingTheFinalAlphaDuringAFadeJumpsThere) {
  window.setAlpha(0);
  window.animateAlpha(1, oneSecond, [] { ADD_FAILURE(); });
  frameAfter(0.5);
  window.take();
  window.setAlpha(1);
  EXPECT_EQ(window.take(), "a");
  EXPECT_EQ(window.presentationAlpha(), 1);
  frameAfter(1);
}

TEST_F(WindowTest, AWindowMayGoInItsOwnCompletion) {
  auto own = std::make_unique<RecordingWindow>(*animator);
  own->animateAlpha(0, oneSecond, [&] { own.reset(); });
  own->contentView().animateAlpha(0, oneSecond, [] { ADD_FAILURE() << "its window is gone"; });
  frameAfter(1);
  EXPECT_FALSE(own);
  EXPECT_FALSE(isAnimating());
}

class ViewTest : public WindowTest {
 protected:
  View& view = window.contentView();
  ImagePtr first = std::make_shared<Image>();
  ImagePtr second = std::make_shared<Image>();
};

TEST_F(ViewTest, EveryVisibleChangeOfAnyViewIsToldToTheWindow) {
  auto& subview = view.addSubview().addSubview();
  window.take();
  subview.setHidden(true);
  subview.setHidden(true);
  subview.setAlpha(0.5);
  subview.setAlpha(0.5);
  subview.setMaterial(EffectMaterial::darkHud);
  subview.setLayerColor(black);
  subview.setContents(first);
  subview.setContents(first);
  EXPECT_EQ(window.take(), "ccccc");
}

TEST_F(ViewTest, AColorChangesFromWhatIsOnScreen) {
  view.setLayerColor({0, 0, 0, 0.2});
  view.animateLayerColor({0, 0, 0, 0.8}, oneSecond);
  frameAfter(0.5);
  view.animateLayerColor({0, 0, 0, 0.1}, oneSecond);
  EXPECT_EQ(view.layerColor()->alpha, 0.1);
  frameAfter(0.5);
  EXPECT_NEAR(view.presentationLayerColor()->alpha, 0.3, 1e-9);
}

TEST_F(ViewTest, ContentsFadeAndTheOldOnesAreKeptNoLongerThanNeeded) {
  const std::weak_ptr<const Image> old = first;
  view.setContents(std::move(first));
  view.setContents(second, oneSecond);
  frameAfter(0.25);
  EXPECT_EQ(view.outgoingContents(), old.lock());
  EXPECT_DOUBLE_EQ(view.contentsFade(), 0.25);
  view.setContents(second, oneSecond);
  EXPECT_DOUBLE_EQ(view.contentsFade(), 0.25) << "the same picture again does not start over";
  frameAfter(0.75);
  EXPECT_TRUE(old.expired());
  EXPECT_FALSE(view.outgoingContents());
}

TEST_F(ViewTest, ContentsSetAtOnceEndAFadeUnderWayAlsoWhenThePictureStays) {
  for (const ImagePtr& next : {ImagePtr(), second}) {
    view.setContents(first);
    view.setContents(second, oneSecond);
    frameAfter(0.25);
    window.take();
    view.setContents(next);
    EXPECT_EQ(window.take(), "c") << "the old picture is gone from the screen";
    EXPECT_EQ(view.contents(), next);
    EXPECT_FALSE(view.outgoingContents());
    EXPECT_FALSE(isAnimating());
  }
}

}  // namespace
}  // namespace hushpane::platform
