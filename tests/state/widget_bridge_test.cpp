#include "state/widget_bridge.h"

#include <fstream>

#include "support/simulated_program.h"

namespace hushpane::tests {
namespace {

class WidgetBridgeTest : public SimulatedProgram {
 protected:
  void SetUp() override { prepareDesktop(); }

  std::filesystem::path file() { return *WidgetBridge::shared().sharedContainerURL() / "hushpane-shared.plist"; }
  platform::Dictionary contents() { return desktop->propertyLists().read(file()).value(); }
};

TEST_F(WidgetBridgeTest, WritesOneEntryAndKeepsTheOthers) {
  WidgetBridge::shared().setSharedString("focus", "hushpane.userMode");
  EXPECT_EQ(contents(), (platform::Dictionary{{"hushpane.userMode", "focus"}}));
  ASSERT_TRUE(desktop->propertyLists().writeXml(file(), {{"hushpane.language", "de"}, {"hushpane.userMode", 4}}));
  EXPECT_EQ(WidgetBridge::shared().sharedString("hushpane.userMode"), std::nullopt) << "a number is no text";
  WidgetBridge::shared().setSharedString("standard", "hushpane.userMode");
  EXPECT_EQ(contents(), (platform::Dictionary{{"hushpane.language", "de"}, {"hushpane.userMode", "standard"}}));
}

TEST_F(WidgetBridgeTest, ABrokenFileReadsAsEmptyAndIsReplaced) {
  std::ofstream(file()) << "<plist><dict><key>hushpane.userMode";
  EXPECT_EQ(WidgetBridge::shared().sharedString("hushpane.userMode"), std::nullopt);
  WidgetBridge::shared().setSharedString("focus", "hushpane.userMode");
  EXPECT_EQ(contents(), (platform::Dictionary{{"hushpane.userMode", "focus"}}));
}

TEST_F(WidgetBridgeTest, WithoutAContainerTheSuiteServes) {
  desktop->sharedContainer().setAbsent(true);
  auto& bridge = WidgetBridge::shared();
  bridge.setSharedString("focus", "hushpane.userMode");
  EXPECT_EQ(storage.suites["group.com.corvane.Hushpane"], (platform::Dictionary{{"hushpane.userMode", "focus"}}));
  EXPECT_EQ(bridge.sharedString("hushpane.userMode"), "focus");
  EXPECT_TRUE(bridge.readSharedDictionary().empty());
  bridge.writeSharedDictionary({{"hushpane.userMode", "standard"}});
  EXPECT_EQ(bridge.sharedString("hushpane.userMode"), "focus");

  desktop->setSuitesAbsent(true);
  bridge.setSharedString("standard", "hushpane.userMode");
  EXPECT_EQ(bridge.sharedString("hushpane.userMode"), std::nullopt);
}

}  // namespace
}  // namespace hushpane::tests
