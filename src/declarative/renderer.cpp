#include "declarative/renderer.h"

#include <algorithm>
#include <utility>

#include "declarative/looks.h"

namespace hushpane::declarative {

namespace {

// An element keeps its identity by its id if it has one outside of everything else, or by its position.
struct Position {
  std::size_t index = 0;
  bool operator==(const Position&) const = default;
};

Equatable keyOf(const Element& element, std::size_t index) {
  const auto* identified = std::get_if<kinds::Identified>(&element.kind());
  return identified ? identified->id : Equatable(Position{index});
}

bool isSameKind(const Kind& left, const Kind& right) {
  if (left.index() != right.index()) return false;
  const auto* component = std::get_if<kinds::Component>(&left);
  return !component || component->type == std::get<kinds::Component>(right).type;
}

// Whether an animation or an observer of a value has another one now.
bool hasOtherValue(const Kind& before, const Kind& after) {
  if (const auto* animated = std::get_if<kinds::Animated>(&before))
    return !(animated->value == std::get<kinds::Animated>(after).value);
  if (const auto* change = std::get_if<kinds::Change>(&before))
    return !(change->value == std::get<kinds::Change>(after).value);
  return false;
}

// The transition of an element is the outermost around it, beneath what has no looks of its own. Without one, elements
// fade.
Transition transitionOf(const Node& node) {
  for (const Node* at = &node; at->children.size() == 1; at = at->children.front().get())
    if (const auto* transitioned = std::get_if<kinds::Transitioned>(&at->kind)) return transitioned->transition;
  constexpr TransitionEffect fade{.opacity = 0, .offset = {}, .anchor = {}};
  return {fade, fade};
}

Numbers numbersOf(const TransitionEffect& effect) {
  return {effect.opacity, effect.offset.x, effect.offset.y, effect.scale};
}

std::shared_ptr<Node> takeMatching(std::vector<std::shared_ptr<Node>>& nodes, const Equatable& key, const Kind& kind) {
  const auto found = std::ranges::find_if(
      nodes, [&](const auto& node) { return node && node->key == key && isSameKind(node->kind, kind); });
  return found == nodes.end() ? nullptr : std::exchange(*found, nullptr);
}

}  // namespace

std::shared_ptr<Node> Renderer::makePage(const Element& page) {
  return makeNode(page, Position{}, nullptr);
}

std::shared_ptr<Node> Renderer::makeNode(const Element& element, Equatable key, Node* parent) {
  const auto node = std::make_shared<Node>(element.kind(), std::move(key));
  node->parent = parent;
  enter(node);
  updateChildren(*node, element.children());
  return node;
}

// The node's identity begins.
void Renderer::enter(const std::shared_ptr<Node>& node) {
  node->isOnPage = true;
  if (std::holds_alternative<kinds::Component>(node->kind)) {
    node->identity = makeIdentity_(node);
    node->isDirty = true;
  }
  if (const auto* appearing = std::get_if<kinds::Appearing>(&node->kind); appearing && appearing->appeared)
    callbacks_.push_back(appearing->appeared);
}

void Renderer::update(const std::shared_ptr<Node>& node, const Element& element) {
  node->valueChanged = hasOtherValue(node->kind, element.kind());
  node->kind = element.kind();
  node->symbol.reset();
  const bool isKnown = node->isOnPage;
  if (!isKnown) enter(node);
  if (node->identity)
    node->isDirty = true;
  else
    updateChildren(*node, element.children());
  if (const auto* change = std::get_if<kinds::Change>(&node->kind); change && node->valueChanged && isKnown)
    callbacks_.push_back(change->action);
}

void Renderer::updateChildren(Node& node, const std::vector<Element>& elements) {
  auto before = std::exchange(node.children, {});
  std::vector<std::shared_ptr<Node>> kept(elements.size());
  for (std::size_t index = 0; index < elements.size(); ++index) {
    const Element& element = elements[index];
    if (element.isEmpty()) continue;
    const Equatable key = keyOf(element, index);
    kept[index] = takeMatching(before, key, element.kind());
    // One that is on its way out turns round where it is.
    if (!kept[index]) kept[index] = takeMatching(node.leaving, key, element.kind());
  }
  std::erase(node.leaving, nullptr);
  // What goes says so before what comes in its place.
  for (auto& gone : before)
    if (gone) remove(node, std::move(gone));
  node.children.reserve(elements.size());
  for (std::size_t index = 0; index < elements.size(); ++index) {
    const Element& element = elements[index];
    if (element.isEmpty()) continue;
    auto& child = kept[index];
    if (child)
      update(child, element);
    else
      child = makeNode(element, keyOf(element, index), &node);
    child->index = index;
    node.children.push_back(std::move(child));
  }
}

void Renderer::remove(Node& parent, std::shared_ptr<Node> node) {
  forEachNode(*node, [&](Node& below) {
    if (const auto* matched = std::get_if<kinds::MatchedGeometry>(&below.kind)) {
      const auto frame = contentOnPage(below.parent).at(below.current());
      matchedPlaces_.push_back({below.weak_from_this(), matched->id, frame, below.place.velocity()});
    }
    if (const auto* appearing = std::get_if<kinds::Appearing>(&below.kind); appearing && appearing->disappeared)
      callbacks_.push_back(appearing->disappeared);
    below.identity.reset();
    below.isOnPage = false;
  });
  parent.leaving.push_back(std::move(node));
}

void Renderer::render(Node& node, const Environment& inherited, const std::optional<Animation>& animation) {
  node.animation = animation;
  if (const auto* animated = std::get_if<kinds::Animated>(&node.kind); animated && node.valueChanged)
    node.animation = animated->animation;
  if (std::holds_alternative<kinds::Unanimated>(node.kind)) node.animation.reset();
  node.valueChanged = false;

  Environment environment = inherited;
  if (const auto* foreground = std::get_if<kinds::Foreground>(&node.kind)) environment.foreground = foreground->color;
  if (const auto* change = std::get_if<kinds::EnvironmentChange>(&node.kind)) change->change(environment);
  if (node.identity) renderBody(node, environment);
  node.environment = std::move(environment);

  Numbers looks = looksOf(node.kind, node.environment);
  if (looks != node.looks.target()) {
    if (node.isNew || !node.animation || looks.size() != node.looks.target().size())
      node.looks.set(std::move(looks));
    else
      node.looks.animate(std::move(looks), *node.animation, now_);
  }
  renderChildren(node, node.environment);
}

void Renderer::renderBody(Node& node, const Environment& environment) {
  if (!node.isDirty && environment == node.environment) return;
  node.isDirty = false;
  node.identity->observations.clear();
  Context context(*node.identity, environment);
  // The body may belong to a view that the call itself replaces.
  const auto body = std::get<kinds::Component>(node.kind).body;
  updateChildren(node, {body(context)});
}

void Renderer::renderChildren(Node& node, const Environment& environment) {
  for (const auto& child : node.children) {
    render(*child, environment, node.animation);
    if (!node.isNew) beginPresence(*child, node.animation);
  }
  renderLeaving(node);
}

void Renderer::beginPresence(Node& child, const std::optional<Animation>& animation) {
  if (child.isNew) {
    if (!animation) return;
    const auto insertion = transitionOf(child).insertion;
    child.presence = std::make_unique<Node::Presence>(Node::Presence{Motion(numbersOf(insertion)), insertion.anchor});
    child.presence->effect.animate(numbersOf({}), *animation, now_);
  } else if (child.presence && child.presence->isRemoval) {
    child.presence->isRemoval = false;
    if (animation)
      child.presence->effect.animate(numbersOf({}), *animation, now_);
    else
      child.presence.reset();
  }
}

void Renderer::renderLeaving(Node& node) {
  for (auto& gone : node.leaving) {
    if (gone->presence && gone->presence->isRemoval) continue;
    if (!node.animation) {
      gone.reset();
      continue;
    }
    const auto removal = transitionOf(*gone).removal;
    if (!gone->presence)
      gone->presence = std::make_unique<Node::Presence>(Node::Presence{Motion(numbersOf({})), removal.anchor});
    gone->presence->isRemoval = true;
    gone->presence->effect.animate(numbersOf(removal), *node.animation, now_);
  }
  std::erase(node.leaving, nullptr);
}

}  // namespace hushpane::declarative
