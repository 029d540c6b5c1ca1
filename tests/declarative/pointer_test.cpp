#include "tests/declarative/page_test.h"

namespace hushpane::declarative {
namespace {

using platform::Point;

class PagePointer : public PageTest {
 protected:
  std::string clicked(Point point) {
    log.clear();
    click(point);
    return log;
  }
};

TEST_F(PagePointer, MeetsElementsWhereTheyAreShown) {
  const auto target = [&](char name, Element element) { return element.onTap(noting({name})); };
  const auto square = box(20, 20), ring = stroke(Rectangle{}, red, 1).frame({.width = 20, .height = 20});
  struct Case {
    const char* what;
    Element page;
    std::vector<std::pair<Point, std::string>> clicks;
  };
  const std::vector<Case> cases{
      {"the front one of two",
       overlaidStack({}, {target('a', box(40, 40)), target('b', square)}),
       {{{20, 20}, "b"}, {{5, 20}, "a"}, {{45, 20}, ""}}},
      {"an overlay before its content, that before its background",
       target('a', square).overlay(target('b', box(10, 20)), alignment::leading).background(target('c', box(60, 20))),
       {{{5, 10}, "b"}, {{15, 10}, "a"}, {{-10, 10}, "c"}, {{45, 10}, ""}}},
      {"moved",
       overlaidStack({}, {target('a', square).offset(30, 0), target('b', square)}),
       {{{10, 10}, "b"}, {{35, 10}, "a"}, {{55, 10}, ""}}},
      {"scaled", target('a', square).scale(2, unit::topLeading), {{{35, 35}, "a"}, {{45, 10}, ""}}},
      {"scaled to nothing", target('a', square).scale(0), {{{10, 10}, ""}}},
      {"quite transparent", target('a', square).opacity(0), {{{10, 10}, ""}}},
      {"clipped", target('a', square).clip(Circle{}), {{{10, 1}, "a"}, {{1, 1}, ""}}},
      {"a capsule's corner",
       target('a', fill(Capsule{}).frame({.width = 40, .height = 20})),
       {{{1, 10}, "a"}, {{1, 1}, ""}}},
      {"a stroke is no area", target('a', ring), {{{10, 10}, ""}}},
      {"unless it has one", target('a', ring.contentShape(Circle{})), {{{10, 10}, "a"}, {{1, 1}, ""}}},
      {"a button's empty padding", button(noting("a"), square.padding(10)), {{{20, 20}, "a"}, {{5, 20}, ""}}},
  };
  for (const auto& test : cases) {
    for (const bool isMirrored : {false, true}) {
      show(test.page, directed(isMirrored));
      for (const auto& [point, expected] : test.clicks)
        EXPECT_EQ(clicked({isMirrored ? host->size().width - point.x : point.x, point.y}), expected)
            << test.what << " at " << point.x << (isMirrored ? ", mirrored" : "");
    }
  }
}

// A part of a page that reads from right to left is met where it is drawn, after its direction changed, too.
TEST_F(PagePointer, FollowsTheDirectionOfAPart) {
  Model<bool> model(false);
  show<bool>(model, [&](bool isMirrored) {
    return horizontalStack({.spacing = 0}, {box(20, 10, blue).onTap(noting("a")), box(30, 10).onTap(noting("b"))})
        .environment([=](Environment& environment) { environment.direction = directed(isMirrored).direction; })
        .padding({0, 100, 0, 0});
  });
  EXPECT_EQ(clicked({110, 5}) + clicked({140, 5}), "ab");
  set(model, true);
  EXPECT_EQ(clicked({110, 5}) + clicked({140, 5}), "ba");
  EXPECT_EQ(boxes()[0].x, 130);
}

TEST_F(PagePointer, ButtonsActWhenTheyAreReleasedInside) {
  show(horizontalStack({.spacing = 0}, {button(noting("a"), box(20, 20)), button(noting("b"), box(20, 20))}));
  const auto faint = [&] { return allOf<Layer>(host->drawings()).size(); };
  host->pointerDown({10, 10});
  EXPECT_EQ(faint(), 1u);
  EXPECT_EQ(log, "");
  host->pointerUp({30, 10});
  EXPECT_EQ(log, "");
  EXPECT_EQ(faint(), 0u);
  // A release that nobody told of.
  host->pointerDown({10, 10});
  host->pointerDown({30, 10});
  EXPECT_EQ(faint(), 1u);
  host->pointerUp({30, 10});
  EXPECT_EQ(log, "b");
  EXPECT_EQ(faint(), 0u);
  host->pointerUp({30, 10});
  EXPECT_EQ(log, "b");
}

TEST_F(PagePointer, HoverIsToldOnceEachWayAlsoWhenThePageMoves) {
  Model<int> model(0);
  show<int>(model, [&](int place) {
    const auto hover = [this](bool isOver) { log += isOver ? '+' : '-'; };
    return place < 0 ? box(9, 9)
                     : box(20, 20).onHover(hover).padding({double(place), 0, 0, 0}).animation(easeOut(1), place);
  });
  host->pointerMoved({5, 5});
  host->pointerMoved({6, 5});
  EXPECT_EQ(log, "+");
  set(model, 100, 2);
  EXPECT_EQ(log, "+-");
  set(model, 0, 2);
  EXPECT_EQ(log, "+-+");
  host->pointerExited();
  host->pointerExited();
  EXPECT_EQ(log, "+-+-");
  host->pointerMoved({5, 5});
  set(model, -1);
  EXPECT_EQ(log, "+-+-+-") << "it went from beneath the pointer";
}

TEST_F(PagePointer, ActionsMayRemoveTheirOwnView) {
  Model<bool> model(true);
  std::optional<State<int>> state;
  const auto part = Part{[&](Context& context) {
    const auto count = context.state("count", 0);
    state = count;
    const auto leave = [&, count, updates = context.updates()] {
      model.set(false);
      updates.withAnimation(easeOut(1), [&] { log += 'x'; });  // what changed before shows now: the view is gone
      count.set(count.get() + 1);
    };
    return box(20, 20).onTap(leave);
  }};
  show<bool>(model, [&](bool isThere) { return verticalStack({}, {isThere ? part : Element(), box(20, 20, blue)}); });
  EXPECT_EQ(clicked({10, 10}), "x");
  EXPECT_EQ(boxes().size(), 1u);
  EXPECT_EQ(state->get(), 1);
  EXPECT_EQ(clicked({10, 10}), "");
}

TEST_F(PagePointer, NothingOnItsWayOutIsMet) {
  Model<bool> model(true);
  show<bool>(model, [&](bool isThere) {
    return overlaidStack({}, {box(20, 20, blue).onTap(noting("b")).tooltip("behind"),
                              isThere ? box(20, 20).onTap(noting("f")).tooltip("front") : Element()})
        .animation(easeOut(1), isThere);
  });
  EXPECT_EQ(clicked({10, 10}), "f");
  EXPECT_EQ(host->tooltip({10, 10}), "front");
  set(model, false, 0.1);
  EXPECT_EQ(boxes().size(), 2u);
  EXPECT_EQ(clicked({10, 10}), "b");
  EXPECT_EQ(host->tooltip({10, 10}), "behind");
  EXPECT_EQ(host->tooltip({30, 10}), std::nullopt);
}

}  // namespace
}  // namespace hushpane::declarative
