#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>

#include "platform/color.h"

namespace hushpane::session {

enum class PicturePlacement {
  tiled,      // over all screens, from the middle on
  centered,   // as large as it is
  scaled,     // as large as it can be seen whole
  stretched,  // over the whole screen
  zoomed,     // as small as it fills the screen
  spanned,    // over all screens as one
};

enum class ColorShading { solid, horizontal, vertical };

// What a desktop shows behind all windows.
struct DesktopBackground {
  std::optional<std::filesystem::path> picture;  // may be missing or broken
  PicturePlacement placement = PicturePlacement::zoomed;
  // Behind the picture, or alone: from the left or the top to the right or the bottom, unless it is solid.
  platform::Color primary = platform::black;
  platform::Color secondary = platform::black;
  ColorShading shading = ColorShading::solid;
  bool operator==(const DesktopBackground&) const = default;
};

// As the settings of the running desktop environment describe it. Nothing when that environment is not known, or keeps
// no such description.
std::optional<DesktopBackground> desktopBackground();

// Tells of changes of these settings while it lives.
class DesktopBackgroundWatch {
 public:
  // Called on the main thread, more than once for a change of several settings.
  explicit DesktopBackgroundWatch(std::function<void()> onChange);
  ~DesktopBackgroundWatch();

 private:
  struct Settings;
  std::unique_ptr<Settings> settings_;
};

}  // namespace hushpane::session
