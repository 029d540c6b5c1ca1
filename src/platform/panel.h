#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "platform/animator.h"
#include "platform/canvas.h"
#include "platform/color.h"
#include "platform/geometry.h"
#include "platform/keyboard.h"
#include "platform/path.h"

namespace hushpane::platform {

// What a panel shows and what it does with its input. Points from the panel's top left. Input is told on the main
// queue; what it does may end the panel.
class PanelContents {
 public:
  virtual ~PanelContents() = default;

  // Draws what shows within `visible`; the canvas is empty there.
  virtual void paint(Canvas& canvas, const Rect& visible) = 0;

  virtual void pointerMoved(Point) {}
  virtual void pointerExited() {}
  virtual void pointerDown(Point) {}  // the main button
  virtual void pointerUp(Point) {}    // also outside, after a pointerDown()
  virtual void scrolled(double) {}    // points by which the wheel was turned; positive downwards
  virtual void keyPressed(const KeyPress&) {}
};

// What a panel is for its whole life.
struct PanelConfiguration {
  bool ignoresMouseEvents = false;  // clicks pass through to what lies beneath
  // While the panel is shown, keys go to it, and to the panel shown last when there are several; the program in front
  // stays in front, and hot keys work on.
  bool takesKeyboard = false;
};

// A borderless window of the program above all others, covers included, on every workspace. It is transparent where its
// contents draw nothing, and never brings the program to the front. Keeps the model; a desktop overrides the hooks to
// show it. Changes within one turn of the main queue reach the screen together.
class Panel {
 public:
  Panel(Animator& animator, const PanelConfiguration& configuration, PanelContents& contents);
  virtual ~Panel() = default;
  Panel(const Panel&) = delete;
  Panel& operator=(const Panel&) = delete;

  const PanelConfiguration& configuration() const { return configuration_; }
  PanelContents& contents() const { return contents_; }

  const Rect& frame() const { return frame_; }
  void setFrame(const Rect& frame);  // points of the desktop

  // In points from the panel's top left. The pointer meets the panel only inside its bounds, and where the desktop
  // knows no transparency, the panel is cut to it and stands on the ground's colour. What lies outside is a shadow.
  const Path& outline() const { return outline_; }
  const Color& ground() const { return ground_; }
  void setOutline(Path outline, Color ground);
  // Where the panel itself lies, in points of the desktop: its shadow may lie on another screen, or on none.
  Rect outlineFrame() const;
  bool isMetAt(Point point) const;  // in points of the desktop

  double alpha() const { return alpha_.model(); }
  double presentationAlpha() const { return alpha_.presentation(); }
  void setAlpha(double alpha);
  // From what is on screen to `alpha`. The completion is called when the end is reached; never after another change of
  // alpha.
  void animateAlpha(double alpha, Animation animation, std::function<void()> completion = {});

  bool isVisible() const { return isVisible_; }
  void orderFront();
  void orderOut();

  // That part of the contents is to be drawn anew, soon. A visible panel is drawn wholly when it is ordered in.
  virtual void setNeedsDisplay(const Rect& rect) = 0;

 protected:
  // Called after a change, never from the constructor.
  virtual void frameChanged() = 0;
  virtual void outlineChanged() = 0;
  virtual void alphaChanged() = 0;
  virtual void orderChanged() = 0;

 private:
  Animator& animator_;
  PanelConfiguration configuration_;
  PanelContents& contents_;
  Rect frame_;
  Path outline_;
  Color ground_;
  Animated<double> alpha_{1};
  bool isVisible_ = false;
};

// Makes panels.
class Panels {
 public:
  virtual ~Panels() = default;
  // The contents outlive the panel.
  virtual std::unique_ptr<Panel> makePanel(const PanelConfiguration& configuration, PanelContents& contents) = 0;
};

}  // namespace hushpane::platform
