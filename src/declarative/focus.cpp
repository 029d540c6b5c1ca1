#include "declarative/focus.h"

#include <algorithm>

#include "declarative/pointer_target.h"

namespace hushpane::declarative {

using platform::Key;
using platform::LayoutDirection;

namespace {

bool hidesContent(const Node& node) {
  if (const auto* effect = std::get_if<kinds::Effect>(&node.kind)) return effect->opacity <= 0;
  if (const auto* scale = std::get_if<kinds::Scale>(&node.kind)) return scale->factor <= 0;
  const auto* accessibility = std::get_if<kinds::Accessibility>(&node.kind);
  return accessibility && accessibility->isHidden;
}

// One without an action only keeps the pointer from what is behind it.
bool isStop(const Node& node) {
  if (const auto* button = std::get_if<kinds::Button>(&node.kind)) return button->action != nullptr;
  if (const auto* tap = std::get_if<kinds::Tap>(&node.kind)) return tap->action != nullptr;
  return takesPresses(node);
}

const Node* groupAround(const Node& node) {
  const Node* at = node.parent;
  while (at && !std::holds_alternative<kinds::FocusGroup>(at->kind)) at = at->parent;
  return at;
}

// By how many elements the key moves; 0 for other keys.
int stepOf(Key key, FocusGroupStyle style, LayoutDirection direction) {
  if (key == Key::up) return -1;
  if (key == Key::down) return 1;
  if (style == FocusGroupStyle::menu || (key != Key::left && key != Key::right)) return 0;
  return (key == Key::right) == (direction == LayoutDirection::leftToRight) ? 1 : -1;
}

}  // namespace

void FocusOrder::collect(const std::shared_ptr<Node>& node, Around around) {
  if (hidesContent(*node)) return;
  if (const auto* accessibility = std::get_if<kinds::Accessibility>(&node->kind))
    around.isOn = accessibility->isOn.value_or(around.isOn);
  if (std::holds_alternative<kinds::FocusGroup>(node->kind)) around = {node.get(), false};
  if (isStop(*node)) stops_.push_back({node, around});
  for (const auto& child : node->children) collect(child, around);
}

FocusOrder::Index FocusOrder::indexOf(const Node* node) const {
  const auto found = std::ranges::find(stops_, node, [](const Stop& stop) { return stop.node.get(); });
  return node && found != stops_.end() ? Index(found - stops_.begin()) : std::nullopt;
}

// Of a group, Tab reaches the element that is on, or else the first.
std::size_t FocusOrder::entryOf(std::size_t index) const {
  const Node* group = stops_[index].around.group;
  if (!group) return index;
  const auto isInGroup = [&](const Stop& stop) { return stop.around.group == group; };
  const auto isEntry = [&](const Stop& stop) { return isInGroup(stop) && stop.around.isOn; };
  auto entry = std::ranges::find_if(stops_, isEntry);
  if (entry == stops_.end()) entry = std::ranges::find_if(stops_, isInGroup);
  return static_cast<std::size_t>(entry - stops_.begin());
}

FocusOrder::Index FocusOrder::next(Index from, std::size_t lastPlace, bool isBackwards) const {
  const std::size_t count = stops_.size();
  if (count == 0) return std::nullopt;
  const auto stepped = [&](std::size_t index) { return (index + (isBackwards ? count - 1 : 1)) % count; };
  if (!from) {
    const std::size_t place = std::min(lastPlace, count) % count;
    return entryOf(isBackwards ? stepped(place) : place);
  }
  const Node* group = stops_[*from].around.group;
  std::size_t index = stepped(*from);
  while (index != *from && group && stops_[index].around.group == group) index = stepped(index);
  return index == *from ? from : entryOf(index);
}

FocusOrder::Index FocusOrder::neighbour(std::size_t from, Key key) const {
  const Node* group = stops_[from].around.group;
  if (!group) return std::nullopt;
  const auto style = std::get<kinds::FocusGroup>(group->kind).style;
  const auto isInGroup = [&](std::size_t index) { return stops_[index].around.group == group; };
  std::size_t first = from, last = from;
  while (first > 0 && isInGroup(first - 1)) --first;
  while (last + 1 < stops_.size() && isInGroup(last + 1)) ++last;
  if (key == Key::home) return first;
  if (key == Key::end) return last;
  const int step = stepOf(key, style, group->environment.direction);
  if (step == 0) return std::nullopt;
  if (from != (step < 0 ? first : last)) return step < 0 ? from - 1 : from + 1;
  // A menu goes round.
  return style == FocusGroupStyle::choice ? from : step < 0 ? last : first;
}

FocusOrder::Index FocusOrder::startOfMenu() const {
  const auto found =
      std::ranges::find_if(stops_, [](const Stop& stop) { return groupStyle(*stop.node) == FocusGroupStyle::menu; });
  return found == stops_.end() ? std::nullopt : Index(entryOf(static_cast<std::size_t>(found - stops_.begin())));
}

bool keepsFocus(const Node& node) {
  if (!node.isOnPage || !isStop(node)) return false;
  for (const Node* at = &node; at; at = at->parent)
    if (hidesContent(*at)) return false;
  return true;
}

std::optional<FocusGroupStyle> groupStyle(const Node& node) {
  const Node* group = groupAround(node);
  return group ? std::optional(std::get<kinds::FocusGroup>(group->kind).style) : std::nullopt;
}

std::vector<std::shared_ptr<Node>> focusListeners(Node& node) {
  std::vector<std::shared_ptr<Node>> found;
  for (Node* at = &node; at; at = at->parent)
    if (std::holds_alternative<kinds::Hover>(at->kind) || std::holds_alternative<kinds::Focus>(at->kind))
      found.push_back(at->shared_from_this());
  std::ranges::reverse(found);
  return found;
}

}  // namespace hushpane::declarative
