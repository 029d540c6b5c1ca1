#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "declarative/node.h"

namespace hushpane::declarative {

// Brings a tree of nodes into line with the elements of a page: one rendering, of the components that are dirty or see
// another environment than before. Everything that keeps its kind and id keeps its node.
class Renderer {
 public:
  using MakeIdentity = std::function<std::unique_ptr<Identity>(const std::shared_ptr<Node>&)>;

  Renderer(MakeIdentity makeIdentity, double now) : makeIdentity_(std::move(makeIdentity)), now_(now) {}

  // The root of a new tree, to be rendered.
  std::shared_ptr<Node> makePage(const Element& page);
  // What changes moves by the animation, or else is so at once.
  void render(Node& root, const Environment& environment, const std::optional<Animation>& animation);

  // After the layout: where elements of matched geometry come from.
  struct MatchedPlace {
    std::weak_ptr<Node> node;
    MatchedGeometryId id;
    platform::Rect frame;  // on the page
    Numbers velocity;
  };
  const std::vector<MatchedPlace>& matchedPlaces() const { return matchedPlaces_; }

  // To be run when the page is consistent, in this order.
  std::vector<std::function<void()>> takeCallbacks() { return std::exchange(callbacks_, {}); }

 private:
  std::shared_ptr<Node> makeNode(const Element& element, Equatable key, Node* parent);
  void enter(const std::shared_ptr<Node>& node);
  void update(const std::shared_ptr<Node>& node, const Element& element);
  void updateChildren(Node& node, const std::vector<Element>& elements);
  void remove(Node& parent, std::shared_ptr<Node> node);
  void renderBody(Node& node, const Environment& environment);
  void renderChildren(Node& node, const Environment& environment);
  void beginPresence(Node& child, const std::optional<Animation>& animation);
  void renderLeaving(Node& node);

  MakeIdentity makeIdentity_;
  double now_;
  std::vector<MatchedPlace> matchedPlaces_;
  std::vector<std::function<void()>> callbacks_;
};

}  // namespace hushpane::declarative
