#include "tests/declarative/page_test.h"

namespace hushpane::declarative {
namespace {

class PageMotion : public PageTest {};

TEST_F(PageMotion, AMatchedHighlightMovesAsOneAndTurnsWithItsSpeed) {
  Model<int> model(0);
  show<int>(model, [](int selected) {
    std::vector<Element> items;
    for (int index = 0; index < 3; ++index) {
      const auto pill = index == selected ? fill(Capsule{}, red).matchedGeometry({"pill", 1}) : Element();
      items.push_back(overlaidStack({}, {text("item").frame({.width = 40, .height = 20}), pill})
                          .frame({.width = 40, .height = 20}));
    }
    return horizontalStack({.spacing = 0}, items).animation(spring(0.4, 0.8), selected);
  });
  const auto place = [&] {
    EXPECT_EQ(boxes().size(), 1u);
    return boxes().at(0).x;
  };
  set(model, 2);
  EXPECT_EQ(place(), 0);
  queue.advance(0.1);
  const double before = place();
  EXPECT_GT(before, 5);
  EXPECT_LT(before, 80);
  set(model, 0);
  EXPECT_NEAR(place(), before, 0.01);
  queue.advance(1.0 / 60);
  EXPECT_GT(place(), before);
  queue.advance(3);
  EXPECT_EQ(boxes(), (std::vector<platform::Rect>{{0, 0, 40, 20}}));
  EXPECT_FALSE(clock.isRunning());
}

// Solves x'' = -2 d w x' - w^2 x by the midpoint method, a hundred steps a millisecond.
std::pair<double, double> integrated(double displacement, double velocity, const Spring& spring, double seconds) {
  const double frequency = 2 * 3.14159265358979323846 / spring.response;
  double x = displacement, v = velocity;
  const auto acceleration = [&](double at, double speed) {
    return -2 * spring.dampingFraction * frequency * speed - frequency * frequency * at;
  };
  constexpr double step = 0.00001;
  for (int count = 0; count < std::lround(seconds / step); ++count) {
    const double middleX = x + step / 2 * v, middleV = v + step / 2 * acceleration(x, v);
    x += step * middleV;
    v += step * acceleration(middleX, middleV);
  }
  return {x, v};
}

TEST(Motion, SpringFollowsItsEquationAlsoWhenItIsSentElsewhere) {
  for (const double damping : {0.0, 0.3, 0.85, 0.999999, 1.0, 1.000001, 2.5}) {
    SCOPED_TRACE(damping);
    const Spring course{0.5, damping};
    Motion motion({0, 50});
    motion.animate({100, 50}, {course}, 10);
    motion.advance(10.15);
    const auto [away, speed] = integrated(-100, 0, course, 0.15);
    EXPECT_NEAR(motion.current()[0], 100 + away, 1e-4);
    EXPECT_NEAR(motion.velocity()[0], speed, 1e-3);
    EXPECT_EQ(motion.current()[1], 50);

    motion.animate({-20, 50}, {course}, 10.15);
    EXPECT_NEAR(motion.current()[0], 100 + away, 1e-4);
    motion.advance(10.35);
    const auto [later, laterSpeed] = integrated(120 + away, speed, course, 0.2);
    EXPECT_NEAR(motion.current()[0], -20 + later, 1e-3);
    EXPECT_NEAR(motion.velocity()[0], laterSpeed, 1e-2);

    motion.advance(10 + 60);
    EXPECT_EQ(motion.isMoving(), damping == 0);
    if (damping > 0) {
      EXPECT_EQ(motion.current(), (Numbers{-20, 50}));
    }
  }
}

TEST(Motion, CurvesEndInTimeAndGiveTheirSpeedToSprings) {
  Motion motion({0});
  motion.animate({100}, easeInOut(2), 0);
  motion.advance(1);
  EXPECT_NEAR(motion.current()[0], 50, 0.01);
  const double speed = motion.velocity()[0];
  EXPECT_GT(speed, 50);
  motion.animate({50}, spring(0.5, 1), 1);
  motion.advance(1.01);
  EXPECT_NEAR((motion.current()[0] - 50) / 0.01, speed, speed * 0.2) << "it goes on before it turns";
  motion.animate({0}, easeOut(1), 2);
  motion.advance(2.999);
  EXPECT_TRUE(motion.isMoving());
  motion.advance(3);
  EXPECT_FALSE(motion.isMoving());
  EXPECT_EQ(motion.current(), Numbers{0});

  motion.animate({10}, repeatingForever(easeInOut(1)), 0);
  for (const double time : {0.0, 0.2, 0.7, 1.0}) {
    motion.advance(time);
    const double there = motion.current()[0];
    motion.advance(2 - time);
    EXPECT_NEAR(motion.current()[0], there, 1e-6) << time;
    motion.advance(1000 + time);
    EXPECT_NEAR(motion.current()[0], there, 1e-6) << time;
    EXPECT_TRUE(motion.isMoving());
  }
  motion.advance(1);
  EXPECT_NEAR(motion.current()[0], 10, 1e-6);
}

// Three boxes one behind the other, each said to move in another way, pushed by a fourth.
struct PushedRow {
  bool hasTransaction = false;
  Element body(Context& context) const {
    const auto isWide = context.state("isWide", false);
    const auto change = [isWide] { isWide.set(!isWide.get()); };
    const auto tap = [=, *this, updates = context.updates()] {
      if (hasTransaction)
        updates.withAnimation(easeOut(1), change);
      else
        change();
    };
    return horizontalStack({.spacing = 0}, {box(isWide.get() ? 110 : 10, 10).onTap(tap), box(10, 10),
                                            box(10, 10).animation(easeOut(2), isWide.get()), box(10, 10).unanimated(),
                                            box(10, 10).animation(easeOut(2), 0)});
  }
};

TEST_F(PageMotion, TransactionsValuesAndClearedTransactionsEachHaveTheirWay) {
  const auto far = [&] {
    std::vector<double> shares;
    for (const auto& frame : boxes()) shares.push_back((frame.x - 10.0 * static_cast<double>(shares.size())) / 100);
    return std::vector<double>(shares.begin() + 1, shares.end());
  };
  const auto part = [](double fraction) { return evaluate(platform::TimingFunction::easeOut, fraction); };
  for (const bool hasTransaction : {false, true}) {
    show(PushedRow{hasTransaction});
    click({5, 5});
    queue.advance(0.5);
    const double inherited = hasTransaction ? part(0.5) : 1;
    const std::vector<double> expected{inherited, part(0.25), 1, inherited};
    const auto now = far();
    ASSERT_EQ(now.size(), expected.size());
    for (std::size_t index = 0; index < now.size(); ++index) EXPECT_NEAR(now[index], expected[index], 0.01) << index;
    queue.advance(2);
    EXPECT_EQ(far(), (std::vector<double>{1, 1, 1, 1}));
    EXPECT_FALSE(clock.isRunning());
    const auto frames = clock.frameCount();
    queue.advance(5);
    EXPECT_EQ(clock.frameCount(), frames);
  }
}

TEST_F(PageMotion, EveryTransactionOfATurnKeepsItsOwnTime) {
  show(Part{[](Context& context) {
    const auto fast = context.state("fast", 0), slow = context.state("slow", 0), sudden = context.state("sudden", 0);
    return overlaidStack(alignment::topLeading, {box(10, 10).offset(fast.get(), 0), box(10, 10).offset(slow.get(), 0),
                                                 box(10, 10).offset(sudden.get(), 0)})
        .onAppear([=, updates = context.updates()] {
          sudden.set(100);
          updates.withAnimation(easeOut(1), [=] { fast.set(100); });
          updates.withAnimation(repeatingForever(easeOut(4)), [=] { slow.set(100); });
        });
  }});
  EXPECT_EQ(boxes()[2].x, 100);
  queue.advance(1.1);
  EXPECT_EQ(boxes()[0].x, 100);
  EXPECT_GT(boxes()[1].x, 20);
  EXPECT_LT(boxes()[1].x, 60);
  queue.advance(6.9 + 0.001);
  EXPECT_LT(boxes()[1].x, 1) << "there and back again";
  EXPECT_TRUE(clock.isRunning());
}

TEST_F(PageMotion, AnAnimationServesTheChangeItIsMeantFor) {
  Model<int> value(0), push(0);
  std::function<void()> move;
  const Part pushing{[&](Context& context) {
    context.observe(push);
    return box(10 + push.get(), 10, blue);
  }};
  show(Part{[&](Context& context) {
    context.observe(value);
    const auto offset = context.state("offset", 0);
    move = [offset, updates = context.updates()] { updates.withAnimation(easeOut(1), [offset] { offset.set(100); }); };
    return horizontalStack({.spacing = 0},
                           {pushing, box(10, 10).offset(offset.get(), 0).animation(easeOut(1), value.get())});
  }});
  set(value, 1, 2);
  set(push, 50);
  EXPECT_EQ(boxes()[1].x, 60) << "the value changed earlier, not now";
  move();
  set(push, 50);
  EXPECT_EQ(boxes()[1].x, 60) << "an announcement in the same turn does not take the transaction back";
  queue.advance(2);
  EXPECT_EQ(boxes()[1].x, 160);
}

TEST_F(PageMotion, MotionUnderWayGoesOnUntilItsTargetChanges) {
  Model<std::pair<int, int>> model({0, 0});  // the offset of the first box, and the height of the second
  show<std::pair<int, int>>(model, [](const auto& shown) {
    return verticalStack({.spacing = 0}, {box(10, 10).padding({0, double(shown.first), 0, 0}), box(10, shown.second)})
        .animation(easeOut(1), shown.first / 100);
  });
  set(model, {100, 0}, 0.5);
  const double halfway = boxes()[0].x;
  EXPECT_GT(halfway, 10);
  set(model, {100, 30});
  EXPECT_NEAR(boxes()[0].x, halfway, 2) << "it goes on";
  EXPECT_EQ(boxes()[1].height, 30) << "what changed without an animation is there at once";
  queue.advance(0.25);
  EXPECT_GT(boxes()[0].x, halfway);
  set(model, {150, 30});
  EXPECT_EQ(boxes()[0].x, 150) << "another target without an animation ends it";
  EXPECT_FALSE(clock.isRunning());
}

}  // namespace
}  // namespace hushpane::declarative
