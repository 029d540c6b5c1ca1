#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "declarative/drawing.h"
#include "declarative/element.h"
#include "declarative/focus.h"
#include "declarative/menu.h"
#include "declarative/node.h"
#include "declarative/renderer.h"
#include "platform/canvas.h"
#include "platform/frame_clock.h"
#include "platform/keyboard.h"
#include "platform/lifetime.h"
#include "platform/main_queue.h"
#include "platform/text.h"

namespace hushpane::declarative {

// Keeps one page alive: renders it when something that it observes changes, lays it out, moves it, and gives it the
// pointer. Frames are asked for only while something moves. Whoever shows the page owns it, calls paint() after
// `changed`, and hands on what the pointer does. Main thread only.
class Host {
 public:
  struct Services {
    platform::MainQueue& queue;
    platform::FrameClock& clock;
    platform::TextEngine& texts;
    std::function<void(const MenuRequest&)> openMenu = {};
  };
  // `changed` follows every change of what is to be seen, but the first rendering, which is done when this returns.
  Host(Services services, Element page, Environment environment, std::function<void()> changed);
  ~Host();

  const Environment& environment() const { return environment_; }
  void setEnvironment(Environment environment);
  // What the page is offered to fill; at first nothing, so that it is as large as it makes itself. A side without end
  // counts as none.
  void setProposal(ProposedSize proposal);
  // Pixels per point of where it is shown; lines and edges at rest fall on whole ones.
  void setScale(double scale);

  // As laid out, and as shown now, which follows it through an animation.
  platform::Size targetSize() const;
  platform::Size size() const;

  const Drawings& drawings() const { return drawings_; }
  void paint(platform::Canvas& canvas, const platform::Rect& visible) const { draw(drawings_, canvas, visible); }
  // What changed since the last call; everything at first.
  platform::Rect takeDamage();

  // Points from the page's top left.
  void pointerMoved(platform::Point point);
  void pointerExited();
  void pointerDown(platform::Point point);
  void pointerUp(platform::Point point);
  std::optional<std::string> tooltip(platform::Point point) const;
  // Moves what scrolls beneath the pointer, by points, positive downwards; whether it moved.
  bool scrolled(platform::Point point, double delta);

  // Tab walks through what can be pressed, Space and Return press it, arrows move within a group. Whether the page had
  // a use for the key.
  bool keyPressed(const platform::KeyPress& press);

  // Renders now what has changed, instead of on the next turn of the main queue. This and the pointer may run actions,
  // which may end the host.
  void update();

  // The page goes off the screen: what is on it learns that it disappears. Afterwards the host does nothing any more.
  void leave();

 private:
  std::unique_ptr<Identity> makeIdentity(const std::shared_ptr<Node>& node);
  void withAnimation(const Animation& animation, const std::function<void()>& change);
  void invalidate();
  void renderWhatChanged();
  void renderOnce();
  void layOut(const std::vector<Renderer::MatchedPlace>& matchedPlaces);
  void moveOn();
  void redraw();
  void updateHover();
  void runClockWhileMoving();

  void act(const std::shared_ptr<Node>& target) const;
  void startInMenu();
  void moveFocus(const FocusOrder& order, std::size_t to);
  void letGoOfFocus();
  void focusUnderPointer();

  Services services_;
  Element page_;
  Environment environment_;
  std::function<void()> changed_;
  ProposedSize proposal_;
  double scale_ = 1;

  std::shared_ptr<Node> root_;
  bool isInvalid_ = true;
  bool isUpdateQueued_ = false;
  bool isRendering_ = false;
  bool isBringingUp_ = false;
  int renderingsAtOnce_ = 0;
  std::optional<Animation> running_;  // inside withAnimation()
  std::optional<Animation> pending_;  // of the next rendering
  platform::Token frames_;

  Drawings drawings_;
  platform::Rect damage_;
  platform::Size shownSize_;

  std::optional<platform::Point> pointer_;
  std::vector<std::shared_ptr<Node>> hovered_;
  std::weak_ptr<Node> pressed_;

  struct Focus {
    std::weak_ptr<Node> node;
    std::size_t place = 0;   // in the order, when it last moved
    bool isVisible = false;  // since the keyboard was used
  };
  Focus focus_;
  bool isMenu_ = false;
  bool hasLeft_ = false;
  platform::Lifetime lifetime_;
};

}  // namespace hushpane::declarative
