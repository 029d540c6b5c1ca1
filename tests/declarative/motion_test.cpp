#include "tests/declarative/page_test.h"

namespace hushpane::declarative {
namespace {

using platform::Rect;

class PageMotion : public PageTest {};

struct Picker {
  Element body(Context& context) const {
    const auto selected = context.state("selected", 0);
    const auto updates = context.updates();
    std::vector<Element> highlights, titles;
    for (int index = 0; index < 3; ++index) {
      highlights.push_back((index == selected.get()
                                ? fill(Capsule{}, fixed({1, 0, 0, 1})).matchedGeometry({"pill", context.nameSpace()})
                                : Element())
                               .id(index));
      titles.push_back(text("item").frame({.width = 40, .height = 20}).contentShape(Rectangle{}).onTap([=] {
        updates.withAnimation(spring(0.4, 0.8), [=] { selected.set(index); });
      }));
    }
    for (int index = 0; index < 3; ++index)
      highlights[index] = overlaidStack({}, {highlights[index]}).frame({.width = 40, .height = 20});
    return overlaidStack({}, {horizontalStack({.spacing = 0}, highlights), horizontalStack({.spacing = 0}, titles)});
  }
};

TEST_F(PageMotion, MatchedHighlightMovesAsOne) {
  show(Picker{});
  const auto highlight = [&] {
    const auto fills = allOf<FilledPath>(host->drawings());
    EXPECT_EQ(fills.size(), 1u);
    return fills.empty() ? Rect{} : fills.front().frame;
  };
  EXPECT_EQ(highlight(), (Rect{0, 0, 40, 20}));
  EXPECT_FALSE(clock.isRunning());
  click({100, 10});
  EXPECT_TRUE(clock.isRunning());
  double last = highlight().x;
  EXPECT_EQ(last, 0);
  queue.advance(0.1);
  EXPECT_GT(highlight().x, 5);
  EXPECT_LT(highlight().x, 80);
  // Back while it is on its way: it turns round where it is, with the speed that it has.
  const double before = highlight().x;
  click({20, 10});
  EXPECT_NEAR(highlight().x, before, 0.01);
  queue.advance(1.0 / 60);
  EXPECT_GT(highlight().x, before);
  queue.advance(3);
  EXPECT_EQ(highlight(), (Rect{0, 0, 40, 20}));
  EXPECT_FALSE(clock.isRunning());
}

}  // namespace
}  // namespace hushpane::declarative
