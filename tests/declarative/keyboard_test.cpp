#include "tests/declarative/page_test.h"

namespace hushpane::declarative {
namespace {

using platform::Key;
using platform::KeyPress;
using platform::Rect;

constexpr platform::ModifierFlags shift = platform::modifier::shift;

class PageKeyboard : public PageTest {
 protected:
  Element target(char name, double width = 20) { return button(noting({name}), box(width, 20)); }
  bool press(Key key, platform::ModifierFlags modifiers = 0) {
    const bool isUsed = host->keyPressed({key, modifiers, {}});
    queue.drain();
    return isUsed;
  }
  // What Space does after each of so many Tabs.
  std::string walk(int steps, platform::ModifierFlags modifiers = 0) {
    log.clear();
    for (; steps > 0; --steps) {
      press(Key::tab, modifiers);
      press(Key::space);
    }
    return log;
  }
  std::vector<Drawing> rings() const { return allOf<StrokedPath>(host->drawings()); }
};

TEST_F(PageKeyboard, TabWalksThroughWhatCanBePressedAndSeen) {
  const Element row = horizontalStack({}, {target('b'), box(9, 9), box(20, 20).onTap(noting("c"))});
  const Element page = verticalStack(
      {}, {target('a').onHover([](bool) {}), row.background(target('d')), target('x').opacity(0), target('x').scale(0),
           target('x').accessibility({.isHidden = true}), button({}, box(9, 9)), target('e')});
  for (const bool isMirrored : {false, true}) {
    show(page, directed(isMirrored));
    EXPECT_FALSE(press(Key::space)) << "nothing has the focus at first";
    EXPECT_EQ(walk(7), "abcdeab");
    EXPECT_EQ(walk(4, shift), "aedc");
    EXPECT_FALSE(press(Key::tab, platform::modifier::option));
    EXPECT_FALSE(press(Key::escape));
    EXPECT_FALSE(press(Key::left));
  }
  show(page);
  EXPECT_EQ(walk(1, shift), "e");
  show(box(9, 9));
  EXPECT_FALSE(press(Key::tab)) << "where nothing can be pressed";
}

TEST_F(PageKeyboard, ARingShowsTheFocusInFrontOfEverythingUntilThePointerIsUsed) {
  Environment environment;
  environment.accent = blue;
  const Element capsule = button(noting("a"), box(60, 20).contentShape(Capsule{}));
  show(horizontalStack({.spacing = 10}, {capsule.clip(Capsule{}).padding(10), target('b')}), environment);
  EXPECT_TRUE(rings().empty());
  host->takeDamage();
  press(Key::tab);
  ASSERT_EQ(rings().size(), 1u);
  EXPECT_EQ(std::get<StrokedPath>(host->drawings().back().what).color, blue.light);
  EXPECT_EQ(std::get<StrokedPath>(host->drawings().back().what).stroke.width, 2);
  EXPECT_EQ(host->drawings().back().extent, (Rect{7, 7, 66, 26}));
  EXPECT_EQ(host->takeDamage(), (Rect{7, 7, 66, 26}));
  environment.accent = red;
  host->setEnvironment(environment);
  queue.drain();
  EXPECT_EQ(std::get<StrokedPath>(host->drawings().back().what).color, red.light);
  press(Key::tab);
  EXPECT_EQ(rings().size(), 1u);
  EXPECT_EQ(rings()[0].extent.right(), 110) << "inside the page";
  host->pointerDown({40, 20});
  EXPECT_TRUE(rings().empty());
  EXPECT_FALSE(press(Key::space));
  EXPECT_EQ(walk(1), "b") << "Tab goes on from what was pressed";
  host->pointerDown({2, 2});
  EXPECT_TRUE(rings().empty()) << "after a press beside everything, too";
}

TEST_F(PageKeyboard, AGroupIsOneStopInWhichArrowsChoose) {
  Model<int> model(1);
  for (const bool isMirrored : {false, true}) {
    model.set(1);
    log.clear();
    const auto page = [&](int chosen) {
      std::vector<Element> choices;
      for (int value = 0; value < 3; ++value)
        choices.push_back(box(20, 20, value == chosen ? blue : red)
                              .onTap([&model, value] { model.set(value); })
                              .accessibility({.isOn = value == chosen}));
      return verticalStack({}, {target('a'), horizontalStack({}, choices).focusGroup(), target('b')});
    };
    show<int>(model, page, directed(isMirrored));
    press(Key::tab);
    press(Key::tab);
    const auto forwards = isMirrored ? Key::left : Key::right;
    const auto backwards = isMirrored ? Key::right : Key::left;
    const auto after = [&](Key key) {
      EXPECT_TRUE(press(key));
      return model.get();
    };
    EXPECT_EQ(after(forwards), 2) << "beginning at the one that is on";
    EXPECT_EQ(after(forwards), 2) << "the last one";
    EXPECT_EQ(after(backwards), 1);
    EXPECT_EQ(after(Key::home), 0);
    EXPECT_EQ(after(Key::down), 1);
    EXPECT_EQ(walk(1), "b");
    EXPECT_EQ(walk(2, shift), "a");
    model.set(7);
    press(Key::tab);
    EXPECT_EQ(after(Key::space), 0) << "the first, while none is on";
  }
}

TEST_F(PageKeyboard, TheFocusStaysWithItsElementAndGoesWithIt) {
  Model<std::string> model("abcd");
  show<std::string>(model, [&](const std::string& names) {
    std::vector<Element> targets;
    for (const char name : names) targets.push_back(target(name).id(name));
    return horizontalStack({}, std::move(targets)).animation(easeOut(1), names);
  });
  EXPECT_EQ(walk(3), "abc");
  set(model, "xcda");
  press(Key::space);
  EXPECT_EQ(log, "abcc");
  EXPECT_EQ(rings().size(), 1u);
  set(model, "xda", 0.1);
  EXPECT_TRUE(rings().empty()) << "also while it is on its way out";
  EXPECT_FALSE(press(Key::space));
  EXPECT_EQ(walk(1), "a") << "near the third, where it was";
  set(model, "", 2);
  EXPECT_FALSE(press(Key::tab));
}

TEST_F(PageKeyboard, WhatShowsUnderThePointerShowsAroundTheFocusToo) {
  const auto slot = [this](char name, char inner) {
    return Part{[=, this](Context& context) {
      const auto isHovered = context.state("isHovered", false);
      return overlaidStack(alignment::topTrailing, {target(name, 40), isHovered.get() ? target(inner, 10) : Element()})
          .onHover([isHovered](bool isOver) { isHovered.set(isOver); });
    }};
  };
  show(horizontalStack({.spacing = 0}, {slot('a', '1'), slot('b', '2')}));
  EXPECT_EQ(walk(4), "a1b2");
  EXPECT_EQ(boxes().size(), 3u);
  host->pointerDown({100, 100});
  queue.drain();
  EXPECT_EQ(boxes().size(), 2u);
}

TEST_F(PageKeyboard, MenusAskForTheirEntriesToBeShown) {
  std::vector<MenuRequest> requests;
  Host::Services services{queue, clock, texts, [&](const auto& request) { requests.push_back(request); }};
  const Element page =
      menu({{.title = "One", .isChecked = true, .action = noting("1")}, {"", false, true, {}}}, box(40, 20))
          .padding({5, 30, 5, 10});
  host = std::make_unique<Host>(services, page, Environment{}, [] {});
  EXPECT_FALSE(allOf<StrokedPath>(host->drawings()).empty()) << "the sign";
  click({35, 15});
  press(Key::tab);
  for (const auto key : {Key::down, Key::space, Key::returnKey}) EXPECT_TRUE(press(key));
  ASSERT_EQ(requests.size(), 4u);
  for (const auto& request : requests) {
    EXPECT_EQ(request.anchor, (Rect{30, 5, request.anchor.width, 20}));
    EXPECT_NEAR(request.anchor.right(), host->size().width - 10, 0.01);
    ASSERT_EQ(request.entries.size(), 2u);
    EXPECT_TRUE(request.entries[0].isChecked);
  }
  requests[0].entries[0].action();
  EXPECT_EQ(log, "1");
}

TEST_F(PageKeyboard, APressMayEndThePage) {
  show(horizontalStack({}, {button([this] { host.reset(); }, box(9, 9)), target('b')}).focusGroup());
  press(Key::tab);
  press(Key::right);
  EXPECT_EQ(log, "b");
  EXPECT_TRUE(host->keyPressed({.key = Key::left}));
  EXPECT_EQ(host, nullptr);
}

}  // namespace
}  // namespace hushpane::declarative
