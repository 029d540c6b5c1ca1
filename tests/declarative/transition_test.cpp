#include "tests/declarative/page_test.h"

namespace hushpane::declarative {
namespace {

using platform::Rect;

class PageTransition : public PageTest {
 protected:
  // How much of each box is seen, by its colour.
  double opacityOf(AdaptiveColor color) const { return opacityIn(host->drawings(), color.light); }
  static double opacityIn(const Drawings& drawings, platform::Color color) {
    double found = 0;
    for (const auto& drawing : drawings) {
      const auto* fill = std::get_if<FilledPath>(&drawing.what);
      if (fill && fill->paint == platform::Paint(color)) found += 1;
      const auto* layer = std::get_if<Layer>(&drawing.what);
      found += opacityIn(drawing.children, color) * (layer ? layer->effect.opacity : 1);
    }
    return found;
  }
  double xOf(AdaptiveColor color) const {
    for (const auto& drawing : allOf<FilledPath>(host->drawings()))
      if (std::get<FilledPath>(drawing.what).paint == platform::Paint(color.light)) return drawing.frame.x;
    return -1000;
  }
};

TEST_F(PageTransition, ElementsFadeInAndOutAndAreGoneThen) {
  Model<bool> model(true);
  int gone = 0;
  show<bool>(model, [&](bool isThere) {
    return verticalStack({.spacing = 0},
                         {isThere ? verticalStack({}, {box(10, 10, red)}).onDisappear([&] { ++gone; }) : Element(),
                          box(10, 10, blue)})
        .animation(easeOut(1), isThere);
  });
  EXPECT_EQ(opacityOf(red), 1) << "nothing fades in with the page";
  EXPECT_FALSE(clock.isRunning());
  set(model, false);
  EXPECT_EQ(gone, 1);
  EXPECT_EQ(host->targetSize().height, 10) << "what leaves takes no space";
  queue.advance(0.3);
  const double faded = opacityOf(red);
  EXPECT_GT(faded, 0.1);
  EXPECT_LT(faded, 0.9);

  // Back on the way.
  set(model, true);
  EXPECT_NEAR(opacityOf(red), faded, 0.05);
  EXPECT_EQ(boxes().size(), 2u) << "the same one turns round";
  queue.advance(0.1);
  EXPECT_GT(opacityOf(red), faded);
  queue.advance(1);
  EXPECT_EQ(opacityOf(red), 1);
  EXPECT_EQ(boxes(), (std::vector<Rect>{{0, 0, 10, 10}, {0, 10, 10, 10}}));

  set(model, false, 1.1);
  EXPECT_EQ(boxes(), (std::vector<Rect>{{0, 0, 10, 10}}));
  EXPECT_FALSE(clock.isRunning());

  // One that leaves after another does not keep that one.
  Model<int> count(3);
  show<int>(count, [](int shown) {
    return overlaidStack({}, {shown > 2 ? box(10, 10) : Element(), shown > 1 ? box(10, 10) : Element(), box(9, 9)})
        .animation(easeOut(1), shown);
  });
  set(count, 2, 0.5);
  set(count, 1, 0.6);
  EXPECT_EQ(boxes().size(), 2u);
}

TEST_F(PageTransition, EachWayHasItsOwnEffect) {
  const TransitionEffect in{.opacity = 0, .offset = {}, .anchor = {}};
  const TransitionEffect out{.opacity = 1, .offset = {-20, 0}, .anchor = {}};
  Model<int> model(0);
  // The transition lies within the view that comes and goes; another id is another view.
  show<int>(model, [&](int page) {
    const Element content = Part{[=](Context&) { return box(100, 10, page % 2 ? blue : red).transition({in, out}); }};
    return overlaidStack({}, {page < 0 ? Element() : content.id(page)}).animation(easeOut(1), page);
  });
  set(model, 1);
  EXPECT_EQ(opacityOf(blue), 0);
  EXPECT_EQ(opacityOf(red), 1);
  queue.advance(0.4);
  EXPECT_EQ(opacityOf(red), 1);
  EXPECT_LT(xOf(red), -5);
  EXPECT_EQ(xOf(blue), 0);
  const double shown = opacityOf(blue), before = xOf(red);
  // Sent away while it comes: no jump either way.
  set(model, -1);
  EXPECT_NEAR(opacityOf(blue), shown, 0.05);
  EXPECT_NEAR(xOf(blue), 0, 0.5);
  EXPECT_NEAR(xOf(red), before, 0.5);
  queue.advance(0.4);
  EXPECT_GT(opacityOf(blue), shown) << "going away, it does not fade";
  queue.advance(1);
  EXPECT_TRUE(boxes().empty());
}

TEST_F(PageTransition, WhatLeavesStaysBetweenItsNeighbours) {
  const auto colorsInOrder = [&] {
    std::string order;
    for (const auto& drawing : allOf<FilledPath>(host->drawings()))
      order += std::get<platform::Color>(std::get<FilledPath>(drawing.what).paint) == red.light ? 'r' : 'b';
    return order;
  };
  const auto none = Element();
  const std::vector<std::pair<std::function<Element(bool)>, std::string>> cases{
      {[&](bool is) {
         return overlaidStack({}, {box(9, 9, blue), is ? box(9, 9) : none, box(9, 9, blue)});
       },
       "brb"},
      {[&](bool is) { return box(9, 9, blue).overlay(is ? box(9, 9) : none); }, "br"},
      {[&](bool is) { return box(9, 9, blue).background(is ? box(9, 9) : none); }, "rb"},
  };
  for (const auto& [make, order] : cases) {
    Model<bool> model(true);
    show<bool>(model, [&](bool isThere) { return make(isThere).animation(easeOut(1), isThere); });
    EXPECT_EQ(colorsInOrder(), order);
    set(model, false, 0.3);
    EXPECT_EQ(colorsInOrder(), order);
  }
}

TEST_F(PageTransition, LeavesWithTheOneAround) {
  Model<int> model(2);
  show<int>(model, [](int count) {
    const auto inner = verticalStack({}, {box(10, 10, blue), count > 1 ? box(10, 10) : Element()});
    return verticalStack({}, {count > 0 ? inner : Element()}).animation(easeOut(1), count);
  });
  set(model, 1, 0.5);
  const double before = opacityOf(red);
  set(model, 0, 0.25);
  EXPECT_LT(opacityOf(red), before);
  EXPECT_GT(opacityOf(blue), 0);
  queue.advance(0.35);
  EXPECT_EQ(opacityOf(red), 0);
  EXPECT_GT(opacityOf(blue), 0);
  queue.advance(0.5);
  EXPECT_TRUE(boxes().empty());
  EXPECT_FALSE(clock.isRunning());
}

// A page with a highlight that has no successor leaves like any other.
TEST_F(PageTransition, MatchedElementsFadeUnlessAnotherTakesTheirPlace) {
  Model<int> model(0);
  show<int>(model, [](int shown) {
    const auto pill = box(10, 10).matchedGeometry({"pill", 1});
    const auto page = verticalStack({.spacing = 0}, {box(100, 20, blue), pill});
    return overlaidStack(alignment::topLeading,
                         {shown == 0 ? page : Element(), shown == 1 ? overlaidStack({}, {pill}) : Element()})
        .animation(easeOut(1), shown);
  });
  set(model, 2, 0.3);
  EXPECT_GT(opacityOf(blue), 0);
  EXPECT_NEAR(opacityOf(red), opacityOf(blue), 1e-9);
  queue.advance(1);
  EXPECT_TRUE(boxes().empty());

  set(model, 0, 2);
  set(model, 1);
  EXPECT_EQ(opacityOf(red), 1) << "one, whole";
  EXPECT_EQ(xOf(red), 45);
  queue.advance(0.3);
  EXPECT_LT(xOf(red), 44);
  EXPECT_GT(opacityOf(blue), 0);
  queue.advance(1);
  EXPECT_EQ(boxes(), (std::vector<Rect>{{0, 0, 10, 10}}));
}

// A view that had nothing to show comes into view in its place.
TEST_F(PageTransition, ViewsThatShowNothingTakeNoSpaceAndComeInPlace) {
  Model<bool> model(false);
  const Part part{[&](Context& context) {
    context.observe(model);
    return model.get() ? box(30, 10) : Element();
  }};
  show(Part{[&](Context& context) {
    context.observe(model);
    return verticalStack({.spacing = 8}, {box(50, 10, blue), Element(part).padding(2), box(50, 10, blue)})
        .animation(easeOut(1), model.get());
  }});
  EXPECT_EQ(host->size().height, 28);
  set(model, true);
  EXPECT_EQ(host->targetSize().height, 50);
  EXPECT_EQ(xOf(red), -1000);
  queue.advance(0.1);
  EXPECT_EQ(xOf(red), 10);
  EXPECT_EQ(boxes()[1].y, 20);
  EXPECT_LT(opacityOf(red), 0.5);
}

}  // namespace
}  // namespace hushpane::declarative
