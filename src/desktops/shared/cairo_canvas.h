#pragma once

#include <optional>
#include <vector>

#include "desktops/shared/cairo_picture.h"
#include "platform/canvas.h"

namespace hushpane::desktops {

// Draws into a picture that outlives it, `scale` pixels to the point. What is there stays beneath; a picture may be
// transparent. Upright rectangles, filled or clipped to, have their edges on whole pixels and are at least one pixel
// thick, so that hairlines are sharp at every scale. Drawings without finite numbers are left out. Used on one thread.
class CairoCanvas : public platform::Canvas {
 public:
  // Only the pixels that `damage` (in points) touches change.
  CairoCanvas(platform::Image& picture, double scale, std::optional<platform::Rect> damage = std::nullopt);
  CairoCanvas(const SurfacePtr& picture, double scale, std::optional<platform::Rect> damage = std::nullopt);
  ~CairoCanvas() override;

  // Makes the damaged pixels transparent.
  void clear();

  void fill(const platform::Path& path, const platform::Paint& paint) override;
  void stroke(const platform::Path& path, const platform::Color& color, const platform::Stroke& stroke) override;
  // Of a layout by PangoTextEngine; any other is left out.
  void drawText(const platform::TextLayout& layout, platform::Point origin, double scale,
                const platform::Color& color) override;
  void drawImage(const platform::Image& image, const platform::Rect& rect) override;
  void drawTemplate(const platform::Image& image, const platform::Rect& rect, const platform::Color& color) override;
  void clip(const platform::Path& path) override;
  void restoreClip() override;
  void beginLayer(const platform::LayerEffect& effect, const platform::Rect& bounds) override;
  void endLayer() override;

 private:
  struct Layer;

  Layer& top();
  const ContextPtr& context();

  double scale_;
  std::vector<Layer> layers_;  // the picture first
};

}  // namespace hushpane::desktops
