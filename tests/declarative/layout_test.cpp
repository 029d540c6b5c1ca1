#include "tests/declarative/page_test.h"

namespace hushpane::declarative {
namespace {

using platform::Rect;
using platform::Size;

class PageLayout : public PageTest {
 protected:
  std::vector<Rect> framesOf(const Element& page, ProposedSize proposal = {}) {
    show(page);
    host->setProposal(proposal);
    host->update();
    return boxes();
  }
  std::vector<Rect> textFrames() const {
    std::vector<Rect> frames;
    for (const auto& drawing : allOf<DrawnText>(host->drawings())) frames.push_back(drawing.frame);
    return frames;
  }
};

const Element flexible = fill(Rectangle{}, red);

TEST_F(PageLayout, StacksPartTheirLengthAmongThoseThatBend) {
  struct Case {
    const char* what;
    Element page;
    std::vector<double> x, widths;
  };
  const std::vector<Case> cases{
      {"equal parts", horizontalStack({.spacing = 10}, {flexible, flexible, flexible}), {0, 110, 220}, {100, 100, 100}},
      {"what is fixed comes first",
       horizontalStack({.spacing = 0}, {flexible, box(120, 10), flexible}),
       {0, 100, 220},
       {100, 120, 100}},
      {"the bounded before the free",
       horizontalStack({.spacing = 0}, {flexible, flexible.frame({.maxWidth = 50})}),
       {0, 270},
       {270, 50}},
      {"at least its least",
       horizontalStack({.spacing = 0}, {flexible, flexible.frame({.minWidth = 200})}),
       {0, 120},
       {120, 200}},
      {"a spacer keeps its least length",
       horizontalStack({.spacing = 0}, {box(150, 9), spacer(20), box(170, 9)}),
       {0, 170},
       {150, 170}},
      {"a spacer takes the rest",
       horizontalStack({.spacing = 0}, {box(50, 9), spacer(), box(50, 9)}),
       {0, 270},
       {50, 50}},
      {"nothing takes no spacing",
       horizontalStack({.spacing = 10}, {box(50, 9), Element(), box(50, 9)}),
       {0, 60},
       {50, 50}},
      {"too much",
       horizontalStack({.spacing = 10}, {box(300, 9), flexible, box(300, 9)}),
       {0, 310, 320},
       {300, 0, 300}},
      {"in a wide frame", box(20, 9).frame({.maxWidth = infinity, .alignment = alignment::leading}), {0}, {20}},
      {"in a wide frame, in the middle", box(20, 9).frame({.maxWidth = infinity}), {150}, {20}},
      {"as it likes", flexible.fixedSize(), {0}, {10}},
      {"behind",
       box(100, 20).background(flexible.padding(-0.0).frame({.width = 10}), alignment::topTrailing),
       {90, 0},
       {10, 100}},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.what);
    const auto frames = framesOf(test.page, {320, 50});
    ASSERT_EQ(frames.size(), test.x.size());
    for (std::size_t index = 0; index < frames.size(); ++index) {
      EXPECT_DOUBLE_EQ(frames[index].x, test.x[index]);
      EXPECT_DOUBLE_EQ(frames[index].width, test.widths[index]);
    }
  }
}

TEST_F(PageLayout, AlignsChildrenByEdgesAndBaselines) {
  using enum HorizontalAlignment;
  for (const auto& [side, x] : {std::pair(leading, 0.0), {center, 45.0}, {trailing, 90.0}})
    EXPECT_EQ(framesOf(verticalStack({.alignment = side}, {box(100, 10), box(10, 10)}))[1].x, x);
  for (const auto& [side, y] :
       {std::pair(VerticalAlignment::top, 0.0), {VerticalAlignment::center, 10.0}, {VerticalAlignment::bottom, 20.0}})
    EXPECT_EQ(framesOf(horizontalStack({.alignment = side}, {box(10, 30), box(10, 10)}))[1].y, y);

  const auto small = text("small", platform::Font{.size = 12});
  const std::vector<Element> others{text("large", platform::Font{.size = 24}),
                                    small.padding(7),
                                    small.frame({.width = 50, .height = 40}),
                                    small.overlay(text("x", platform::Font{.size = 40})),
                                    verticalStack({.spacing = 3}, {small.frame({.height = 20}), small}),
                                    horizontalStack({}, {small, box(10, 80)}),
                                    Part{[=](Context&) { return small.fixedSize(); }}};
  for (const auto& other : others) {
    show(horizontalStack({.alignment = VerticalAlignment::firstTextBaseline}, {small, other, box(5, 30)}));
    std::vector<double> bases;
    for (const auto& drawing : allOf<DrawnText>(host->drawings()))
      bases.push_back(drawing.frame.y + std::get<DrawnText>(drawing.what).layout->firstBaseline());
    ASSERT_GE(bases.size(), 2u);
    EXPECT_NEAR(bases[0], bases[1], 1) << "both on one line, each on a whole pixel";
    EXPECT_NEAR(boxes().back().bottom(), bases[0], 1) << "what has no text stands on it";
    for (const auto& frame : textFrames()) EXPECT_LE(frame.bottom(), host->size().height + 20);
  }
}

TEST_F(PageLayout, TextsWrapWithinWhatTheyAreOffered) {
  const auto page = verticalStack(
      {.alignment = HorizontalAlignment::leading, .spacing = 0},
      {text("one two three four five six", platform::Font{.size = 10}).frame({.maxWidth = 60}).fixedSize(false, true),
       text("one two three four five six", platform::Font{.size = 10}).fixedSize()});
  framesOf(page, {100, 10});
  const auto frames = textFrames();
  EXPECT_LE(frames[0].width, 60);
  EXPECT_GE(frames[0].height, 30);
  EXPECT_EQ(frames[1].height, 10);
  EXPECT_GT(frames[1].width, 100);
  EXPECT_EQ(frames[1].y, frames[0].bottom());

  // Nor is a text narrowed for a spacer.
  framesOf(horizontalStack({.spacing = 0}, {text("one two three", platform::Font{.size = 10}), spacer(), box(50, 9)}),
           {130, 10});
  EXPECT_EQ(textFrames()[0].height, 10);

  EXPECT_EQ(framesOf(flexible.fixedSize(false, true), {100, 50}), (std::vector<Rect>{{0, 0, 100, 10}}));

  // Ten thousand letters move nothing out of its place.
  std::string letters;
  while (letters.size() < 10'000) letters += "letters and ";
  show(horizontalStack({.spacing = 0}, {text(letters).frame({.height = 20}), box(50, 20)}).frame({.width = 300}));
  EXPECT_EQ(host->size(), (Size{300, 20}));
  EXPECT_LE(boxes()[0].right(), 300);
  EXPECT_GE(boxes()[0].right(), 250);
}

TEST_F(PageLayout, AnyOfferGivesFiniteSizes) {
  const auto stack = verticalStack(
      {}, {flexible, text("some words"), horizontalStack({}, {flexible, spacer(), divider(), text("words")}),
           flexible.frame({.minWidth = 30, .maxWidth = infinity, .maxHeight = infinity}).padding(20), spacer(),
           flexible.fixedSize(false, true), overlaidStack({}, {flexible, text("a")}).scale(0),
           stroke(Circle{}, red, 1).scale(0), stroke(Circle{}, red, 1).overlay(text("over")), verticalStack({}, {}),
           picture(nullptr)});
  const auto isFinite = [](const Rect& rect) {
    return std::isfinite(rect.x) && std::isfinite(rect.y) && std::isfinite(rect.width) && std::isfinite(rect.height) &&
           rect.width >= 0 && rect.height >= 0;
  };
  const std::vector<std::optional<double>> sides{std::nullopt, 0.0, 0.3, 100.0, 1e7, infinity};
  for (const auto& width : sides) {
    for (const auto& height : sides) {
      framesOf(stack, {width, height});
      const std::function<void(const Drawings&)> check = [&](const Drawings& drawings) {
        for (const auto& drawing : drawings) {
          EXPECT_TRUE(isFinite(drawing.frame)) << width.value_or(-1) << " x " << height.value_or(-1);
          if (const auto* path = std::get_if<StrokedPath>(&drawing.what)) {
            EXPECT_TRUE(isFinite(path->path.controlBounds()));
          }
          check(drawing.children);
        }
      };
      check(host->drawings());
      EXPECT_TRUE(isFinite({0, 0, host->size().width, host->size().height}));
    }
  }
}

TEST_F(PageLayout, AsksForFewTextLayouts) {
  int texted = 0;
  const std::function<Element(int)> nested = [&](int depth) -> Element {
    if (depth == 0) return text("some words " + std::to_string(++texted)).padding(2);
    std::vector<Element> row{nested(depth - 1), spacer(), nested(depth - 1)};
    return (depth % 2 ? verticalStack({}, row) : horizontalStack({}, row)).frame({.maxWidth = infinity});
  };
  const auto page = nested(6);
  Model<int> model(0);
  show<int>(model, [&](int) { return page; });
  host->setProposal({400, 600});
  texts.calls = 0;
  host->update();
  EXPECT_EQ(texted, 64);
  EXPECT_LE(texts.calls, texted * 8);
  changes = 0;
  set(model, 1);
  EXPECT_EQ(changes, 0) << "texts that are set as before are not drawn anew";
}

}  // namespace
}  // namespace hushpane::declarative
