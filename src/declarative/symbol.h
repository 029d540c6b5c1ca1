#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "platform/canvas.h"
#include "platform/text.h"

namespace hushpane::declarative {

enum class SymbolVariant { plain, filled };

// One part of a symbol. Hierarchical: parts in the background are fainter.
struct SymbolPart {
  platform::Path path;
  std::optional<platform::Stroke> stroke;  // filled when there is none
  double opacity = 1;
};

// A symbol as drawn beside a text of that font: outlines in points from the top left of its box, which is as high as a
// line of the text, whatever stands in its middle.
struct SymbolDrawing {
  platform::Size size;
  std::vector<SymbolPart> parts;
};

// Nothing for a name that is not known. `font.italic` and `font.tracking` mean nothing here.
std::optional<SymbolDrawing> drawSymbol(std::string_view name, const platform::Font& font, SymbolVariant variant);

}  // namespace hushpane::declarative
