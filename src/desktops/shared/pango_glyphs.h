#pragma once

#include <pango/pango.h>

#include <functional>

#include "desktops/shared/cairo_picture.h"
#include "platform/geometry.h"

namespace hushpane::desktops {

// Whether the font's glyphs are pictures in colours of their own.
bool hasColoredGlyphs(PangoFont* font);

// The runs of a line from left to right, with the place of each from the line's start, in points.
void forEachRun(PangoLayoutLine* line, const std::function<void(const PangoGlyphItem&, double x)>& visit);

// What the line's glyphs cover, in points from its baseline's start; nothing where the machine has no font at all.
platform::Rect inkOf(PangoLayoutLine* line);

// Pango widens an ellipsis until the line has all the width that it may have. Gives it its own width.
void narrowEllipsis(PangoLayoutLine* line);

// Adds the outlines of the run, its baseline's start at the context's origin. Cairo would set glyphs to whole pixels;
// outlines stand where they belong.
void addOutlines(const ContextPtr& context, const PangoGlyphItem& run);
// Paints the run with colours of its own.
void showGlyphs(const ContextPtr& context, const PangoGlyphItem& run);

}  // namespace hushpane::desktops
