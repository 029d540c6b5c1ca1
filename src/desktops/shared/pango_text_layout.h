#pragma once

#include <pango/pango.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "desktops/shared/cairo_picture.h"
#include "platform/text.h"

namespace hushpane::desktops {

using PangoLayoutPtr = std::shared_ptr<PangoLayout>;

enum class BaselineSnap { none, wholePixels };

// A line in its place, in points from the top left of its text.
struct PlacedLine {
  PangoLayoutPtr layout;  // keeps the line alive
  PangoLayoutLine* line = nullptr;
  double x = 0;
  double baseline = 0;
};

class PangoTextLayout : public platform::TextLayout {
 public:
  // What the setting of a text comes to.
  struct Setting {
    std::string text;
    platform::Size size;
    std::vector<PlacedLine> lines;
    bool isTruncated = false;
    double fontScale = 1;
  };

  explicit PangoTextLayout(Setting setting) : setting_(std::move(setting)) {}

  const std::string& text() const override { return setting_.text; }
  platform::Size size() const override { return setting_.size; }
  double firstBaseline() const override { return setting_.lines.empty() ? 0 : setting_.lines.front().baseline; }
  int lineCount() const override { return static_cast<int>(setting_.lines.size()); }
  bool isTruncated() const override { return setting_.isTruncated; }
  double fontScale() const override { return setting_.fontScale; }

  // The top left at `origin`, in the context's pixels.
  void draw(const ContextPtr& context, platform::Point origin, double pixelsPerPoint, BaselineSnap snap,
            const platform::Color& color) const;

 private:
  // The letters without colours of their own, as a mask that serves again where the text is drawn the same way.
  struct Mask {
    SurfacePtr surface;
    double pixelsPerPoint = 0;
    platform::Point fraction;
    BaselineSnap snap = BaselineSnap::none;
    platform::Point offset;  // of the mask from the whole pixel at or before the text's origin
  };

  const Mask& maskFor(double pixelsPerPoint, platform::Point fraction, BaselineSnap snap) const;
  bool hasColoredGlyphs() const;

  Setting setting_;
  mutable Mask mask_;
};

}  // namespace hushpane::desktops
