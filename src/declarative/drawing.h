#pragma once

#include <optional>
#include <variant>
#include <vector>

#include "platform/canvas.h"

namespace hushpane::declarative {

struct Drawing;
// What a page looks like at one moment, from back to front; plain values in points from the page's top left.
using Drawings = std::vector<Drawing>;

struct FilledPath {
  platform::Path path;
  platform::Paint paint;
  bool operator==(const FilledPath&) const = default;
};
struct StrokedPath {
  platform::Path path;
  platform::Color color;
  platform::Stroke stroke;
  bool operator==(const StrokedPath&) const = default;
};
struct DrawnText {
  platform::TextLayoutPtr layout;
  platform::Point origin;
  double scale = 1;
  platform::Color color;
  bool operator==(const DrawnText&) const = default;
};
struct DrawnImage {
  platform::ImagePtr image;
  std::optional<platform::Color> templateColor;
  bool operator==(const DrawnImage&) const = default;
};
struct Layer {  // of its children
  platform::LayerEffect effect;
  bool operator==(const Layer&) const = default;
};
struct Clipping {  // of its children
  platform::Path path;
  bool operator==(const Clipping&) const = default;
};

struct Drawing {
  std::variant<FilledPath, StrokedPath, DrawnText, DrawnImage, Layer, Clipping> what;
  platform::Rect frame;   // of what is drawn: the shape's, the text's, all children's
  platform::Rect extent;  // nothing of it shows beyond
  Drawings children;
  bool operator==(const Drawing&) const = default;
};

// The smallest rectangle around both; one without area is left out.
platform::Rect unionOf(const platform::Rect& left, const platform::Rect& right);
// The smallest rectangle around all extents.
platform::Rect extentOf(const Drawings& drawings);

// What shows differently in the two; empty when they look the same.
platform::Rect damage(const Drawings& before, const Drawings& after);

// The same elsewhere.
Drawings movedBy(Drawings drawings, platform::Point offset);

// Draws those that show within `visible`.
void draw(const Drawings& drawings, platform::Canvas& canvas, const platform::Rect& visible);

}  // namespace hushpane::declarative
