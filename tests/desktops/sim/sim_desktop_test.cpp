#include <gtest/gtest.h>

#include "desktops/sim/sim_platform.h"

namespace hushpane::sim {
namespace {

namespace notification = platform::notification;

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
  int& count(platform::NotificationCenter& center, std::string_view name) {
    counts_.push_back(std::make_unique<int>(0));
    observers_.push_back(center.addObserver(name, [count = counts_.back().get()] { ++*count; }));
    return *counts_.back();
  }

 private:
  std::vector<std::unique_ptr<int>> counts_;
  std::vector<platform::Token> observers_;
};

using Numbers = std::vector<platform::WindowNumber>;

TEST_F(SimDesktopTest, ACoverKeepsItsPlaceWhileOtherWindowsMove) {
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
  window->orderFront();
  desktop.windows().raise(back);
  EXPECT_EQ(order(), (Numbers{bar, number, back, middle}));
  window->setLevel(platform::windowLevel::aboveDesktop);
  EXPECT_EQ(order(), (Numbers{bar, back, middle, number}));
}

TEST_F(SimDesktopTest, ACoverBelowAWindowOfAnotherLayerStaysInItsOwn) {
  const auto ordinary = add(101);
  const auto raised = add(102, 1);
  const auto floating = add(103, 3);
  const auto window = cover();
  window->orderBelow(floating);
  EXPECT_EQ(order(), (Numbers{floating, raised, numberOf(window), ordinary}));
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

TEST_F(SimDesktopTest, CoversAtOnePlaceKeepTheirOrderAmongThemselves) {
  const auto window = add(101);
  const auto first = cover();
  const auto second = cover();
  first->orderBelow(window);
  second->orderBelow(window);
  const auto expected = Numbers{window, numberOf(second), numberOf(first)};
  EXPECT_EQ(order(), expected);
  const auto changes = desktop.windows().orderChangeCount();
  EXPECT_EQ(order(), expected);
  EXPECT_EQ(desktop.windows().orderChangeCount(), changes);
}

TEST_F(SimDesktopTest, ActivatingAnApplicationRaisesItsWindowsInTheirOrder) {
  const auto editor = desktop.workspace().launch("Editor");
  const auto browser = desktop.workspace().launch("Browser");
  const auto one = add(editor);
  const auto two = add(editor);
  const auto page = add(browser);
  auto& told = count(desktop.workspace().notificationCenter(), notification::didActivateApplication);
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

TEST_F(SimDesktopTest, TheWindowListLeavesOutWhatAScriptTakesAway) {
  const auto number = desktop.windows().add(
      {.ownerPid = 101, .frame = {10, 20, 30, 40}, .alpha = 0.5, .disguise = [](platform::WindowInfo& info) {
         info.bounds.x.reset();
       }});
  const auto list = desktop.windowList().onScreenWindows();
  ASSERT_TRUE(list);
  ASSERT_EQ(list->size(), 1u);
  EXPECT_EQ(list->front(), (platform::WindowInfo{101, 0, 0.5, {std::nullopt, 20, 30, 40}, number}));
  desktop.windowList().setReadable(false);
  EXPECT_FALSE(desktop.windowList().onScreenWindows());
}

TEST_F(SimDesktopTest, AnotherSpaceShowsItsOwnWindowsAndEveryCover) {
  const auto here = add(101);
  const auto there = desktop.windows().add({.ownerPid = 101, .frame = {0, 0, 300, 200}, .space = 1});
  const auto window = cover();
  window->orderFront();
  auto& told = count(desktop.workspace().notificationCenter(), notification::activeSpaceDidChange);
  EXPECT_EQ(order(), (Numbers{numberOf(window), here}));
  desktop.workspace().switchSpace(1);
  desktop.drain();
  EXPECT_EQ(told, 1);
  EXPECT_EQ(order(), (Numbers{numberOf(window), there}));
}

TEST_F(SimDesktopTest, EventsGoToGlobalOrToLocalMonitorsButNeverToBoth) {
  using platform::Event;
  auto& monitors = desktop.eventMonitors();
  int global = 0;
  int local = 0;
  bool swallows = false;
  const auto keys = maskOf(platform::EventType::keyDown);
  auto one = monitors.addGlobalMonitor(keys, [&](const Event&) { ++global; });
  auto two = monitors.addLocalMonitor(keys, [&](const Event& event) -> std::optional<Event> {
    ++local;
    return swallows ? std::nullopt : std::optional(event);
  });
  EXPECT_EQ(monitors.monitorCount(), 2u);
  monitors.pressKey(1);
  monitors.setKeyboardOwner(SimEventMonitors::KeyboardOwner::ownProgram);
  monitors.pressKey(2);
  monitors.pressModifier(platform::modifier::shift);
  desktop.drain();
  EXPECT_EQ(global, 1);
  EXPECT_EQ(local, 1) << "the modifier is not in its mask";
  EXPECT_EQ(monitors.deliveredLocally(), 2u);
  swallows = true;
  monitors.pressKey(3);
  desktop.drain();
  EXPECT_EQ(monitors.deliveredLocally(), 2u);

  one.reset();
  two.reset();
  EXPECT_EQ(monitors.monitorCount(), 0u);
  monitors.setRefusesMonitors(true);
  EXPECT_FALSE(monitors.addGlobalMonitor(keys, [](const Event&) {}));
}

TEST_F(SimDesktopTest, AbsentStoresAreAbsent) {
  desktop.sharedContainer().setAbsent(true);
  desktop.setSuitesAbsent(true);
  EXPECT_FALSE(desktop.sharedContainer().url("group"));
  EXPECT_FALSE(desktop.userDefaultsSuite("group"));
  desktop.sharedContainer().setAbsent(false);
  EXPECT_TRUE(std::filesystem::is_directory(desktop.sharedContainer().url("group").value()));
}

TEST_F(SimDesktopTest, SettingTheSameValueAgainIsNoChange) {
  auto& told = count(desktop.notificationCenter(), notification::userDefaultsDidChange);
  desktop.userDefaults().set("key", 1);
  desktop.drain();
  desktop.userDefaults().set("key", 1);
  desktop.userDefaults().remove("other");
  desktop.drain();
  EXPECT_EQ(told, 1);
}

TEST_F(SimDesktopTest, AScreenWithoutAnIdIsAScreen) {
  auto& told = count(desktop.notificationCenter(), notification::screenParametersDidChange);
  desktop.screens().add({{1440, 0, 100, 100}, std::nullopt, "Projector", 1});
  EXPECT_FALSE(desktop.screens().change(3, {0, 0, 1, 1}));
  EXPECT_TRUE(desktop.screens().change(1, {0, 0, 800, 600}, 2));
  EXPECT_FALSE(desktop.screens().remove(3));
  desktop.drain();
  EXPECT_EQ(told, 2);
  EXPECT_EQ(desktop.screens().screens().size(), 2u);
  EXPECT_EQ(desktop.render().width, 1600);
}

struct Process {
  explicit Process(platform::Platform& platform) : queue(platform.mainQueue()) {}
  ~Process() { ended().push_back(&queue); }
  static std::vector<const void*>& ended() {
    static std::vector<const void*> list;
    return list;
  }
  platform::MainQueue& queue;
};

TEST(SimPlatformTest, TheEndOfTheProgramLeavesTheDesktopAndTheStorage) {
  Storage storage;
  SimPlatform desktop(storage);
  desktop.windows().add({.ownerPid = 101, .frame = {0, 0, 300, 200}});
  desktop.userDefaults().set("key", "kept");
  auto& before = desktop.instance<Process>();
  EXPECT_EQ(&before, &desktop.instance<Process>());
  int late = 0;
  desktop.mainQueue().async([&] { ++late; });
  desktop.application().setOpenUrlsHandler([&](const auto&) { ++late; });
  auto fading = desktop.windows().makeWindow({0, 0, 10, 10}, {});
  fading->animateAlpha(0, {1, platform::TimingFunction::linear});
  fading.reset();
  Process::ended().clear();
  desktop.endProgram();
  EXPECT_EQ(Process::ended().size(), 1u);
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

TEST(SimPlatformTest, AnotherDesktopOverTheSameStorageIsARelaunch) {
  Storage storage;
  {
    SimPlatform desktop(storage);
    desktop.userDefaults().set("key", 3);
    desktop.userDefaultsSuite("suite")->set("key", 4);
    ASSERT_TRUE(desktop.propertyLists().writeXml(*desktop.sharedContainer().url("group") / "a.plist", {{"k", "v"}}));
  }
  SimPlatform desktop(storage);
  EXPECT_EQ(desktop.userDefaults().get<std::int64_t>("key"), 3);
  EXPECT_EQ(desktop.userDefaultsSuite("suite")->get<std::int64_t>("key"), 4);
  EXPECT_TRUE(desktop.propertyLists().read(*desktop.sharedContainer().url("group") / "a.plist"));
}

}  // namespace
}  // namespace hushpane::sim
