#include "desktops/shared/text_setter.h"

#include <pango/pangocairo.h>

#include <algorithm>
#include <cmath>

#include "desktops/shared/display_text.h"
#include "desktops/shared/pango_glyphs.h"

namespace hushpane::desktops {

namespace {

constexpr const char* families = "Inter, system-ui, sans-serif";

constexpr std::size_t mostLetters = 4000;
// No letter of a text that people read is narrower, in font sizes; what no line has room for need not be set.
constexpr double narrowestLetter = 0.05;
constexpr double lettersToSpare = 64;

// Widths are asked for as they were answered: this much, in points, is forgiven for rounding.
constexpr double slack = 1.0 / 64;

constexpr double sizeLimit = 2000;  // points; larger letters are no text

// A line is as high as the interface font's lines, whichever fonts its letters come from, so that a row keeps its
// height and its baseline in every language. It grows only for letters that reach out of it by more than this, in font
// sizes: stacked marks. Line heights that fonts of other scripts announce are mostly air.
constexpr double toleratedReach = 0.125;
// However many marks somebody stacks.
constexpr double largestReach = 2;

// How far the line goes above or below its baseline, for glyphs that reach so far.
double reachOr(double base, double glyphs, double fontSize) {
  return glyphs > base + toleratedReach * fontSize ? std::min(glyphs, largestReach * fontSize) : base;
}

// Where the machine has no font at all.
constexpr double defaultAscent = 0.97;
constexpr double defaultDescent = 0.24;

double sizeOf(const platform::Font& font, double fontScale) {
  return std::isfinite(font.size) ? std::clamp(font.size * fontScale, 0.1, sizeLimit) : 13;
}

using Description = std::unique_ptr<PangoFontDescription, decltype(&pango_font_description_free)>;

Description descriptionOf(const platform::Font& font, double fontScale) {
  Description description(pango_font_description_new(), &pango_font_description_free);
  pango_font_description_set_family_static(description.get(), families);
  pango_font_description_set_weight(description.get(), static_cast<PangoWeight>(font.weight));
  pango_font_description_set_style(description.get(), font.italic ? PANGO_STYLE_ITALIC : PANGO_STYLE_NORMAL);
  pango_font_description_set_absolute_size(description.get(), sizeOf(font, fontScale) * PANGO_SCALE);
  return description;
}

// Fontconfig knows the kinds of Chinese by territory; for one named by its script any font with its letters would do.
PangoLanguage* languageOf(const std::string& tag) {
  if (tag.empty()) return pango_language_get_default();
  if (tag.starts_with("zh-Hans")) return pango_language_from_string("zh-cn");
  if (tag.starts_with("zh-Hant")) return pango_language_from_string("zh-tw");
  return pango_language_from_string(tag.c_str());
}

std::size_t lettersNeeded(const platform::TextStyle& style, double width) {
  if (style.lineLimit <= 0 || !std::isfinite(width)) return mostLetters;
  const double smallest = sizeOf(style.font, std::min(style.minimumScale, 1.0)) * narrowestLetter;
  const double needed = style.lineLimit * (std::max(width, 0.0) / smallest + lettersToSpare);
  return static_cast<std::size_t>(std::min(needed, static_cast<double>(mostLetters)));
}

// Letters of these scripts touch; space between them would tear them.
bool joinsLetters(const std::string& text) {
  for (const char* at = text.c_str(); *at != '\0'; at = g_utf8_next_char(at))
    switch (g_unichar_get_script(g_utf8_get_char(at))) {
      case G_UNICODE_SCRIPT_ARABIC:
      case G_UNICODE_SCRIPT_SYRIAC:
      case G_UNICODE_SCRIPT_MONGOLIAN:
      case G_UNICODE_SCRIPT_NKO:
      case G_UNICODE_SCRIPT_DEVANAGARI:
      case G_UNICODE_SCRIPT_BENGALI: return true;
      default: break;
    }
  return false;
}

void setTracking(PangoLayout* layout, const platform::Font& font, double fontScale, const std::string& text) {
  if (font.tracking == 0 || !std::isfinite(font.tracking) || joinsLetters(text)) return;
  const double tracking = std::clamp(font.tracking * fontScale, -sizeLimit, sizeLimit);
  PangoAttrList* attributes = pango_attr_list_new();
  pango_attr_list_insert(attributes, pango_attr_letter_spacing_new(pango_units_from_double(tracking)));
  pango_layout_set_attributes(layout, attributes);
  pango_attr_list_unref(attributes);
}

int lineCountOf(const PangoLayoutPtr& layout) {
  return pango_layout_get_line_count(layout.get());
}

PangoLayoutLine* lineOf(const PangoLayoutPtr& layout, int index) {
  return pango_layout_get_line_readonly(layout.get(), index);
}

void setWidth(PangoLayout* layout, double width) {
  constexpr double widest = 1e6;  // points; Pango counts up to 2^21
  if (width < widest) pango_layout_set_width(layout, pango_units_from_double(std::max(width, 0.0) + slack));
}

double widthOf(PangoLayoutLine* line) {
  double width = 0;
  forEachRun(line, [&width](const PangoGlyphItem& run, double x) {
    width = x + pango_units_to_double(pango_glyph_string_get_width(run.glyphs));
  });
  return width;
}

}  // namespace

TextSetter::TextSetter()
    : context_(pango_font_map_create_context(pango_cairo_font_map_get_default()), &g_object_unref) {
  Cairo::FontOptions options;
  options.set_antialias(Cairo::ANTIALIAS_GRAY);
  options.set_hint_metrics(Cairo::FontOptions::HintMetrics::OFF);
  options.set_hint_style(Cairo::FontOptions::HintStyle::NONE);
  pango_cairo_context_set_font_options(context_.get(), options.cobj());
  pango_context_set_round_glyph_positions(context_.get(), FALSE);
}

PangoLayoutPtr TextSetter::lay(const std::string& text, const platform::TextStyle& style, double fontScale) {
  const bool isRightToLeft = style.direction == platform::LayoutDirection::rightToLeft;
  pango_context_set_base_dir(context_.get(), isRightToLeft ? PANGO_DIRECTION_RTL : PANGO_DIRECTION_LTR);
  pango_context_set_language(context_.get(), languageOf(style.language));
  PangoLayoutPtr layout(pango_layout_new(context_.get()), &g_object_unref);
  pango_layout_set_auto_dir(layout.get(), FALSE);
  pango_layout_set_font_description(layout.get(), descriptionOf(style.font, fontScale).get());
  pango_layout_set_text(layout.get(), text.data(), static_cast<int>(text.size()));
  setTracking(layout.get(), style.font, fontScale, text);
  return layout;
}

PangoLayoutPtr TextSetter::broken(const std::string& text, const platform::TextStyle& style, double width,
                                  double fontScale) {
  auto layout = lay(text, style, fontScale);
  pango_layout_set_wrap(layout.get(), PANGO_WRAP_WORD_CHAR);
  setWidth(layout.get(), width);
  return layout;
}

double TextSetter::fittingScale(const std::string& text, const platform::TextStyle& style, double width) {
  if (style.lineLimit <= 0 || !(style.minimumScale < 1) || !std::isfinite(width)) return 1;
  const double least = std::max(style.minimumScale, 0.01);
  const auto fits = [&](double scale) { return lineCountOf(broken(text, style, width, scale)) <= style.lineLimit; };
  if (fits(1)) return 1;
  int fitting = static_cast<int>(std::ceil(least * 100 - 1e-9)), tooLarge = 100;
  if (!fits(fitting / 100.0)) return least;
  while (tooLarge - fitting > 1) {
    const int middle = (fitting + tooLarge) / 2;
    (fits(middle / 100.0) ? fitting : tooLarge) = middle;
  }
  return fitting / 100.0;
}

// The line and what follows it in its paragraph, on one line.
PangoLayoutPtr TextSetter::truncatedTail(const PangoLayoutPtr& layout, int line, const platform::TextStyle& style,
                                         double width, double fontScale) {
  const std::string text = pango_layout_get_text(layout.get());
  std::string tail = text.substr(static_cast<std::size_t>(lineOf(layout, line)->start_index));
  const auto end = tail.find('\n');
  if (end != std::string::npos) tail = tail.substr(0, end) + "…";
  auto result = lay(tail, style, fontScale);
  pango_layout_set_ellipsize(result.get(), PANGO_ELLIPSIZE_END);
  setWidth(result.get(), width);
  narrowEllipsis(pango_layout_get_line(result.get(), 0));
  return result;
}

TextSetter::LineMetrics TextSetter::metricsOf(const platform::Font& font, double fontScale) {
  using Metrics = std::unique_ptr<PangoFontMetrics, decltype(&pango_font_metrics_unref)>;
  // For another language Pango adds what the fonts of its script announce.
  auto* const latin = pango_language_from_string("en");
  const Metrics metrics(pango_context_get_metrics(context_.get(), descriptionOf(font, fontScale).get(), latin),
                        &pango_font_metrics_unref);
  const LineMetrics found{pango_units_to_double(pango_font_metrics_get_ascent(metrics.get())),
                          pango_units_to_double(pango_font_metrics_get_descent(metrics.get()))};
  if (found.ascent > 0) return found;
  const double size = sizeOf(font, fontScale);
  return {defaultAscent * size, defaultDescent * size};
}

// Puts the lines below one another, and beside one another as the style aligns them.
void TextSetter::place(PangoTextLayout::Setting& setting, const platform::TextStyle& style) {
  const auto base = metricsOf(style.font, setting.fontScale);
  const double size = sizeOf(style.font, setting.fontScale);
  double widest = 0, y = 0;
  for (auto& line : setting.lines) {
    const auto ink = inkOf(line.line);
    if (&line != &setting.lines.front()) y += style.lineSpacing;
    line.baseline = y + reachOr(base.ascent, -ink.y, size);
    y = line.baseline + reachOr(base.descent, ink.bottom(), size);
    widest = std::max(widest, widthOf(line.line));
  }
  const bool isRightToLeft = style.direction == platform::LayoutDirection::rightToLeft;
  for (auto& line : setting.lines) {
    const double room = widest - widthOf(line.line);
    const bool startsLeft = (style.alignment == platform::TextAlignment::leading) != isRightToLeft;
    line.x = style.alignment == platform::TextAlignment::center ? room / 2 : startsLeft ? 0 : room;
  }
  setting.size = {widest, y};
}

PangoTextLayout::Setting TextSetter::set(const std::string& text, const platform::TextStyle& style, double width) {
  const auto shown = displayText(text, lettersNeeded(style, width));
  PangoTextLayout::Setting setting;
  setting.text = text;
  setting.fontScale = fittingScale(shown.text, style, width);
  const auto layout = broken(shown.text, style, width, setting.fontScale);
  const int count = lineCountOf(layout);
  const bool overflows = style.lineLimit > 0 && count > style.lineLimit;
  setting.isTruncated = shown.isCut || overflows;
  for (int line = 0; line < (overflows ? style.lineLimit - 1 : count); ++line)
    setting.lines.push_back({layout, lineOf(layout, line), 0, 0});
  if (overflows) {
    const auto tail = truncatedTail(layout, style.lineLimit - 1, style, width, setting.fontScale);
    setting.lines.push_back({tail, lineOf(tail, 0), 0, 0});
  }
  place(setting, style);
  return setting;
}

}  // namespace hushpane::desktops
