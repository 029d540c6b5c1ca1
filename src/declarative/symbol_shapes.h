#pragma once

#include "declarative/symbol.h"

namespace hushpane::declarative {

// The drawings of symbols for a font of size 1, with lines `line` wide.
SymbolDrawing drawWindowOnRectangle(double line, SymbolVariant variant);
SymbolDrawing drawRectangleOnRectangle(double line, SymbolVariant variant);
SymbolDrawing drawRectangleStack(double line, SymbolVariant variant);
SymbolDrawing drawCircle(double line, SymbolVariant variant);
SymbolDrawing drawGear(double line, SymbolVariant variant);
// Nothing of these can be filled.
SymbolDrawing drawPlus(double line, SymbolVariant variant);
SymbolDrawing drawMinus(double line, SymbolVariant variant);
SymbolDrawing drawCheckmark(double line, SymbolVariant variant);
SymbolDrawing drawChevronLeft(double line, SymbolVariant variant);
SymbolDrawing drawChevronDown(double line, SymbolVariant variant);

}  // namespace hushpane::declarative
