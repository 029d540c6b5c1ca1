#include <array>
#include <map>
#include <optional>

#include "tests/declarative/page_test.h"

namespace hushpane::declarative {
namespace {

using namespace platform;

class PageState : public PageTest {};

TEST_F(PageState, OnlyViewsThatObserveAChangeAreRebuilt) {
  Model<int> first(1), second(1);
  int outer = 0;
  std::array<int, 2> inner{};
  const auto part = [&](Model<int>& model, int& count) {
    return Part{[&](Context& context) {
      context.observe(model);
      ++count;
      return box(model.get(), 10);
    }};
  };
  show(Part{[&](Context&) {
    ++outer;
    return verticalStack({}, {part(first, inner[0]), part(second, inner[1])});
  }});
  second.set(20);
  set(second, 30);
  EXPECT_EQ(outer, 1);
  EXPECT_EQ(inner, (std::array{1, 2}));
  EXPECT_EQ(boxes()[1].width, 30);
  set(second, 40);
  EXPECT_EQ(second.told, 3) << "each of its renderings replaces what it observed before";
  host->setEnvironment({.appearance = Appearance::dark});
  queue.drain();
  EXPECT_EQ(outer, 2);
  EXPECT_EQ(inner, (std::array{2, 4})) << "a view is rendered once, also with the one around it";
}

TEST_F(PageState, StateBelongsToTheIdentity) {
  Model<std::vector<int>> ids({1, 2});
  std::map<int, State<int>> states;
  Model<int> other(0);
  int fired = 0;
  show<std::vector<int>>(ids, [&](const std::vector<int>& shown) {
    std::vector<Element> parts;
    for (const int id : shown)
      parts.push_back(Element(Part{[&, id](Context& context) {
                        context.observe(other);
                        const auto width = context.state("width", 10);
                        states.insert_or_assign(id, width);
                        if (id == 2) context.updates().after(5, [&] { ++fired; });
                        return box(width.get(), 10);
                      }}).id(id));
    return verticalStack({.spacing = 0}, parts).animation(easeOut(20), shown);
  });
  const State<int> removed = states.at(2);
  removed.set(40);
  queue.drain();
  set(ids, {2, 1});
  EXPECT_EQ(boxes()[0].width, 40) << "it moved with its id";
  set(ids, {1});
  removed.set(50);
  EXPECT_EQ(removed.get(), 50);
  queue.advance(10);
  EXPECT_EQ(boxes().size(), 2u) << "it is seen on its way out";
  EXPECT_EQ(boxes()[0].width, 40) << "but changes no more";
  EXPECT_EQ(fired, 0) << "what it asked for later goes with it";
  set(ids, {});
  EXPECT_FALSE(other.isObserved());
  set(ids, {2}, 20);
  EXPECT_EQ(boxes()[0].width, 10) << "another identity begins anew, also where it turns round";
}

TEST_F(PageState, ViewsThatNeverComeToRestLeaveTheQueueItsTurns) {
  int bodies = 0;
  show(Part{[&](Context& context) {
    const auto state = context.state("count", 0);
    const int count = state.get();
    state.set(count < 1000 ? count + 1 : count);
    ++bodies;
    return box(count, 1);
  }});
  EXPECT_GT(bodies, 1);
  EXPECT_LT(bodies, 20);
  queue.drain();
  EXPECT_EQ(boxes()[0].width, 1000);
  const auto settled = bodies;
  queue.advance(1);
  EXPECT_EQ(bodies, settled);

  // Changes that follow changes, each with an animation of its own.
  Model<int> model(0);
  int changesSeen = 0;
  show(Part{[&](Context& context) {
    context.observe(model);
    return box(10, 10).onChange(model.get(), [&, updates = context.updates()] {
      if (++changesSeen > 500) return;
      model.set(model.get() + 1);
      updates.withAnimation(easeOut(changesSeen), [&] { model.set(model.get() + 1); });
    });
  }});
  EXPECT_EQ(changesSeen, 0) << "the first value is no change";
  model.set(1);
  queue.runOneTurn();
  EXPECT_LT(changesSeen, 20);
  queue.drain();
  EXPECT_GT(changesSeen, 500);
}

TEST_F(PageState, CallbacksFollowTheRenderingThatCausedThem) {
  Model<int> model(1);
  show<int>(model, [&](int id) {
    const auto name = std::to_string(id);
    return box(10, 10)
        .onChange(id, noting("change"))
        .onAppear(noting("+" + name))
        .onDisappear(noting("-" + name))
        .id(id);
  });
  EXPECT_EQ(log, "+1");
  set(model, 2);
  EXPECT_EQ(log, "+1-1+2") << "the old one goes before the new one comes";

  Model<int> quiet(1);
  log.clear();
  show<int>(quiet, [&](int value) { return box(10, 10).onChange(value / 10, noting("change")); });
  for (const int value : {2, 12, 13}) {
    set(quiet, value);
  }
  EXPECT_EQ(log, "change");

  // What a view does when it appears shows at once.
  show(Part{[](Context& context) {
    const auto width = context.state("width", 10);
    return box(width.get(), 10).onAppear([width] { width.set(70); });
  }});
  EXPECT_EQ(boxes()[0].width, 70);
}

TEST_F(PageState, WhatClosuresKeepOutlivesTheHost) {
  std::optional<State<int>> state;
  std::optional<Updates> updates;
  Model<int> model(0);
  show(Part{[&](Context& context) {
    context.observe(model);
    state = context.state("state", 0);
    updates = context.updates();
    return box(10, 10);
  }});
  model.set(1);
  bool ran = false;
  updates->after(1, [&] { ran = true; });
  updates->withAnimation(easeOut(1), [&] {
    host.reset();
    state->set(1);
  });
  EXPECT_FALSE(model.isObserved());
  EXPECT_FALSE(clock.isRunning());
  updates->withAnimation(easeOut(1), [&] { state->set(2); });
  EXPECT_EQ(state->get(), 2);
  queue.advance(3);
  EXPECT_FALSE(ran);
}

TEST_F(PageState, EveryActionMayEndTheHost) {
  Model<int> model(0);
  const auto end = [this] { host.reset(); };
  const auto press = [this] { click({5, 5}); };
  const std::vector<std::pair<std::function<Element(Element)>, std::function<void()>>> cases{
      {[&](Element element) { return element.onTap(end); }, press},
      {[&](Element element) { return button(end, element); }, press},
      {[&](Element element) { return element.onHover([end](bool) { end(); }).onTap([] {}); }, press},
      {[&](Element element) { return element.onChange(model.get(), end).onChange(model.get(), [] {}); },
       [&] { model.set(model.get() + 1); }},
  };
  for (const auto& [with, act] : cases) {
    show<int>(model, [&](int) { return with(box(10, 10)); });
    act();
    queue.drain();
    EXPECT_EQ(host, nullptr);
  }
}

TEST_F(PageState, APageThatLeavesSaysSoOnceAndIsSilentFromThenOn) {
  Model<int> model(0);
  std::optional<Updates> kept;
  const auto part = Part{[&](Context& context) {
    context.observe(model);
    kept = context.updates();
    log += "body";
    return box(20 + model.get(), 20)
        .onTap(noting("tap"))
        .onHover([this](bool) { log += "hover"; })
        .onDisappear(noting("inner "))
        .animation(easeOut(1), model.get());
  }};
  show(Element(part).onDisappear(noting("outer ")));
  set(model, 1, 0.5);
  kept->after(0.1, noting("later"));
  model.set(2);
  log.clear();
  const int changesBefore = changes;
  const auto sizeBefore = host->size();
  host->leave();
  EXPECT_EQ(host->size(), sizeBefore);
  EXPECT_EQ(log, "outer inner ");
  EXPECT_FALSE(model.isObserved());
  host->leave();
  host->setEnvironment({.appearance = Appearance::dark});
  host->setProposal({100, 100});
  host->setScale(2);
  host->update();
  click({5, 5});
  host->pointerExited();
  EXPECT_FALSE(host->keyPressed({.key = Key::tab}));
  EXPECT_FALSE(host->scrolled({5, 5}, 5));
  EXPECT_EQ(host->tooltip({5, 5}), std::nullopt);
  queue.advance(1);
  host.reset();
  EXPECT_EQ(log, "outer inner ");
  EXPECT_EQ(changes, changesBefore);

  show(box(9, 9).onDisappear(noting("never")));
  host.reset();
  EXPECT_EQ(log, "outer inner ") << "only leaving is told";
}

}  // namespace
}  // namespace hushpane::declarative
