#pragma once

#include <optional>
#include <variant>
#include <vector>

#include "platform/color.h"
#include "platform/geometry.h"
#include "platform/image.h"
#include "platform/path.h"
#include "platform/text.h"

namespace hushpane::platform {

// Between two points; beyond them the end colours go on.
struct LinearGradient {
  Point start;
  Point end;
  Color startColor;
  Color endColor;
  bool operator==(const LinearGradient&) const = default;
};

using Paint = std::variant<Color, LinearGradient>;

struct Stroke {
  double width = 1;        // points
  bool roundEnds = false;  // round caps and joins, else butt caps and mitred joins
  bool operator==(const Stroke&) const = default;
};

// What a drawing casts behind itself: its coverage in one colour, moved and blurred. The radius is the standard
// deviation of the Gaussian, in points.
struct Shadow {
  Color color;
  double radius = 0;
  Point offset;
  bool operator==(const Shadow&) const = default;
};

// How a group of drawings comes onto the canvas as one. Applied in the order of the members: blurred, its colours
// moved towards their grey, its shadows behind it, all of it faded.
struct LayerEffect {
  double blurRadius = 0;             // points; the standard deviation of the Gaussian
  double saturation = 1;             // 0: grey
  std::vector<Shadow> shadows = {};  // the later ones further behind
  double opacity = 1;
  bool operator==(const LayerEffect&) const = default;
};

// A picture being drawn, in points from its top left; what the desktop shows of it may have more pixels than points.
// Every drawing covers those before it.
class Canvas {
 public:
  virtual ~Canvas() = default;

  virtual void fill(const Path& path, const Paint& paint) = 0;
  virtual void stroke(const Path& path, const Color& color, const Stroke& stroke) = 0;
  // The layout's top left at `origin`, enlarged by `scale` from there. Coloured glyphs keep their colours, faded by the
  // alpha.
  virtual void drawText(const TextLayout& layout, Point origin, double scale, const Color& color) = 0;
  // Aspect fill: the middle of the image over the whole of `rect` and nothing beyond.
  virtual void drawImage(const Image& image, const Rect& rect) = 0;
  // The same with only the image's alpha, in that colour.
  virtual void drawTemplate(const Image& image, const Rect& rect, const Color& color) = 0;

  // Until the matching restoreClip(), drawings show inside the path only. Clips nest, within and around layers.
  virtual void clip(const Path& path) = 0;
  virtual void restoreClip() = 0;

  // Until the matching endLayer(), drawings gather in a layer of their own. They lie within `bounds`; what the effect
  // adds around it need not.
  virtual void beginLayer(const LayerEffect& effect, const Rect& bounds) = 0;
  virtual void endLayer() = 0;
};

}  // namespace hushpane::platform
