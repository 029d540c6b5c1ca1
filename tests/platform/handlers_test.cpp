#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <vector>

#include "platform/handler_list.h"
#include "platform/lifetime.h"
#include "platform/notification_center.h"

namespace hushpane::platform {
namespace {

using Handlers = HandlerList<void()>;

void callAll(const Handlers& handlers) {
  handlers.forEach([](const auto& handler) { handler(); });
}

TEST(HandlerListTest, AHandlerMayRemoveItselfAndLaterOnesAndKeepsItsClosureMeanwhile) {
  Handlers handlers;
  int removed = 0;
  int seen = 0;
  Token own, later;
  own = handlers.add([&, held = std::make_shared<int>(5)] {
    own.reset();
    later.reset();
    seen = *held;
  });
  later = handlers.add([&] { ++removed; });
  callAll(handlers);
  EXPECT_EQ(seen, 5);
  EXPECT_EQ(removed, 0);
  EXPECT_TRUE(handlers.empty());
}

TEST(HandlerListTest, AHandlerAddedInARoundRunsFromTheNextOneOn) {
  Handlers handlers;
  std::vector<Token> tokens;
  int calls = 0;
  tokens.push_back(handlers.add([&] {
    if (tokens.size() == 1) tokens.push_back(handlers.add([&] { ++calls; }));
  }));
  callAll(handlers);
  EXPECT_EQ(calls, 0);
  callAll(handlers);
  EXPECT_EQ(calls, 1);
}

TEST(HandlerListTest, AHandlerMayEndTheListAndDropALaterOne) {
  auto handlers = std::make_unique<Handlers>();
  int late = 0;
  auto second = Token();
  auto first = handlers->add([&] {
    handlers.reset();
    second.reset();
  });
  second = handlers->add([&] { ++late; });
  handlers->forEach([](const auto& handler) { handler(); });
  EXPECT_FALSE(handlers);
  EXPECT_EQ(late, 0);
}

TEST(NotificationCenterTest, AnObserverMayPostAndObserveOtherNames) {
  NotificationCenter center;
  std::vector<Token> tokens;
  int heard = 0;
  tokens.push_back(center.addObserver("a", [&] {
    for (const auto* name : {"b", "c", "d", "e"}) tokens.push_back(center.addObserver(name, [&] { ++heard; }));
    center.post("c");
  }));
  center.post("a");
  EXPECT_EQ(heard, 1);
}

TEST(TokenTest, ReleasesOnceAndOnMoveAssignmentTheOldOne) {
  std::vector<int> released;
  {
    Token first([&] { released.push_back(1); });
    Token second([&] { released.push_back(2); });
    first = std::move(second);
    EXPECT_EQ(released, std::vector{1});
    EXPECT_FALSE(second);
    auto& same = first;
    first = std::move(same);
    EXPECT_TRUE(first);
    first.reset();
    first.reset();
  }
  EXPECT_EQ(released, (std::vector{1, 2}));
}

TEST(TokenTest, AReleaseMayAssignTheSameToken) {
  Token token;
  int released = 0;
  token = Token([&] { token = Token([&] { ++released; }); });
  token.reset();
  EXPECT_TRUE(token);
  token.reset();
  EXPECT_EQ(released, 1);
}

TEST(LifetimeTest, AWeakClosureDoesNothingOnceItsObjectIsGone) {
  auto lifetime = std::make_optional<Lifetime>();
  int sum = 0;
  auto closure = lifetime->weak([&](int value) { sum += value; });
  closure(1);
  lifetime.reset();
  closure(10);
  EXPECT_EQ(sum, 1);
}

}  // namespace
}  // namespace hushpane::platform
