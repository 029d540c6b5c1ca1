#include "tests/declarative/page_test.h"

namespace hushpane::declarative {
namespace {

using platform::Rect;

class PageDrawing : public PageTest {};

bool isIn(const Rect& inner, const Rect& outer) {
  return unionOf(inner, outer) == outer;
}

TEST_F(PageDrawing, DamageIsWhatChanged) {
  struct Case {
    const char* what;
    std::function<Element(bool)> make;
    Rect damage;
  };
  constexpr platform::Point below{0, 3}, beside{100, 0};
  const auto color = [](bool is) { return is ? red : blue; };
  const std::vector<Case> cases{
      {"nothing", [](bool) { return text("words"); }, {}},
      {"a colour", [&](bool is) { return box(10, 10, color(is)); }, {20, 20, 10, 10}},
      {"within a fade, among others",
       [&](bool is) {
         return overlaidStack({}, {box(50, 50), box(10, 10, color(is))}).opacity(0.5);
       },
       {40, 40, 10, 10}},
      {"one more among others",
       [](bool is) {
         return overlaidStack(alignment::topLeading, {box(50, 50), is ? box(5, 5, blue) : Element(), box(9, 9)});
       },
       {20, 20, 5, 5}},
      {"a move: where it was and where it is",
       [](bool is) { return box(10, 10).offset(is ? 30 : 0, 0); },
       {20, 20, 40, 10}},
      {"with its shadow", [&](bool is) { return box(10, 10, color(is)).shadow(red, 5, below); }, {5, 8, 40, 40}},
      {"a shadow alone", [&](bool is) { return box(10, 10).shadow(color(is), 5, beside); }, {20, 5, 125, 40}},
      {"a blur", [](bool is) { return box(10, 10).blur(is ? 2 : 0); }, {14, 14, 22, 22}},
      {"scaled", [](bool is) { return box(10, 10).scale(is ? 1.2 : 1); }, {19, 19, 12, 12}},
      {"no further than its clip",
       [&](bool is) { return box(10, 10, color(is)).scale(3).frame({.width = 14, .height = 14}).clip(Rectangle{}); },
       {20, 20, 14, 14}},
  };
  for (const auto& test : cases) {
    for (const bool isMirrored : {false, true}) {
      Model<bool> model(false);
      show<bool>(
          model, [&](bool is) { return test.make(is).padding(20); }, directed(isMirrored));
      EXPECT_TRUE(isIn({20, 20, 1, 1}, host->takeDamage())) << "everything at first";
      EXPECT_EQ(host->takeDamage(), Rect{});
      set(model, true);
      EXPECT_EQ(changes, test.damage.area() > 0 ? 1 : 0) << test.what;
      changes = 0;
      Rect expected = test.damage;
      if (isMirrored && expected.area() > 0) expected.x = host->size().width - expected.right();
      const Rect damage = host->takeDamage();
      EXPECT_NEAR(damage.x, expected.x, 1e-9) << test.what;
      EXPECT_NEAR(damage.y, expected.y, 1e-9) << test.what;
      EXPECT_NEAR(damage.width, expected.width, 1e-9) << test.what;
      EXPECT_NEAR(damage.height, expected.height, 1e-9) << test.what;
    }
  }
}

// Whoever shows the page has to learn that it grew, also when nothing is seen of that.
TEST_F(PageDrawing, ALargerPageIsAChange) {
  Model<double> model(0);
  show<double>(model, [](double below) { return box(10, 10).padding({0, 0, below, 0}); });
  set(model, 5);
  EXPECT_EQ(host->size().height, 15);
  EXPECT_EQ(changes, 1);
}

TEST_F(PageDrawing, EverythingAtRestLiesOnWholePixels) {
  const auto page = verticalStack({.alignment = HorizontalAlignment::leading, .spacing = 1.3},
                                  {box(10.7, 3.1), box(7, 3.3).padding({0, 0.4, 0, 0}),
                                   text("words", platform::Font{.size = 11}).padding({0, 0.7, 0, 0}), box(10, 10)});
  for (const double scale : {1.0, 1.25, 1.5, 2.0}) {
    for (const bool isMirrored : {false, true}) {
      show(page, directed(isMirrored));
      host->takeDamage();
      host->setScale(scale);
      if (scale != 1) {
        EXPECT_TRUE(isIn(extentOf(host->drawings()), host->takeDamage())) << "all of it has other pixels";
      }
      ASSERT_EQ(host->drawings().size(), 4u);
      for (const auto& drawing : host->drawings()) {
        const double x = drawing.frame.x * scale, y = drawing.frame.y * scale;
        EXPECT_NEAR(x, std::round(x), 1e-9);
        EXPECT_NEAR(y, std::round(y), 1e-9);
        if (scale != std::round(scale)) {
          const double right = drawing.frame.right() * scale, bottom = drawing.frame.bottom() * scale;
          EXPECT_NEAR(right, std::round(right), 1e-9);
          EXPECT_NEAR(bottom, std::round(bottom), 1e-9);
        }
        if (const auto* fill = std::get_if<FilledPath>(&drawing.what)) {
          EXPECT_NEAR(fill->path.controlBounds().x, drawing.frame.x, 1e-9);
        }
      }
    }
  }
  // On its way, it goes in parts of pixels.
  Model<int> model(0);
  show<int>(model, [](int x) { return box(10, 10).offset(x, 0).animation(easeOut(1), x); });
  set(model, 10, 0.25);
  EXPECT_NE(boxes()[0].x, std::round(boxes()[0].x));
}

// The outer edge of a line of one point comes to a whole pixel, not further than one from where it should be.
TEST_F(PageDrawing, LinesAreSharp) {
  for (const double scale : {1.0, 1.25, 1.5, 2.0}) {
    for (const double inset : {0.0, 0.5}) {
      show(stroke(RoundedRectangle{4}, red, 1, inset).frame({.width = 40, .height = 20}));
      host->setScale(scale);
      const auto line = allOf<StrokedPath>(host->drawings()).at(0);
      const auto outline = std::get<StrokedPath>(line.what).path.controlBounds();
      const double edge = (outline.x - 0.5) * scale;
      EXPECT_NEAR(edge, std::round(edge), 1e-9) << scale;
      EXPECT_LE(std::abs(outline.x - inset) * scale, 0.5 + 1e-9) << scale;
      EXPECT_TRUE(isIn({outline.x - 0.5, outline.y - 0.5, outline.width + 1, outline.height + 1}, line.extent));
    }
    show(divider().frame({.width = 40}));
    host->setScale(scale);
    const double thickness = boxes()[0].height * scale;
    EXPECT_NEAR(thickness, std::round(thickness), 1e-9);
    EXPECT_GE(thickness, 1);
  }
}

TEST_F(PageDrawing, MirroredPagesTurnWhatIsDrawnButNotWhatIsRead) {
  const AdaptiveGradient gradient{red, blue, {0, 0}, {1, 0}};
  show(horizontalStack({.spacing = 0},
                       {text("words", platform::Font{.size = 10}),
                        fill(Rectangle{}, gradient).frame({.width = 30, .height = 10}), box(20, 10).offset(3, 0)}),
       directed(true));
  const auto word = allOf<DrawnText>(host->drawings()).at(0);
  EXPECT_EQ(word.frame, (Rect{50, 0, 25, 10}));
  EXPECT_EQ(std::get<DrawnText>(word.what).origin.x, 50);
  EXPECT_EQ(boxes(), (std::vector<Rect>{{20, 0, 30, 10}, {-3, 0, 20, 10}}));
  const auto paint =
      std::get<platform::LinearGradient>(std::get<FilledPath>(allOf<FilledPath>(host->drawings()).at(0).what).paint);
  EXPECT_EQ(paint.start.x, 50);
  EXPECT_EQ(paint.end.x, 20);
}

TEST_F(PageDrawing, LooksMoveThroughColoursWithoutGoingAstray) {
  Model<bool> model(false);
  show<bool>(model, [](bool isOn) {
    return fill(Circle{}, isOn ? red : clear)
        .shadow(isOn ? red : clear, 5)
        .saturation(0.5)
        .opacity(isOn ? 1 : 0.2)
        .frame({.width = 10, .height = 10})
        .animation(spring(0.4, 0.3), isOn);
  });
  EXPECT_TRUE(boxes().empty()) << "what is clear is not drawn";
  set(model, true);
  for (int frame = 0; frame < 60; ++frame) {
    queue.advance(1.0 / 60);
    for (const auto& drawing : allOf<FilledPath>(host->drawings())) {
      const auto color = std::get<platform::Color>(std::get<FilledPath>(drawing.what).paint);
      EXPECT_EQ(color.red, 1) << "a clear colour has no hue";
      EXPECT_LE(color.alpha, 1);
    }
    for (const auto& drawing : allOf<Layer>(host->drawings())) {
      EXPECT_LE(std::get<Layer>(drawing.what).effect.opacity, 1);
    }
  }
}

}  // namespace
}  // namespace hushpane::declarative
