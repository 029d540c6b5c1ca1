#include "state/app_router.h"
#include "tests/app/panel_test.h"

namespace hushpane::tests {
namespace {

// Displays that are lower than what opens on them.
class LowDisplayTest : public PanelTest {};

TEST_F(LowDisplayTest, TheLanguageListFitsScrollsAndChangesAllTexts) {
  desktop->screens().set({{{0, 0, 800, 480}, 1, "Small", 1}});
  launch();
  open();
  click("🇬🇧");
  ASSERT_EQ(panelCount(), 2u);
  EXPECT_LE(outline().bottom(), 480);
  EXPECT_GE(outline().y, 0);
  const auto* list = desktop->panels().shown().front();
  EXPECT_GE(sim::shownTexts(*list).size(), 10u);
  // The last language comes into view by the wheel.
  desktop->pointer().moveTo({outline().x + 20, outline().y + 40});
  desktop->pointer().scroll(5000);
  settle();
  const auto last = sim::shownTexts(*list).back();
  EXPECT_LE(last.frame.bottom(), outline().bottom());
  type(escapeKey);
  EXPECT_EQ(panelCount(), 1u) << "Escape closes the list alone";
  click("🇬🇧");
  desktop->pointer().moveTo({outline().x + 20, outline().y + 40});
  desktop->pointer().scroll(-5000);
  settle();
  click("🇩🇪  Deutsch");
  EXPECT_EQ(panelCount(), 1u);
  EXPECT_TRUE(shows("Beenden"));
  EXPECT_EQ(stored(storedKeys::language), platform::Value("de"));
}

TEST_F(LowDisplayTest, SettingsScrollByWheelAndByTab) {
  desktop->screens().set({{{0, 0, 960, 540}, 1, "Small", 1}, {{960, 0, 960, 540}, 2, "Second", 1}});
  store(storedKeys::applyToAllDisplays, false);
  launch();
  open();
  AppRouter::shared().openSettings();
  settle();
  EXPECT_GE(outline().y, barHeight);
  EXPECT_LE(outline().bottom(), 540);
  const auto isInView = [this](const std::string& text) {
    const auto found = sim::findText(desktop->panels(), text);
    return found && found->frame.y >= outline().y && found->frame.bottom() <= outline().bottom();
  };
  EXPECT_TRUE(isInView("Small") && isInView("Second"));
  EXPECT_FALSE(isInView("Contact Us"));
  desktop->pointer().moveTo(middleOf("⇧"));
  settle();
  EXPECT_EQ(panelCount(), 2u);
  desktop->pointer().scroll(5000);
  desktop->drain();
  EXPECT_EQ(panelCount(), 1u) << "a tooltip goes with what it tells of";
  EXPECT_TRUE(isInView("Settings")) << "the header stays";
  EXPECT_TRUE(isInView("Version " + desktop->bundle().infoString("CFBundleShortVersionString")));
  click("Contact Us");
  type(tabKey, platform::modifier::shift);
  type(returnKey);
  const auto& opened = desktop->workspace().openedURLs();
  ASSERT_EQ(opened.size(), 2u);
  EXPECT_TRUE(opened[0].starts_with("mailto:"));
  EXPECT_TRUE(opened[1].starts_with("https:"));
  const double scrolled = middleOf("Reveal key").y;
  for (int stop = 0; stop < 2; ++stop) type(tabKey);
  EXPECT_EQ(middleOf("Reveal key").y, scrolled) << "the way back is always in view";
  type(tabKey);
  EXPECT_GT(middleOf("Reveal key").y, scrolled) << "the first switch was beneath the header";
}

}  // namespace
}  // namespace hushpane::tests
