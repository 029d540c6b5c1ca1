#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "declarative/node.h"

namespace hushpane::declarative {

// What the pointer meets on the page as it is shown. Points are in the coordinates of the node's parent, from leading
// to trailing. Elements on their way out are met by nobody.

// Whether the pointer and the keyboard can press it: a button, a tap area or a menu.
bool takesPresses(const Node& node);
// The one of these in front at that point; null when there is none.
std::shared_ptr<Node> pressTarget(const std::shared_ptr<Node>& node, platform::Point point);
// Every element at that point that wants to know of it, the outer ones first.
std::vector<std::shared_ptr<Node>> hoverTargets(const std::shared_ptr<Node>& node, platform::Point point);
// The text to be shown there.
std::optional<std::string> tooltipAt(const std::shared_ptr<Node>& node, platform::Point point);
// Whether the node draws something there, or has a content shape there.
bool covers(const Node& node, platform::Point point);
// The point in the coordinates of the node's content; nothing where the node shows nothing there.
std::optional<platform::Point> within(const Node& node, platform::Point point);

}  // namespace hushpane::declarative
