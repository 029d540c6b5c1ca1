#include "desktops/x11/stack_model.h"

#include <gtest/gtest.h>

#include <cstring>

namespace hushpane::x11 {
namespace {

constexpr xcb_window_t root = 1;

class StackModelTest : public testing::Test {
 protected:
  StackModelTest() {
    for (const xcb_window_t id : {10u, 11u, 12u}) create(id);
  }

  template <class Event>
  bool send(Event event, std::uint8_t type) {
    xcb_generic_event_t generic{};
    static_assert(sizeof event <= sizeof generic);
    event.response_type = type;
    std::memcpy(&generic, &event, sizeof event);
    return model.apply(generic);
  }
  bool create(xcb_window_t id, xcb_window_t parent = root) {
    xcb_create_notify_event_t event{};
    event.parent = parent;
    event.window = id;
    event.width = 100;
    event.height = 50;
    event.border_width = 2;
    return send(event, XCB_CREATE_NOTIFY);
  }
  bool configure(xcb_window_t id, xcb_window_t above, int width = 100) {
    xcb_configure_notify_event_t event{};
    event.event = root;
    event.window = id;
    event.above_sibling = above;
    event.width = static_cast<std::uint16_t>(width);
    event.height = 50;
    event.border_width = 2;
    return send(event, XCB_CONFIGURE_NOTIFY);
  }
  bool map(xcb_window_t id, xcb_window_t reportedTo = root) {
    xcb_map_notify_event_t event{};
    event.event = reportedTo;
    event.window = id;
    return send(event, XCB_MAP_NOTIFY);
  }
  bool reparent(xcb_window_t id, xcb_window_t parent) {
    xcb_reparent_notify_event_t event{};
    event.event = root;
    event.window = id;
    event.parent = parent;
    return send(event, XCB_REPARENT_NOTIFY);
  }
  bool destroy(xcb_window_t id) {
    xcb_destroy_notify_event_t event{};
    event.event = root;
    event.window = id;
    return send(event, XCB_DESTROY_NOTIFY);
  }

  std::vector<xcb_window_t> order() {
    std::vector<xcb_window_t> ids;
    for (const auto& entry : model.entries()) ids.push_back(entry.id);
    return ids;
  }
  using Order = std::vector<xcb_window_t>;

  StackModel model{root};
};

TEST_F(StackModelTest, FollowsTheOrderThatEventsTell) {
  EXPECT_FALSE(create(20, 500)) << "not of the root";
  EXPECT_FALSE(map(10, 500)) << "not of the root";
  EXPECT_FALSE(create(10)) << "known already";
  EXPECT_EQ(order(), (Order{10, 11, 12}));
  EXPECT_TRUE(configure(10, 12));
  EXPECT_EQ(order(), (Order{11, 12, 10}));
  EXPECT_EQ(model.find(10)->moves, 1u);
  model.moveAbove(11, 12);
  EXPECT_FALSE(configure(11, 12)) << "confirms what was expected";
  EXPECT_EQ(model.find(11)->moves, 0u);
  model.moveAbove(11, XCB_WINDOW_NONE);
  EXPECT_TRUE(configure(12, XCB_WINDOW_NONE));
  EXPECT_EQ(order(), (Order{12, 11, 10}));
  EXPECT_FALSE(configure(11, 12)) << "it is there";
  EXPECT_FALSE(configure(99, 12)) << "unknown";
  EXPECT_TRUE(destroy(11));
  EXPECT_FALSE(destroy(11));
  EXPECT_TRUE(reparent(10, 500)) << "into a frame";
  EXPECT_EQ(order(), (Order{12}));
  EXPECT_TRUE(reparent(10, root)) << "and out again, to the top";
  EXPECT_EQ(order(), (Order{12, 10}));
}

TEST_F(StackModelTest, KnowsOuterBoundsAndWhenThePixelsAreNew) {
  EXPECT_EQ(model.find(10)->bounds, (PixelRect{0, 0, 104, 54}));
  const auto generation = [this] { return model.find(10)->contentGeneration; };
  const auto first = generation();
  configure(10, 12);
  EXPECT_EQ(generation(), first) << "only moved in the stack";
  configure(10, 12, 300);
  EXPECT_NE(generation(), first) << "resized";
  EXPECT_EQ(model.find(10)->bounds.width, 304);
  const auto second = generation();
  EXPECT_TRUE(map(10));
  EXPECT_FALSE(map(10));
  EXPECT_NE(generation(), second) << "mapped";
}

TEST_F(StackModelTest, ANewOrderKeepsWhatIsKnown) {
  model.find(11)->facts.pid = 7;
  const xcb_window_t ids[] = {12, 30, 11};
  model.setOrder(ids, 3);
  EXPECT_EQ(order(), (Order{12, 30, 11}));
  EXPECT_EQ(model.find(11)->facts.pid, 7);
  EXPECT_TRUE(model.find(30)->bounds.isEmpty());
}

}  // namespace
}  // namespace hushpane::x11
