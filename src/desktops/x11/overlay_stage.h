#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "desktops/x11/placement_choice.h"
#include "desktops/x11/turn_end.h"
#include "desktops/x11/x11_window.h"
#include "platform/handler_list.h"
#include "platform/main_queue.h"
#include "platform/window.h"

namespace hushpane::x11 {

// Shows the windows of the program: at the end of each turn in which something changed, it plans their places, draws
// them for these places, and then moves them there.
class OverlayStage : public platform::Windows {
 public:
  OverlayStage(platform::Animator& animator, platform::MainQueue& queue, TurnEnd& turnEnd, PlacementChoice& placement,
               OverlayServices services);

  std::unique_ptr<platform::Window> makeWindow(const platform::Rect& frame,
                                               const platform::WindowConfiguration& configuration) override;

  void add(X11Window& window) { windows_.push_back(&window); }
  void remove(X11Window& window);
  // Something is to be shown at the end of this turn.
  void request() { turnEnd_.request(); }
  // Something behind a window was drawn on: shown soon, but not more often than frames are.
  void damaged();

  // Called after the last of the fades under way has ended, and after windows came or went without one.
  platform::Token addRestHandler(std::function<void()> handler) { return rests_.add(std::move(handler)); }
  // Whether a window of the program lies over that part of a child of the root.
  bool isCovered(xcb_window_t topLevel, const PixelRect& area) const;

 private:
  bool hasVisible() const;
  void compositorChanged();
  void drawAnew();
  void show();
  void tellRest();
  std::vector<StackEntry> windowsBelow(const X11Window& window, const std::vector<xcb_window_t>& order) const;

  platform::Animator& animator_;
  platform::MainQueue& queue_;
  TurnEnd& turnEnd_;
  PlacementChoice& placement_;
  OverlayServices services_;
  std::vector<X11Window*> windows_;
  double shownAt_ = 0;
  std::ptrdiff_t visibleCount_ = 0;
  bool isRestUntold_ = false;
  platform::HandlerList<void()> rests_;
  platform::WorkItem refresh_;
  platform::WorkItem recheck_;
  platform::WorkItem repaint_;
  platform::Token turns_;
  platform::Token treeChanges_;
  platform::Token compositorChanges_;
  platform::Token placementChanges_;
};

}  // namespace hushpane::x11
