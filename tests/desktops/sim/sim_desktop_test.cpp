#include <gtest/gtest.h>

#include "desktops/sim/sim_platform.h"

namespace hushpane::sim {
namespace {

class SimDesktopTest : public testing::Test {
 protected:
  Storage storage;
  SimPlatform desktop{storage};

  platform::WindowNumber add(std::int32_t pid, int layer = 0) {
    return desktop.windows().add({.ownerPid = pid, .frame = {0, 0, 300, 200}, .layer = layer});
  }
  std::vector<platform::WindowNumber> order() {
    std::vector<platform::WindowNumber> numbers;
    for (const auto& shown : desktop.windows().stack()) numbers.push_back(shown.number);
    return numbers;
  }
  std::unique_ptr<platform::Window> cover() { return desktop.windows().makeWindow({0, 0, 1440, 900}, {}); }
  static platform::WindowNumber numberOf(const std::unique_ptr<platform::Window>& window) {
    return static_cast<const SimWindow&>(*window).number();
  }
};

using Numbers = std::vector<platform::WindowNumber>;

TEST_F(SimDesktopTest, CoversKeepTheirPlaceAmongOtherWindowsAndEachOther) {
  const auto back = add(101);
  const auto middle = add(102);
  const auto bar = add(103, 20);
  const auto window = cover();
  const auto number = numberOf(window);
  window->orderBelow(middle);
  EXPECT_EQ(order(), (Numbers{bar, middle, number, back}));
  desktop.windows().raise(back);
  EXPECT_EQ(order(), (Numbers{bar, back, middle, number}));
  desktop.windows().raise(middle);
  EXPECT_EQ(order(), (Numbers{bar, middle, number, back}));
  const auto second = cover();
  second->orderBelow(middle);
  for (int look = 0; look < 2; ++look) EXPECT_EQ(order(), (Numbers{bar, middle, numberOf(second), number, back}));
  window->orderBelow(bar);
  EXPECT_EQ(order(), (Numbers{bar, middle, numberOf(second), number, back})) << "that is of another layer";
  window->orderFront();
  desktop.windows().raise(back);
  EXPECT_EQ(order(), (Numbers{bar, number, back, middle, numberOf(second)}));
  window->setLevel(platform::windowLevel::aboveDesktop);
  EXPECT_EQ(order(), (Numbers{bar, back, middle, numberOf(second), number}));
}

TEST_F(SimDesktopTest, OnlyTheLastPlaceOfATurnReachesTheScreen) {
  const auto first = add(101);
  const auto second = add(102);
  const auto window = cover();
  window->orderBelow(second);
  ASSERT_EQ(order(), (Numbers{second, numberOf(window), first}));
  const auto changes = desktop.windows().orderChangeCount();
  desktop.mainQueue().async([&] {
    window->orderOut();
    window->orderFront();
    window->orderBelow(second);
    EXPECT_TRUE(static_cast<SimWindow&>(*window).isOnScreen());
    window->orderBelow(first);
    EXPECT_EQ(order(), (Numbers{second, numberOf(window), first})) << "within the turn";
  });
  desktop.mainQueue().async([&] {
    EXPECT_EQ(order(), (Numbers{second, first, numberOf(window)})) << "in the next turn";
  });
  desktop.drain();
  EXPECT_EQ(order(), (Numbers{second, first, numberOf(window)}));
  EXPECT_EQ(desktop.windows().orderChangeCount(), changes + 1);
}

TEST_F(SimDesktopTest, ActivatingAnApplicationRaisesItsWindowsInTheirOrder) {
  const auto editor = desktop.workspace().launch("Editor");
  const auto browser = desktop.workspace().launch("Browser");
  const auto one = add(editor);
  const auto two = add(editor);
  const auto page = add(browser);
  int told = 0;
  const auto observer = desktop.workspace().notificationCenter().addObserver(
      platform::notification::didActivateApplication, [&] { ++told; });
  desktop.workspace().activate(editor);
  EXPECT_EQ(told, 0) << "only with the next turn";
  desktop.drain();
  EXPECT_EQ(told, 1);
  EXPECT_EQ(order(), (Numbers{two, one, page}));
  EXPECT_EQ(desktop.workspace().frontmostApplication()->localizedName, "Editor");
  EXPECT_FALSE(desktop.workspace().activateWindow(9999));
  desktop.workspace().quit(editor);
  EXPECT_FALSE(desktop.workspace().frontmostApplication());
  EXPECT_EQ(order(), (Numbers{page}));
}

struct Process {
  explicit Process(platform::Platform&) {}
  ~Process() { ++ended; }
  static inline int ended = 0;
};

TEST(SimPlatformTest, TheEndOfTheProgramLeavesTheDesktopAndTheStorage) {
  Storage storage;
  SimPlatform desktop(storage);
  desktop.windows().add({.ownerPid = 101, .frame = {0, 0, 300, 200}});
  desktop.userDefaults().set("key", "kept");
  desktop.instance<Process>();
  int late = 0;
  desktop.mainQueue().async([&] { ++late; });
  desktop.application().setOpenUrlsHandler([&](const auto&) { ++late; });
  auto fading = desktop.windows().makeWindow({0, 0, 10, 10}, {});
  fading->animateAlpha(0, {1, platform::TimingFunction::linear});
  fading.reset();
  desktop.endProgram();
  EXPECT_EQ(Process::ended, 1);
  desktop.advance(1);
  EXPECT_EQ(late, 0);
  EXPECT_EQ(desktop.windows().stack().size(), 1u);

  std::vector<std::string> opened;
  desktop.application().openUrls({"later"});
  desktop.application().setOpenUrlsHandler([&](const auto& urls) { opened = urls; });
  const auto window = desktop.windows().makeWindow({0, 0, 10, 10}, {});
  window->setAlpha(0);
  window->animateAlpha(1, {0.1, platform::TimingFunction::linear});
  desktop.advance(1);
  EXPECT_EQ(opened, std::vector<std::string>{"later"});
  EXPECT_EQ(window->presentationAlpha(), 1) << "frames come for the next program too";
  EXPECT_EQ(desktop.userDefaults().get<std::string>("key"), "kept");
}

}  // namespace
}  // namespace hushpane::sim
