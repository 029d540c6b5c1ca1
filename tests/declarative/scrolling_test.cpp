#include "tests/declarative/page_test.h"

namespace hushpane::declarative {
namespace {

using platform::Key;
using platform::Rect;

// Rows of 40 by 20 points in a viewport.
class Scrolling : public PageTest {
 protected:
  Element rows(int count) {
    std::vector<Element> all;
    for (int row = 0; row < count; ++row)
      all.push_back(button(noting({static_cast<char>('a' + row)}), box(40, 20).onHover([this, row](bool isOver) {
                      log += static_cast<char>((isOver ? 'A' : '0') + row);
                    })).tooltip(std::to_string(row)));
    return verticalStack({.spacing = 0}, std::move(all)).scrolling();
  }
  void offer(double height) {
    host->setProposal({std::nullopt, height});
    queue.drain();
  }
  // Where the content begins.
  double top() const { return boxes().front().y; }
  std::vector<Rect> bars() const {
    auto bars = boxes();
    std::erase_if(bars, [](const Rect& box) { return box.width != 3; });
    return bars;
  }
};

TEST_F(Scrolling, IsAsHighAsItsContentAndTheOfferAllow) {
  Model<int> model(5);
  show<int>(model, [this](int count) { return rows(count); });
  EXPECT_EQ(host->size(), (platform::Size{40, 100}));
  EXPECT_TRUE(bars().empty());
  EXPECT_FALSE(host->scrolled({10, 10}, 30)) << "where all of it shows";
  offer(60);
  EXPECT_EQ(host->size(), (platform::Size{40, 60}));
  ASSERT_EQ(bars().size(), 1u);
  EXPECT_EQ(bars()[0].x, 35);
  ASSERT_EQ(allOf<Clipping>(host->drawings()).size(), 1u);
  EXPECT_EQ(allOf<Clipping>(host->drawings())[0].extent.height, 60);

  EXPECT_FALSE(host->scrolled({10, 10}, -5));
  const double barAtTop = bars()[0].y;
  EXPECT_TRUE(host->scrolled({10, 10}, 30));
  EXPECT_EQ(top(), -30);
  EXPECT_TRUE(host->scrolled({10, 10}, 1000));
  EXPECT_EQ(top(), -40);
  EXPECT_GT(bars()[0].y, barAtTop + 10);
  EXPECT_LE(bars()[0].bottom(), 60);
  EXPECT_FALSE(host->scrolled({10, 10}, 1));
  EXPECT_FALSE(host->scrolled({10, 61}, -5)) << "beside it";
  // It never shows beyond its end.
  set(model, 4);
  EXPECT_EQ(top(), -20);
  set(model, 2);
  EXPECT_EQ(top(), 0);
  EXPECT_EQ(host->size().height, 40);
}

TEST_F(Scrolling, ThePointerMeetsWhatIsSeen) {
  show(rows(5).padding({10, 0, 0, 0}));
  offer(70);
  host->scrolled({10, 20}, 30);
  log.clear();
  EXPECT_EQ(host->tooltip({10, 11}), "1");
  EXPECT_EQ(host->tooltip({10, 5}), std::nullopt) << "above the viewport";
  click({10, 5});
  click({10, 11});
  EXPECT_EQ(log, "2Bb") << "the pointer was over the third row after scrolling";
  log.clear();
  host->scrolled({10, 11}, 10);
  EXPECT_EQ(log, "1C");
}

TEST_F(Scrolling, TheInnermostThatCanScrolls) {
  const Element inner = verticalStack({.spacing = 0}, {box(40, 20, blue), box(40, 20)}).scrolling();
  show(verticalStack({.spacing = 0}, {inner.frame({.height = 30}), box(40, 90)}).scrolling());
  offer(60);
  EXPECT_TRUE(host->scrolled({10, 10}, 10));
  EXPECT_EQ(top(), -10);
  EXPECT_TRUE(host->scrolled({10, 10}, 15));
  EXPECT_EQ(top(), -25);
  EXPECT_TRUE(host->scrolled({10, 20}, -15));
  EXPECT_EQ(top(), -10) << "below the inner one, the outer one scrolls";
}

TEST_F(Scrolling, TheFocusIsScrolledIntoView) {
  show(rows(9));
  offer(60);
  const auto ring = [&] { return allOf<StrokedPath>(host->drawings()).at(0).frame; };
  for (int row = 0; row < 4; ++row) host->keyPressed({.key = Key::tab});
  EXPECT_EQ(top(), -25) << "the fourth row, and a little around it";
  EXPECT_EQ(ring().y, 33);
  offer(50);
  EXPECT_EQ(top(), -35) << "what has the focus stays in view";
  host->keyPressed({.key = Key::tab, .modifiers = platform::modifier::shift});
  EXPECT_EQ(top(), -35);
  host->keyPressed({.key = Key::tab, .modifiers = platform::modifier::shift});
  EXPECT_EQ(top(), -15);
  host->scrolled({10, 10}, 70);
  EXPECT_TRUE(allOf<StrokedPath>(host->drawings()).empty()) << "no ring where its element is out of view";
}

}  // namespace
}  // namespace hushpane::declarative
