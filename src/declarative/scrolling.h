#pragma once

#include "declarative/node.h"
#include "platform/geometry.h"

namespace hushpane::declarative {

// Elements whose content may be higher than they are.

// How far the content can move up, as laid out; 0 where all of it shows.
double scrollRange(const Node& viewport);
// Where the content shows, around the frame of a viewport that scrolls: beside it there is room for shadows.
platform::Rect viewOf(const platform::Rect& frame);
// Moves the content up by so many points, as far as it goes; whether it moved.
bool scrollBy(Node& viewport, double delta);
// Moves the innermost one that can at that point, in the coordinates of the root's parent; whether one moved.
bool scrollAt(Node& root, platform::Point point, double delta);
// Scrolls what is around the node as little as brings it into view.
void scrollIntoView(const Node& node);

}  // namespace hushpane::declarative
