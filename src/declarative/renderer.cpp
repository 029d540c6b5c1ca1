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
  if (!node->isOnPage) enter(node);
  if (node->identity)
    node->isDirty = true;
  else
    updateChildren(*node, element.children());
  if (const auto* change = std::get_if<kinds::Change>(&node->kind); change && node->valueChanged)
    callbacks_.push_back(change->action);
}

void Renderer::updateChildren(Node& node, const std::vector<Element>& elements) {
  auto before = std::exchange(node.children, {});
  node.children.reserve(elements.size());
  for (std::size_t index = 0; index < elements.size(); ++index) {
    const Element& element = elements[index];
    if (element.isEmpty()) continue;
    const Equatable key = keyOf(element, index);
    auto child = takeMatching(before, key, element.kind());
    // One that is on its way out turns round where it is.
    if (!child) child = takeMatching(node.leaving, key, element.kind());
    if (child)
      update(child, element);
    else
      child = makeNode(element, key, &node);
    node.children.push_back(std::move(child));
  }
  for (auto& gone : before)
    if (gone) remove(node, std::move(gone));
  std::erase(node.leaving, nullptr);
}

void Renderer::remove(Node& parent, std::shared_ptr<Node> node) {
  bool isMatched = false;
  forEachNode(*node, [&](Node& below) {
    if (const auto* matched = std::get_if<kinds::MatchedGeometry>(&below.kind)) {
      const auto origin = originOnPage(below);
      const auto frame = below.current();
      matchedPlaces_.push_back({matched->id, {origin.x, origin.y, frame.width, frame.height}, below.place.velocity()});
      isMatched = true;
    }
    if (const auto* appearing = std::get_if<kinds::Appearing>(&below.kind); appearing && appearing->disappeared)
      callbacks_.push_back(appearing->disappeared);
    below.identity.reset();
    below.isOnPage = false;
  });
  // Its successor carries on with its place; nothing of it stays behind.
  if (!isMatched) parent.leaving.push_back(std::move(node));
}

void Renderer::render(Node& node, const Environment& inherited, const std::optional<Animation>& animation) {
  node.animation = animation;
  if (const auto* animated = std::get_if<kinds::Animated>(&node.kind); animated && node.valueChanged)
    node.animation = animated->animation;
  if (std::holds_alternative<kinds::Unanimated>(node.kind)) node.animation.reset();
  node.valueChanged = false;

  if (const auto* foreground = std::get_if<kinds::Foreground>(&node.kind)) {
    Environment environment = inherited;
    environment.foreground = foreground->color;
    renderChildren(node, environment);
  } else if (const auto* change = std::get_if<kinds::EnvironmentChange>(&node.kind)) {
    Environment environment = inherited;
    change->change(environment);
    node.isMirrored = environment.direction != inherited.direction;
    renderChildren(node, environment);
  } else {
    if (node.identity) renderBody(node, inherited);
    node.environment = inherited;
    Numbers looks = looksOf(node.kind, inherited);
    if (node.isNew || !node.animation || looks.size() != node.looks.target().size()) {
      if (node.isNew || looks != node.looks.target()) node.looks.set(std::move(looks));
    } else if (looks != node.looks.target()) {
      node.looks.animate(std::move(looks), *node.animation, now_);
    }
    renderChildren(node, inherited);
  }
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
    if (!node.isNew) beginPresence(*child, node.animation);
    render(*child, environment, node.animation);
  }
  renderLeaving(node);
}

void Renderer::beginPresence(Node& child, const std::optional<Animation>& animation) {
  if (child.isNew) {
    if (!animation) return;
    child.presence = std::make_unique<Node::Presence>(Node::Presence{Motion({0}), transitionOf(child).insertion});
    child.presence->share.animate({1}, *animation, now_);
  } else if (child.presence && child.presence->share.target() != Numbers{1}) {
    if (animation)
      child.presence->share.animate({1}, *animation, now_);
    else
      child.presence.reset();
  }
}

void Renderer::renderLeaving(Node& node) {
  for (auto& gone : node.leaving) {
    if (gone->presence && gone->presence->share.target() == Numbers{0}) continue;
    if (!node.animation) {
      gone.reset();
      continue;
    }
    const auto removal = transitionOf(*gone).removal;
    if (!gone->presence) gone->presence = std::make_unique<Node::Presence>(Node::Presence{Motion({1}), removal});
    gone->presence->effect = removal;
    gone->presence->share.animate({0}, *node.animation, now_);
  }
  std::erase(node.leaving, nullptr);
}

}  // namespace hushpane::declarative
