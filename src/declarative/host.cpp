#include "declarative/host.h"

#include <algorithm>
#include <utility>

#include "declarative/layout.h"
#include "declarative/page_drawing.h"
#include "declarative/pointer_target.h"

namespace hushpane::declarative {

using platform::Point;
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
    node.presence->share.advance(now);
    isMoving = isMoving || node.presence->share.isMoving();
    if (!node.presence->share.isMoving() && node.isOnPage) node.presence.reset();
  }
  for (const auto& child : node.children) isMoving = advance(*child, now) || isMoving;
  for (const auto& gone : node.leaving) isMoving = advance(*gone, now) || isMoving;
  std::erase_if(node.leaving, [](const auto& gone) { return !gone->presence || !gone->presence->share.isMoving(); });
  return isMoving;
}

Numbers numbersOf(const Rect& rect) {
  return {rect.x, rect.y, rect.width, rect.height};
}

}  // namespace

Host::Host(Services services, Element page, Environment environment, std::function<void()> changed)
    : services_(services), page_(std::move(page)), environment_(std::move(environment)) {
  update();
  changed_ = std::move(changed);
}

Host::~Host() {
  hovered_.clear();
  // The state that closures still hold outlives its view, but has nobody to tell.
  if (root_) forEachNode(*root_, [](Node& node) { node.identity.reset(); });
}

void Host::setEnvironment(Environment environment) {
  if (environment == environment_) return;
  environment_ = std::move(environment);
  invalidate();
}

void Host::setProposal(ProposedSize proposal) {
  if (proposal == proposal_) return;
  proposal_ = proposal;
  invalidate();
}

void Host::setScale(double scale) {
  if (scale == scale_) return;
  scale_ = scale;
  drawings_.clear();
  redraw();
}

platform::Size Host::targetSize() const {
  const Rect place = root_ ? root_->target() : Rect{};
  return {place.width, place.height};
}

platform::Size Host::size() const {
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
  auto restore = lifetime_.weak([this, outer = std::exchange(running_, animation)] { running_ = outer; });
  change();
  restore();
}

void Host::invalidate() {
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
  if (!isInvalid_ || isRendering_) return;
  for (int times = 0; isInvalid_ && times < mostRenderingsAtOnce; ++times) renderOnce();
  if (isInvalid_) invalidate();
  runClockWhileMoving();
  redraw();
  updateHover();
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
  for (const auto& callback : renderer.takeCallbacks()) callback();
}

void Host::layOut(const std::vector<Renderer::MatchedPlace>& matchedPlaces) {
  const double now = services_.queue.now();
  forEachNode(*root_, [](Node& node) { node.measured.clear(); });
  Layout layout(services_.texts);
  layout.place(*root_, {}, proposal_);
  for (const auto& [node, frame] : layout.placed()) {
    const auto target = numbersOf(frame);
    if (node->isNew || (!node->animation && target != node->place.target()))
      node->place.set(target);
    else if (target != node->place.target())
      node->place.animate(target, *node->animation, now);
  }
  for (const auto& [node, frame] : layout.placed()) {
    const auto* matched = std::get_if<kinds::MatchedGeometry>(&node->kind);
    if (!matched || !node->isNew || !node->animation) continue;
    const auto source = std::ranges::find(matchedPlaces, matched->id, &Renderer::MatchedPlace::id);
    if (source == matchedPlaces.end()) continue;
    const Point origin = node->parent ? originOnPage(*node->parent) : Point{};
    Numbers from = source->frame;
    from[0] -= origin.x;
    from[1] -= origin.y;
    node->place.animate(std::move(from), source->velocity, numbersOf(frame), *node->animation, now);
    for (Node* arrived = node; arrived && arrived->isNew; arrived = arrived->parent) arrived->presence.reset();
  }
  forEachNode(*root_, [](Node& node) { node.isNew = false; });
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
  auto drawings = drawingsOf(*root_, environment_.direction, scale_);
  const Rect changed = damage(drawings_, drawings);
  drawings_ = std::move(drawings);
  if (changed.area() <= 0) return;
  damage_ = damage_.area() > 0 ? unionOf(damage_, changed) : changed;
  if (changed_) changed_();
}

// The page is laid out from leading to trailing.
Point Host::fromLeading(Point point) const {
  const bool isMirrored = environment_.direction == platform::LayoutDirection::rightToLeft;
  return isMirrored ? Point{size().width - point.x, point.y} : point;
}

void Host::pointerMoved(Point point) {
  pointer_ = point;
  updateHover();
}

void Host::pointerExited() {
  pointer_.reset();
  updateHover();
}

// Elements learn once that the pointer came and once that it went, also when they moved beneath it.
void Host::updateHover() {
  const auto now =
      pointer_ && root_ ? hoverTargets(root_, fromLeading(*pointer_)) : std::vector<std::shared_ptr<Node>>{};
  const auto before = std::exchange(hovered_, {now.begin(), now.end()});
  std::vector<std::shared_ptr<Node>> left;
  for (const auto& known : before)
    if (auto node = known.lock(); node && node->isOnPage && std::ranges::find(now, node) == now.end())
      left.push_back(std::move(node));
  std::vector<std::shared_ptr<Node>> entered;
  for (const auto& node : now)
    if (std::ranges::none_of(before, [&](const auto& known) { return known.lock() == node; })) entered.push_back(node);
  const auto tell = [](const std::shared_ptr<Node>& node, bool isOver) {
    // A copy: what it does may replace the element.
    const auto action = std::get<kinds::Hover>(node->kind).action;
    if (action && node->isOnPage) action(isOver);
  };
  for (const auto& node : left) tell(node, false);
  for (const auto& node : entered) tell(node, true);
}

void Host::pointerDown(Point point) {
  pointerMoved(point);
  const auto target = root_ ? pressTarget(root_, fromLeading(point)) : nullptr;
  pressed_ = target;
  if (!target) return;
  target->isPressed = true;
  redraw();
}

void Host::pointerUp(Point point) {
  pointerMoved(point);
  const auto pressed = pressed_.lock();
  pressed_.reset();
  if (!pressed) return;
  pressed->isPressed = false;
  redraw();
  if (!pressed->isOnPage || pressTarget(root_, fromLeading(point)) != pressed) return;
  const auto* button = std::get_if<kinds::Button>(&pressed->kind);
  const auto action = button ? button->action : std::get<kinds::Tap>(pressed->kind).action;
  if (action) action();
}

std::optional<std::string> Host::tooltip(Point point) const {
  return root_ ? tooltipAt(root_, fromLeading(point)) : std::nullopt;
}

}  // namespace hushpane::declarative
