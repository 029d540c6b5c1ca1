#include "state/preferences_store.h"

#include <fstream>

#include "support/simulated_program.h"

namespace hushpane::tests {
namespace {

class PreferencesStoreTest : public SimulatedProgram {
 protected:
  void SetUp() override { prepareDesktop(); }
};

TEST_F(PreferencesStoreTest, AFreshUserHasTheDefaultsAndNothingIsWritten) {
  const auto& store = PreferencesStore::shared();
  EXPECT_EQ(store.revealModifierRaw.get(), "option");
  EXPECT_TRUE(store.applyToAllDisplays.get());
  for (const auto* surface : {&store.ambientSurfaceRaw, &store.focusSurfaceRaw}) EXPECT_EQ(surface->get(), "blur");
  for (const auto* dim : {&store.ambientDimIntensityRaw, &store.focusDimIntensityRaw})
    EXPECT_EQ(dim->get(), "balanced");
  EXPECT_FALSE(store.ambientGradientEnabled.get());
  EXPECT_FALSE(store.mouseShakeEnabled.get());
  EXPECT_EQ(store.customWallpaperURL(), std::nullopt);
  EXPECT_TRUE(storage.standardDefaults.empty());
}

TEST_F(PreferencesStoreTest, AnAssignmentIsStoredAtOnceAndARemovedKeyIsItsDefaultAgain) {
  auto& preferences = PreferencesStore::shared();
  preferences.applyToAllDisplays = false;
  EXPECT_EQ(stored("hushpane.applyToAllDisplays"), platform::Value(false));
  preferences.focusSurfaceRaw = "dim";
  EXPECT_EQ(stored("hushpane.focusSurface"), platform::Value("dim"));
  desktop->userDefaults().remove("hushpane.focusSurface");
  EXPECT_EQ(preferences.focusSurfaceRaw.get(), "blur");
}

TEST_F(PreferencesStoreTest, AValueOfAnotherTypeCountsAsAbsentAndStays) {
  store("hushpane.applyToAllDisplays", "no");
  store("hushpane.revealModifier", 3);
  EXPECT_TRUE(PreferencesStore::shared().applyToAllDisplays.get());
  EXPECT_EQ(PreferencesStore::shared().revealModifierRaw.get(), "option");
  EXPECT_EQ(stored("hushpane.revealModifier"), platform::Value(3));
}

TEST_F(PreferencesStoreTest, TheCustomWallpaperIsFoundUntilItsFileIsGone) {
  const auto picture = storage.folder() / "picture.png";
  std::ofstream(picture) << "picture";
  auto& preferences = PreferencesStore::shared();
  preferences.customWallpaperBookmarkData = desktop->bookmarks().create(picture).value();
  EXPECT_EQ(preferences.customWallpaperURL(), picture);
  std::filesystem::remove(picture);
  EXPECT_EQ(preferences.customWallpaperURL(), std::nullopt);
  EXPECT_FALSE(preferences.customWallpaperBookmarkData.get().empty());
}

}  // namespace
}  // namespace hushpane::tests
