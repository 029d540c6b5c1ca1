#include "declarative/host.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "declarative/focus_ring.h"
#include "declarative/layout.h"
#include "declarative/page_drawing.h"
#include "declarative/scrolling.h"

namespace hushpane::declarative {

using platform::Rect;

namespace {

// Views that change their state while they appear are rendered again before anything is shown; those that never come to
// rest wait for the next turn of the queue.
constexpr int mostRenderingsAtOnce = 8;

// Moves everything on to that time; whether anything is still moving.
bool advance(Node& node, double now) {
  node.place.advance(now);
  node.looks.advance(now);
  bool isMoving = node.place.isMoving() || node.looks.isMoving();
  if (node.presence) {
    node.presence->effect.advance(now);
    isMoving = isMoving || node.presence->effect.isMoving();
    if (!node.presence->effect.isMoving() && node.isOnPage) node.presence.reset();
  }
  for (const auto& child : node.children) isMoving = advance(*child, now) || isMoving;
  for (const auto& gone : node.leaving) isMoving = advance(*gone, now) || isMoving;
  std::erase_if(node.leaving, [](const auto& gone) { return !gone->presence || !gone->presence->effect.isMoving(); });
  return isMoving;
}

// Takes off the page what its successor shows from now on, with what was only said of it.
void drop(Node& matched) {
  Node* whole = &matched;
  while (whole->parent && !whole->parent->isOnPage && whole->parent->children.size() == 1) whole = whole->parent;
  if (!whole->parent) return;
  auto& siblings = whole->parent->isOnPage ? whole->parent->leaving : whole->parent->children;
  std::erase_if(siblings, [&](const auto& sibling) { return sibling.get() == whole; });
}

std::optional<double> withEnd(std::optional<double> side) {
  return side && std::isfinite(*side) ? side : std::nullopt;
}

Numbers numbersOf(const Rect& rect) {
  return {rect.x, rect.y, rect.width, rect.height};
}

}  // namespace

Host::Host(Services services, Element page, Environment environment, std::function<void()> changed)
    : services_(std::move(services)), page_(std::move(page)), environment_(std::move(environment)) {
  update();
  startInMenu();
  changed_ = std::move(changed);
}

Host::~Host() {
  // The state that closures still hold outlives its view, but has nobody to tell.
  if (root_) forEachNode(*root_, [](Node& node) { node.identity.reset(); });
}

void Host::leave() {
  hasLeft_ = true;
  isInvalid_ = false;
  frames_.reset();
  pointer_.reset();
  hovered_.clear();
  std::vector<std::function<void()>> callbacks;
  if (const auto page = std::exchange(root_, nullptr))
    forEachNode(*page, [&](Node& node) {
      node.identity.reset();
      node.isOnPage = false;
      const auto* appearing = std::get_if<kinds::Appearing>(&node.kind);
      if (appearing && appearing->disappeared) callbacks.push_back(appearing->disappeared);
    });
  for (const auto& callback : callbacks) callback();
}

void Host::setEnvironment(Environment environment) {
  if (environment == environment_) return;
  environment_ = std::move(environment);
  invalidate();
}

void Host::setProposal(ProposedSize proposal) {
  proposal = {withEnd(proposal.width), withEnd(proposal.height)};
  if (proposal == proposal_) return;
  proposal_ = proposal;
  invalidate();
}

void Host::setScale(double scale) {
  if (scale == scale_ || hasLeft_) return;
  scale_ = scale;
  drawings_.clear();
  redraw();
}

platform::Size Host::targetSize() const {
  if (hasLeft_) return shownSize_;
  const Rect place = root_ ? root_->target() : Rect{};
  return {place.width, place.height};
}

platform::Size Host::size() const {
  if (hasLeft_) return shownSize_;
  const Rect place = root_ ? root_->current() : Rect{};
  return {place.width, place.height};
}

Rect Host::takeDamage() {
  return std::exchange(damage_, Rect{});
}

std::unique_ptr<Identity> Host::makeIdentity(const std::shared_ptr<Node>& node) {
  auto identity = std::make_unique<Identity>();
  identity->invalidate = lifetime_.weak([this, view = std::weak_ptr(node)] {
    const auto dirty = view.lock();
    if (!dirty) return;
    dirty->isDirty = true;
    invalidate();
  });
  identity->updates = std::make_shared<const Updates::Target>(Updates::Target{
      .withAnimation = [this](const Animation& animation,
                              const std::function<void()>& change) { withAnimation(animation, change); },
      .after =
          [this, owner = identity.get()](double seconds, std::function<void()> block) {
            owner->delayedWork.push_back(services_.queue.after(seconds, std::move(block)));
          },
  });
  return identity;
}

void Host::withAnimation(const Animation& animation, const std::function<void()>& change) {
  // What changed before comes about in its own way.
  const auto alive = lifetime_.watch();
  if (isInvalid_ && pending_ != animation) renderWhatChanged();
  if (alive.expired()) return change();
  auto restore = lifetime_.weak([this, outer = std::exchange(running_, animation)] { running_ = outer; });
  change();
  restore();
}

void Host::invalidate() {
  if (hasLeft_) return;
  isInvalid_ = true;
  if (running_) pending_ = running_;
  if (isRendering_ || isUpdateQueued_) return;
  isUpdateQueued_ = true;
  services_.queue.async(lifetime_.weak([this] {
    isUpdateQueued_ = false;
    update();
  }));
}

void Host::update() {
  if (isRendering_ || hasLeft_) return;
  const auto alive = lifetime_.watch();
  renderWhatChanged();
  if (alive.expired() || hasLeft_) return;
  if (isInvalid_) invalidate();
  letGoOfFocus();
  runClockWhileMoving();
  redraw();
  updateHover();
}

void Host::renderWhatChanged() {
  const auto alive = lifetime_.watch();
  const bool isNested = std::exchange(isBringingUp_, true);
  if (!isNested) renderingsAtOnce_ = 0;
  while (isInvalid_ && !isRendering_ && renderingsAtOnce_ < mostRenderingsAtOnce) {
    ++renderingsAtOnce_;
    renderOnce();
    if (alive.expired()) return;
  }
  isBringingUp_ = isNested;
}

void Host::renderOnce() {
  isRendering_ = true;
  isInvalid_ = false;
  const double now = services_.queue.now();
  if (root_) advance(*root_, now);
  Renderer renderer([this](const auto& node) { return makeIdentity(node); }, now);
  if (!root_) root_ = renderer.makePage(page_);
  renderer.render(*root_, environment_, std::exchange(pending_, std::nullopt));
  layOut(renderer.matchedPlaces());
  isRendering_ = false;
  const auto alive = lifetime_.watch();
  for (const auto& callback : renderer.takeCallbacks())
    if (!alive.expired() && !hasLeft_) callback();
}

void Host::layOut(const std::vector<Renderer::MatchedPlace>& matchedPlaces) {
  const double now = services_.queue.now();
  forEachNode(*root_, [](Node& node) { node.measured.clear(); });
  Layout layout(services_.texts);
  layout.place(*root_, {}, proposal_);
  bool viewportChanged = false;
  for (const auto& [node, frame] : layout.placed()) {
    const auto target = numbersOf(frame);
    if (std::holds_alternative<kinds::Scrolling>(node->kind) && frame.height != node->target().height)
      viewportChanged = true;
    if (!node->isNew && target == node->place.target()) continue;
    // What comes into view does not come from where it was unseen.
    if (node->isNew || node->showedNothing || !node->animation)
      node->place.set(target);
    else
      node->place.animate(target, *node->animation, now);
  }
  for (const auto& [node, frame] : layout.placed()) {
    const auto* matched = std::get_if<kinds::MatchedGeometry>(&node->kind);
    if (!matched || !node->isNew || !node->animation) continue;
    const auto source = std::ranges::find(matchedPlaces, matched->id, &Renderer::MatchedPlace::id);
    if (source == matchedPlaces.end()) continue;
    const Mapping around = contentOnPage(node->parent);
    if (around.isFlat()) continue;
    node->place.animate(numbersOf(around.inverted().at(source->frame)), source->velocity, numbersOf(frame),
                        *node->animation, now);
    // Neither fades: it is one that moves.
    for (Node* arrived = node; arrived && arrived->isNew; arrived = arrived->parent) {
      arrived->presence.reset();
      if (arrived->parent && arrived->parent->children.size() > 1) break;
    }
    if (const auto gone = source->node.lock()) drop(*gone);
  }
  forEachNode(*root_, [](Node& node) {
    node.isNew = false;
    node.showedNothing = showsNothing(node);
    if (std::holds_alternative<kinds::Scrolling>(node.kind)) scrollBy(node, 0);
  });
  const auto focused = focus_.isVisible ? focus_.node.lock() : nullptr;
  if (viewportChanged && focused) scrollIntoView(*focused);
}

void Host::moveOn() {
  if (!root_) return;
  if (!advance(*root_, services_.queue.now())) frames_.reset();
  redraw();
  updateHover();
}

void Host::runClockWhileMoving() {
  const bool isMoving = advance(*root_, services_.queue.now());
  if (!isMoving)
    frames_.reset();
  else if (!frames_)
    frames_ = services_.clock.run(lifetime_.weak([this] { moveOn(); }));
}

void Host::redraw() {
  if (!root_) return;
  auto drawings = drawingsOf(*root_, scale_);
  const auto focused = focus_.isVisible && !isMenu_ ? focus_.node.lock() : nullptr;
  if (focused)
    if (auto ring = focusRing(*focused, size(), scale_, !frames_)) drawings.push_back(std::move(*ring));
  const Rect changed = damage(drawings_, drawings);
  drawings_ = std::move(drawings);
  if (changed.area() <= 0 && size() == shownSize_) return;
  shownSize_ = size();
  damage_ = damage_.area() > 0 ? unionOf(damage_, changed) : changed;
  if (changed_) changed_();
}

}  // namespace hushpane::declarative
