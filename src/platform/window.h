#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <utility>

#include "platform/animator.h"
#include "platform/geometry.h"
#include "platform/handler_list.h"
#include "platform/view.h"
#include "platform/window_list.h"

namespace hushpane::platform {

namespace windowLevel {
inline constexpr int normal = 0;         // among the applications' windows
inline constexpr int aboveDesktop = -1;  // above the desktop and its icons, beneath every application's window
}  // namespace windowLevel

// Bits of a window's behaviour towards workspaces and window switching.
namespace collectionBehavior {
inline constexpr unsigned canJoinAllSpaces = 1u << 0;
inline constexpr unsigned stationary = 1u << 4;
inline constexpr unsigned ignoresCycle = 1u << 6;
}  // namespace collectionBehavior

// What a window is for its whole life. Windows are borderless.
struct WindowConfiguration {
  bool isOpaque = true;
  bool hasShadow = true;
  bool ignoresMouseEvents = false;  // clicks pass through to what lies beneath
  bool canBecomeKeyWindow = true;
  bool canBecomeMainWindow = true;
  bool canHide = true;
  bool hidesOnDeactivate = false;
  unsigned collectionBehavior = 0;
  bool operator==(const WindowConfiguration&) const = default;
};

// A window of this program. It keeps the model; a desktop overrides the hooks to show it. Changes of place made within
// one turn of the main queue reach the screen together, so only the last of them is ever seen.
class Window {
 public:
  // Where the window stands among the windows of its level.
  enum class Place {
    front,
    below,  // directly beneath placeSibling()
  };

  Window(Animator& animator, const Rect& frame, const WindowConfiguration& configuration);
  virtual ~Window() = default;
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;

  const WindowConfiguration& configuration() const { return configuration_; }
  View& contentView() { return contentView_; }
  const View& contentView() const { return contentView_; }

  const Rect& frame() const { return frame_; }
  void setFrame(const Rect& frame);

  int level() const { return level_; }
  void setLevel(int level);  // another level than before: the window goes to the front of it

  double alpha() const { return alpha_.model(); }
  double presentationAlpha() const { return alpha_.presentation(); }
  void setAlpha(double alpha);
  // From what is on screen to `alpha`. The completion is called when the end is reached; never after another change of
  // alpha.
  void animateAlpha(double alpha, Animation animation, std::function<void()> completion = {});

  // Visible means ordered in, whatever the alpha.
  bool isVisible() const { return isVisible_; }
  Place place() const { return place_; }
  WindowNumber placeSibling() const { return sibling_; }
  void orderFront();
  void orderBelow(WindowNumber sibling);  // also orders the window in; a sibling that is gone leaves the old place
  void orderOut();
  // Called after the window was ordered in or out.
  Token observeVisibility(std::function<void()> observer) { return visibility_.add(std::move(observer)); }

 protected:
  // Called after a change, never from the constructor. Several changes may come before the next turn of the main queue.
  virtual void frameChanged() = 0;
  virtual void orderChanged() = 0;  // visibility, level, place
  virtual void alphaChanged() = 0;  // presentation alpha
  virtual void contentChanged() = 0;

 private:
  void setVisible(bool visible);

  Animator& animator_;
  WindowConfiguration configuration_;
  Rect frame_;
  int level_ = windowLevel::normal;
  bool isVisible_ = false;
  Place place_ = Place::front;
  WindowNumber sibling_ = 0;
  Animated<double> alpha_{1};
  View contentView_;
  HandlerList<void()> visibility_;
};

// Makes windows.
class Windows {
 public:
  virtual ~Windows() = default;
  virtual std::unique_ptr<Window> makeWindow(const Rect& frame, const WindowConfiguration& configuration) = 0;
};

}  // namespace hushpane::platform
