#pragma once

#include <filesystem>
#include <functional>

#include "declarative/state.h"
#include "platform/image.h"
#include "platform/value.h"
#include "state/preferences_store.h"

namespace hushpane {

// The picture that the user picked, as a view knows it.
struct WallpaperPreview {
  platform::Data bookmark;   // which one it is; empty: none
  platform::ImagePtr image;  // null until it was read, and when it cannot be

  bool operator==(const WallpaperPreview&) const = default;
};

// Reads the stored picture into `preview` in the background; a bookmark that is gone stale is stored anew. A picture
// that is read too late, when another one is asked for, is dropped.
void loadWallpaperPreview(PreferencesStore& preferences, const declarative::State<WallpaperPreview>& preview);

// Reads a picture file in the background, in as many pixels as a slot can show. Null when that fails.
void loadSlotPicture(const std::filesystem::path& file, std::function<void(platform::ImagePtr)> finish);

}  // namespace hushpane
