#include "ui/menu/wallpaper_preview.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/platform.h"
#include "ui/menu/wallpaper_slot_view.h"

namespace hushpane {

namespace {

constexpr double slotWidth = 160;  // points; no slot is wider

// Pixels per point of the sharpest screen.
double largestScale(platform::Platform& platform) {
  double scale = 1;
  for (const auto& screen : platform.screens().screens()) scale = std::max(scale, screen.scale);
  return scale;
}

}  // namespace

void loadSlotPicture(const std::filesystem::path& file, std::function<void(platform::ImagePtr)> finish) {
  auto& platform = platform::Platform::current();
  const double scale = largestScale(platform);
  const auto pixels = [scale](double points) { return static_cast<int>(std::ceil(points * scale)); };
  platform.taskQueue().run<platform::ImagePtr>(
      platform::TaskPriority::userInitiated,
      [file, width = pixels(slotWidth), height = pixels(WallpaperSlotView::height), &loader = platform.imageLoader()] {
        return loader.load(file, width, height);
      },
      std::move(finish));
}

void loadWallpaperPreview(PreferencesStore& preferences, const declarative::State<WallpaperPreview>& preview) {
  platform::Data bookmark = preferences.customWallpaperBookmarkData.get();
  const auto& bookmarks = platform::Platform::current().bookmarks();
  const auto resolved = bookmark.empty() ? std::nullopt : bookmarks.resolve(bookmark);
  if (!resolved) return preview.set({std::move(bookmark), nullptr});

  if (resolved->isStale)
    if (const auto fresh = bookmarks.create(resolved->path))
      preferences.customWallpaperBookmarkData = bookmark = *fresh;

  preview.set({bookmark, preview.get().image});
  loadSlotPicture(resolved->path, [preview, bookmark](platform::ImagePtr image) {
    if (preview.get().bookmark == bookmark) preview.set({bookmark, std::move(image)});
  });
}

}  // namespace hushpane
