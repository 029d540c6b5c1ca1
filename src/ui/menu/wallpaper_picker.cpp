#include "ui/menu/wallpaper_picker.h"

#include <utility>

#include "platform/platform.h"
#include "ui/localized.h"

namespace hushpane {

void openWallpaperPicker(std::function<void(platform::Data)> picked) {
  auto& platform = platform::Platform::current();
  auto* panel = platform.openPanel();
  if (!panel) return;
  platform.notificationCenter().post(wallpaperPickerWillOpen);
  platform.application().activateIgnoringOtherApps(true);
  panel->run({.title = localized("Choose a wallpaper"_key),
              .prompt = localized("Select"_key),
              .imagesOnly = true,
              .directory = {}},
             [picked = std::move(picked), &bookmarks = platform.bookmarks()](const auto& file) {
               if (const auto bookmark = file ? bookmarks.create(*file) : std::nullopt) picked(*bookmark);
             });
}

}  // namespace hushpane
