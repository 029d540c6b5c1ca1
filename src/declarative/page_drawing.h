#pragma once

#include "declarative/drawing.h"
#include "declarative/node.h"

namespace hushpane::declarative {

// What the tree of nodes looks like now. What reads in the other direction than what is around it is mirrored as a
// whole, its texts, pictures and symbols are not. What rests begins on whole pixels, of which there are `scale` to a
// point.
Drawings drawingsOf(const Node& root, double scale);

}  // namespace hushpane::declarative
