#include "declarative/symbol.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "declarative/symbol_shapes.h"

namespace hushpane::declarative {

namespace {

struct NamedSymbol {
  std::string_view name;
  SymbolDrawing (*draw)(double line, SymbolVariant variant);
};

constexpr std::array symbols{
    NamedSymbol{"macwindow.on.rectangle", drawWindowOnRectangle},
    NamedSymbol{"rectangle.on.rectangle", drawRectangleOnRectangle},
    NamedSymbol{"rectangle.stack", drawRectangleStack},
    NamedSymbol{"circle", drawCircle},
    NamedSymbol{"gearshape", drawGear},
    NamedSymbol{"plus", drawPlus},
    NamedSymbol{"minus", drawMinus},
    NamedSymbol{"checkmark", drawCheckmark},
    NamedSymbol{"chevron.left", drawChevronLeft},
    NamedSymbol{"chevron.down", drawChevronDown},
};

// In font sizes: about as thick as the stems of letters of that weight.
double lineWidth(platform::FontWeight weight) {
  switch (weight) {
    case platform::FontWeight::ultraLight: return 0.04;
    case platform::FontWeight::light: return 0.06;
    case platform::FontWeight::regular: return 0.08;
    case platform::FontWeight::medium: return 0.095;
    case platform::FontWeight::semibold: return 0.11;
    case platform::FontWeight::bold: return 0.13;
  }
  return 0.08;
}

// In font sizes, rounded up to whole points: as high as a line of text, so that rows are equally high whichever symbol
// stands in them.
constexpr double lineHeight = 1.2;

}  // namespace

std::optional<SymbolDrawing> drawSymbol(std::string_view name, const platform::Font& font, SymbolVariant variant) {
  const auto symbol = std::ranges::find(symbols, name, &NamedSymbol::name);
  if (symbol == symbols.end()) return std::nullopt;
  const double size = std::isfinite(font.size) ? std::max(font.size, 0.0) : 0;
  auto drawing = symbol->draw(lineWidth(font.weight), variant);
  const double height = std::ceil(lineHeight * size);
  const double above = (height - drawing.size.height * size) / 2;
  drawing.size = {drawing.size.width * size, height};
  for (auto& part : drawing.parts) {
    part.path = part.path.transformed(size, size, {0, above});
    if (part.stroke) part.stroke->width *= size;
  }
  return drawing;
}

}  // namespace hushpane::declarative
