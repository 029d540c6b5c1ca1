#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "platform/platform.h"
#include "state/observable_object.h"
#include "state/stored_value.h"

namespace hushpane {

// The user's settings. "Ambient" settings describe the cover of clean desktop, "focus" settings that of focus. Texts
// that name no case are kept as they are; whoever reads them takes the default. Assigning a field notifies nobody: a
// writer whose change others must follow calls objectWillChange() afterwards.
class PreferencesStore : public ObservableObject {
 public:
  static PreferencesStore& shared();
  explicit PreferencesStore(platform::Platform& platform);

  StoredValue<std::string> revealModifierRaw;
  StoredValue<bool> applyToAllDisplays;
  StoredValue<std::string> ambientSurfaceRaw;
  StoredValue<bool> ambientGradientEnabled;
  StoredValue<std::string> ambientDimIntensityRaw;
  StoredValue<std::string> ambientWallpaperSourceRaw;
  StoredValue<std::string> focusSurfaceRaw;
  StoredValue<std::string> focusDimIntensityRaw;
  StoredValue<std::string> focusWallpaperSourceRaw;
  StoredValue<platform::Data> customWallpaperBookmarkData;  // empty: none
  StoredValue<bool> mouseShakeEnabled;

  // The picture that the user picked; nothing when there is none or it is gone.
  std::optional<std::filesystem::path> customWallpaperURL() const;

 private:
  platform::Bookmarks& bookmarks_;
};

}  // namespace hushpane
