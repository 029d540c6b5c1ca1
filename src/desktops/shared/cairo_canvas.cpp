#include "desktops/shared/cairo_canvas.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <utility>

#include "desktops/shared/cairo_layer.h"
#include "desktops/shared/cairo_path.h"
#include "desktops/shared/pango_text_layout.h"

namespace hushpane::desktops {

// What is drawn into now. Contexts count in pixels of the whole picture.
struct CairoCanvas::Layer {
  CairoGroup group;
  std::optional<platform::LayerEffect> effect;  // absent where drawings go straight into what lies below
  int clips = 0;                                // that are open
};

namespace {

void setPaint(const ContextPtr& context, const platform::Paint& paint, double scale) {
  if (const auto* color = std::get_if<platform::Color>(&paint)) return setColor(context, *color);
  const auto& gradient = std::get<platform::LinearGradient>(paint);
  const auto pattern = Cairo::LinearGradient::create(gradient.start.x * scale, gradient.start.y * scale,
                                                     gradient.end.x * scale, gradient.end.y * scale);
  const auto& [startColor, endColor] = std::pair(gradient.startColor, gradient.endColor);
  pattern->add_color_stop_rgba(0, startColor.red, startColor.green, startColor.blue, startColor.alpha);
  pattern->add_color_stop_rgba(1, endColor.red, endColor.green, endColor.blue, endColor.alpha);
  context->set_source(pattern);
}

bool isFinite(const platform::Rect& rect) {
  return std::isfinite(rect.x) && std::isfinite(rect.y) && std::isfinite(rect.width) && std::isfinite(rect.height);
}

// The image as it fills an area in pixels, its middle over the area's; null for what is no picture or no area.
Cairo::RefPtr<Cairo::SurfacePattern> filling(const platform::Image& image, const PixelArea& area) {
  const auto surface = surfaceOf(image);
  if (!surface || area.isEmpty()) return nullptr;
  const double shrink =
      std::min(static_cast<double>(image.width) / area.width, static_cast<double>(image.height) / area.height);
  const auto pattern = Cairo::SurfacePattern::create(surface);
  pattern->set_matrix(Cairo::Matrix(shrink, 0, 0, shrink, image.width / 2.0 - shrink * (area.x + area.width / 2.0),
                                    image.height / 2.0 - shrink * (area.y + area.height / 2.0)));
  pattern->set_filter(Cairo::SurfacePattern::Filter::GOOD);
  pattern->set_extend(Cairo::Pattern::Extend::PAD);
  return pattern;
}

// The pixels of a rectangle whose edges come onto whole pixels.
PixelArea sharpArea(const platform::Rect& rect, double scale) {
  const auto touched = [scale](double points) {
    return static_cast<int>(std::lround(std::clamp(points * scale, -1e6, 1e6)));
  };
  return {touched(rect.x), touched(rect.y), touched(rect.right()) - touched(rect.x),
          touched(rect.bottom()) - touched(rect.y)};
}

void addArea(const ContextPtr& context, const PixelArea& area) {
  context->rectangle(area.x, area.y, area.width, area.height);
}

SurfacePtr surfaceOver(platform::Image& picture) {
  if (const auto surface = surfaceOf(picture)) return surface;
  return Cairo::ImageSurface::create(Cairo::Surface::Format::ARGB32, 0, 0);
}

}  // namespace

CairoCanvas::CairoCanvas(platform::Image& picture, double scale, std::optional<platform::Rect> damage)
    : CairoCanvas(surfaceOver(picture), scale, damage) {}

CairoCanvas::CairoCanvas(const SurfacePtr& picture, double scale, std::optional<platform::Rect> damage)
    : scale_(std::isfinite(scale) && scale > 0 ? scale : 1) {
  const PixelArea whole{0, 0, picture->get_width(), picture->get_height()};
  const auto context = Cairo::Context::create(picture);
  addArea(context, damage && isFinite(*damage) ? pixelsTouched(*damage, scale_).intersection(whole) : whole);
  context->clip();
  layers_.push_back({{picture, context, whole}, std::nullopt});
}

CairoCanvas::~CairoCanvas() {
  while (layers_.size() > 1) endLayer();
  top().group.surface->flush();
}

CairoCanvas::Layer& CairoCanvas::top() {
  return layers_.back();
}

const ContextPtr& CairoCanvas::context() {
  return top().group.context;
}

void CairoCanvas::clear() {
  context()->save();
  context()->set_operator(Cairo::Context::Operator::CLEAR);
  context()->paint();
  context()->restore();
}

void CairoCanvas::fill(const platform::Path& path, const platform::Paint& paint) {
  if (!addSharpPath(context(), path, scale_)) return;
  setPaint(context(), paint, scale_);
  context()->fill();
}

void CairoCanvas::stroke(const platform::Path& path, const platform::Color& color, const platform::Stroke& stroke) {
  if (!std::isfinite(stroke.width) || stroke.width <= 0 || !addPath(context(), path, scale_)) return;
  context()->set_line_width(stroke.width * scale_);
  context()->set_line_cap(stroke.roundEnds ? Cairo::Context::LineCap::ROUND : Cairo::Context::LineCap::BUTT);
  context()->set_line_join(stroke.roundEnds ? Cairo::Context::LineJoin::ROUND : Cairo::Context::LineJoin::MITER);
  setColor(context(), color);
  context()->stroke();
}

void CairoCanvas::drawText(const platform::TextLayout& layout, platform::Point origin, double scale,
                           const platform::Color& color) {
  const auto* text = dynamic_cast<const PangoTextLayout*>(&layout);
  const bool isDrawable = std::isfinite(origin.x) && std::isfinite(origin.y) && std::isfinite(scale) && scale > 0;
  if (!text || !isDrawable || color.alpha <= 0) return;
  const auto snap = scale == 1 ? BaselineSnap::wholePixels : BaselineSnap::none;
  text->draw(context(), {origin.x * scale_, origin.y * scale_}, scale * scale_, snap, color);
}

void CairoCanvas::drawImage(const platform::Image& image, const platform::Rect& rect) {
  if (!isFinite(rect)) return;
  const auto area = sharpArea(rect, scale_);
  const auto pattern = filling(image, area);
  if (!pattern) return;
  addArea(context(), area);
  context()->set_source(pattern);
  context()->fill();
}

void CairoCanvas::drawTemplate(const platform::Image& image, const platform::Rect& rect, const platform::Color& color) {
  if (!isFinite(rect)) return;
  const auto area = sharpArea(rect, scale_);
  const auto pattern = filling(image, area);
  if (!pattern) return;
  context()->save();
  addArea(context(), area);
  context()->clip();
  setColor(context(), color);
  context()->mask(pattern);
  context()->restore();
}

void CairoCanvas::clip(const platform::Path& path) {
  context()->save();
  // A path without area, or without finite numbers, shows nothing.
  if (!addSharpPath(context(), path, scale_)) context()->begin_new_path();
  context()->clip();
  ++top().clips;
}

void CairoCanvas::restoreClip() {
  if (top().clips == 0) return;
  --top().clips;
  context()->restore();
}

void CairoCanvas::beginLayer(const platform::LayerEffect& effect, const platform::Rect& bounds) {
  const auto below = top().group;
  below.context->save();
  if (effect == platform::LayerEffect{}) return layers_.push_back({below, std::nullopt});
  try {
    const auto pixels = isFinite(bounds) ? pixelsTouched(bounds, scale_) : below.area;
    const auto area = layerArea(effect, pixels, clippedArea(below.context), scale_);
    if (!area.isEmpty() && effect.opacity > 0) return layers_.push_back({CairoGroup::over(area), effect});
  } catch (const std::exception&) {
    // No room for the pixels of the layer: it is left out.
  }
  addArea(below.context, {});
  below.context->clip();
  layers_.push_back({below, std::nullopt});
}

void CairoCanvas::endLayer() {
  if (layers_.size() < 2) return;
  while (top().clips > 0) restoreClip();
  const Layer layer = std::move(layers_.back());
  layers_.pop_back();
  if (layer.effect) try {
      paintGroup(context(), layer.group, *layer.effect, scale_);
    } catch (const std::exception&) {
      // No room to blur it: the layer is left out.
    }
  context()->restore();
}

}  // namespace hushpane::desktops
