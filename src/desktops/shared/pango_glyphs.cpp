#include "desktops/shared/pango_glyphs.h"

#include <hb-ot.h>
#include <pango/pangocairo.h>

namespace hushpane::desktops {

bool hasColoredGlyphs(PangoFont* font) {
  hb_font_t* outlines = font ? pango_font_get_hb_font(font) : nullptr;
  return outlines && hb_ot_color_has_png(hb_font_get_face(outlines));
}

void forEachRun(PangoLayoutLine* line, const std::function<void(const PangoGlyphItem&, double x)>& visit) {
  int x = 0;
  for (GSList* entry = line->runs; entry; entry = entry->next) {
    const auto& run = *static_cast<const PangoGlyphItem*>(entry->data);
    visit(run, pango_units_to_double(x));
    x += pango_glyph_string_get_width(run.glyphs);
  }
}

platform::Rect inkOf(PangoLayoutLine* line) {
  bool hasFont = true;
  forEachRun(line, [&hasFont](const PangoGlyphItem& run, double) { hasFont = hasFont && run.item->analysis.font; });
  if (!hasFont) return {};  // Pango's answer would be of no meaning
  PangoRectangle ink;
  pango_layout_line_get_extents(line, &ink, nullptr);
  return {pango_units_to_double(ink.x), pango_units_to_double(ink.y), pango_units_to_double(ink.width),
          pango_units_to_double(ink.height)};
}

void narrowEllipsis(PangoLayoutLine* line) {
  forEachRun(line, [](const PangoGlyphItem& run, double) {
    const auto& analysis = run.item->analysis;
    if (!(analysis.flags & PANGO_ANALYSIS_FLAG_IS_ELLIPSIS) || !analysis.font || run.glyphs->num_glyphs == 0) return;
    auto& last = run.glyphs->glyphs[run.glyphs->num_glyphs - 1];
    PangoRectangle logical;
    pango_font_get_glyph_extents(analysis.font, last.glyph, nullptr, &logical);
    last.geometry.width = logical.width;
  });
}

void addOutlines(const ContextPtr& context, const PangoGlyphItem& run) {
  context->move_to(0, 0);
  pango_cairo_glyph_string_path(context->cobj(), run.item->analysis.font, run.glyphs);
}

void showGlyphs(const ContextPtr& context, const PangoGlyphItem& run) {
  context->move_to(0, 0);
  pango_cairo_show_glyph_string(context->cobj(), run.item->analysis.font, run.glyphs);
}

}  // namespace hushpane::desktops
