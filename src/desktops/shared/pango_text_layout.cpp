#include "desktops/shared/pango_text_layout.h"

#include <algorithm>
#include <cmath>
#include <functional>

#include "desktops/shared/cairo_layer.h"
#include "desktops/shared/pango_glyphs.h"

namespace hushpane::desktops {

namespace {

// Places on a pixel that letters start at, so that a text that glides needs few masks.
constexpr double placesPerPixel = 4;
constexpr double largestMask = 2e6;  // pixels

// Where the line's baseline starts, in pixels from the text's origin. `fraction` is that of the origin.
platform::Point baselineStart(const PangoTextLayout::Setting& setting, const PlacedLine& line, double pixelsPerPoint,
                              platform::Point fraction, BaselineSnap snap) {
  const double first = fraction.y + setting.lines.front().baseline * pixelsPerPoint;
  const double further = (line.baseline - setting.lines.front().baseline) * pixelsPerPoint;
  const double y = snap == BaselineSnap::wholePixels ? std::round(first) + std::round(further) : first + further;
  return {fraction.x + line.x * pixelsPerPoint, y};
}

using VisitRun = std::function<void(const PangoGlyphItem&)>;

// Visits the runs, each with the context's origin at its start and one unit to the point.
void forEachPlacedRun(const ContextPtr& context, const PangoTextLayout::Setting& setting, double pixelsPerPoint,
                      platform::Point fraction, BaselineSnap snap, const VisitRun& visit) {
  for (const auto& line : setting.lines) {
    const auto start = baselineStart(setting, line, pixelsPerPoint, fraction, snap);
    forEachRun(line.line, [&](const PangoGlyphItem& run, double x) {
      context->save();
      context->translate(start.x + x * pixelsPerPoint, start.y);
      context->scale(pixelsPerPoint, pixelsPerPoint);
      visit(run);
      context->restore();
    });
  }
}

// The pixels that the letters may touch, from the text's origin.
PixelArea inkArea(const PangoTextLayout::Setting& setting, double pixelsPerPoint) {
  PixelArea all;
  for (const auto& line : setting.lines) {
    const auto ink = inkOf(line.line);
    const platform::Rect rect{line.x + ink.x, line.baseline + ink.y, ink.width, ink.height};
    const auto area = pixelsTouched(rect, pixelsPerPoint).outset(2);
    all = all.isEmpty() ? area : all.united(area);
  }
  return all;
}

void addAllOutlines(const ContextPtr& context, const PangoTextLayout::Setting& setting, double pixelsPerPoint,
                    platform::Point fraction, BaselineSnap snap) {
  forEachPlacedRun(context, setting, pixelsPerPoint, fraction, snap, [&context](const PangoGlyphItem& run) {
    if (!hasColoredGlyphs(run.item->analysis.font)) addOutlines(context, run);
  });
}

void showColored(const ContextPtr& context, const PangoTextLayout::Setting& setting, double pixelsPerPoint,
                 platform::Point fraction, BaselineSnap snap) {
  forEachPlacedRun(context, setting, pixelsPerPoint, fraction, snap, [&context](const PangoGlyphItem& run) {
    if (hasColoredGlyphs(run.item->analysis.font)) showGlyphs(context, run);
  });
}

}  // namespace

bool PangoTextLayout::hasColoredGlyphs() const {
  bool has = false;
  for (const auto& line : setting_.lines)
    forEachRun(line.line, [&has](const PangoGlyphItem& run, double) {
      has = has || desktops::hasColoredGlyphs(run.item->analysis.font);
    });
  return has;
}

const PangoTextLayout::Mask& PangoTextLayout::maskFor(double pixelsPerPoint, platform::Point fraction,
                                                      BaselineSnap snap) const {
  const bool serves =
      mask_.surface && mask_.pixelsPerPoint == pixelsPerPoint && mask_.fraction == fraction && mask_.snap == snap;
  if (serves) return mask_;
  const auto area = inkArea(setting_, pixelsPerPoint);
  const auto surface = Cairo::ImageSurface::create(Cairo::Surface::Format::A8, area.width, area.height);
  const auto context = Cairo::Context::create(surface);
  context->translate(-area.x, -area.y);
  addAllOutlines(context, setting_, pixelsPerPoint, fraction, snap);
  context->fill();
  mask_ = {surface, pixelsPerPoint, fraction, snap, {static_cast<double>(area.x), static_cast<double>(area.y)}};
  return mask_;
}

void PangoTextLayout::draw(const ContextPtr& context, platform::Point origin, double pixelsPerPoint, BaselineSnap snap,
                           const platform::Color& color) const {
  if (setting_.lines.empty()) return;
  if (snap == BaselineSnap::wholePixels) origin.x = std::round(origin.x * placesPerPixel) / placesPerPixel;
  const platform::Point whole{std::floor(origin.x), std::floor(origin.y)};
  const platform::Point fraction{origin.x - whole.x, origin.y - whole.y};
  const auto area =
      inkArea(setting_, pixelsPerPoint)
          .moved(static_cast<int>(std::clamp(whole.x, -1e6, 1e6)), static_cast<int>(std::clamp(whole.y, -1e6, 1e6)));
  if (area.intersection(clippedArea(context)).isEmpty()) return;
  context->save();
  context->rectangle(area.x, area.y, area.width, area.height);
  context->clip();
  context->translate(whole.x, whole.y);
  setColor(context, color);
  if (static_cast<double>(area.width) * area.height <= largestMask) {
    const auto& mask = maskFor(pixelsPerPoint, fraction, snap);
    context->mask(mask.surface, mask.offset.x, mask.offset.y);
  } else {
    addAllOutlines(context, setting_, pixelsPerPoint, fraction, snap);
    context->fill();
  }
  if (hasColoredGlyphs()) {
    context->push_group();
    showColored(context, setting_, pixelsPerPoint, fraction, snap);
    context->pop_group_to_source();
    context->paint_with_alpha(color.alpha);
  }
  context->restore();
}

}  // namespace hushpane::desktops
