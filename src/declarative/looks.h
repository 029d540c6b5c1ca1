#pragma once

#include "declarative/animation.h"
#include "declarative/element_kinds.h"
#include "declarative/environment.h"
#include "platform/canvas.h"

namespace hushpane::declarative {

// What a kind of element looks like, as numbers that can move. Two elements of one kind whose numbers differ in count
// do not move into each other. Colours move with premultiplied alpha, so that a clear one has no hue.
Numbers looksOf(const Kind& kind, const Environment& environment);

// And back, for drawing; out of numbers of that kind, which a spring may have carried beyond what they can be.
platform::Color colorFrom(const Numbers& numbers, std::size_t first = 0);
platform::Paint paintFrom(const Numbers& numbers, const kinds::Fill& fill, const platform::Rect& rect);
double strokeWidthFrom(const Numbers& numbers);
platform::LayerEffect effectFrom(const Numbers& numbers);
platform::Point offsetFrom(const Numbers& numbers);
double scaleFrom(const Numbers& numbers);

}  // namespace hushpane::declarative
