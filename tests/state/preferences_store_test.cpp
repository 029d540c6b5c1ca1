#include "state/preferences_store.h"

#include "support/simulated_program.h"

namespace hushpane::tests {
namespace {

using PreferencesStoreTest = SimulatedProgram;

TEST_F(PreferencesStoreTest, AValueOfAnotherTypeCountsAsAbsentAndStaysUntilTheNextAssignment) {
  prepareDesktop();
  auto& preferences = PreferencesStore::shared();
  store("hushpane.applyToAllDisplays", "no");
  store("hushpane.revealModifier", 3);
  EXPECT_TRUE(preferences.applyToAllDisplays.get());
  EXPECT_EQ(preferences.revealModifierRaw.get(), "option");
  EXPECT_EQ(stored("hushpane.revealModifier"), platform::Value(3));
  preferences.revealModifierRaw = "command";
  EXPECT_EQ(stored("hushpane.revealModifier"), platform::Value("command"));
  desktop->userDefaults().remove("hushpane.revealModifier");
  EXPECT_EQ(preferences.revealModifierRaw.get(), "option");
}

}  // namespace
}  // namespace hushpane::tests
