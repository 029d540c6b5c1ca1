#pragma once

#include <functional>
#include <optional>
#include <string>

#include "platform/canvas.h"
#include "platform/geometry.h"

namespace hushpane::platform {

// A picture of which only the alpha counts; the desktop gives it the colour that stands out.
struct TemplateImage {
  Size size;  // points
  // In black. For the canvas it gets, so many pixels are a point: what is to be sharp lies on whole ones.
  std::function<void(Canvas&, double pixelsPerPoint)> draw{};
};

// The program's icon where the desktop shows such icons. It is there from the first image on, as soon and as long as
// the desktop has a place for it.
class StatusItem {
 public:
  // Where the pointer was, in points of the desktop; nothing when the desktop does not tell.
  using ClickHandler = std::function<void(std::optional<Point>)>;

  virtual ~StatusItem() = default;

  virtual void setImage(TemplateImage image) = 0;
  virtual void setToolTip(std::string text) = 0;
  // Called on the main queue, as is the next.
  virtual void setClickHandler(ClickHandler handler) = 0;
  // Told, with true, when the pointer comes over the icon, and with false when it left; never where the desktop shows
  // the tool tip itself.
  virtual void setHoverHandler(std::function<void(bool)> handler) = 0;

  // Whether the desktop has a place for it now.
  virtual bool isShown() const = 0;
  // Where it is, in points of the desktop; nothing where it is not shown, or where the desktop does not tell.
  virtual std::optional<Rect> frame() const = 0;
};

}  // namespace hushpane::platform
