#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "desktops/sim/sim_main_queue.h"
#include "desktops/sim/sim_window.h"
#include "desktops/sim/window_stack.h"
#include "platform/color.h"
#include "platform/window.h"

namespace hushpane::sim {

// What a window of another application is filled with: one colour, or something to look at on a ground of that colour.
enum class AppContents { plain, text, code, terminal, page, bar };

// A window of another application.
struct AppWindow {
  std::int32_t ownerPid = 0;
  platform::Rect frame{};  // points, title bar included
  std::string title{};
  platform::Color color{0.95, 0.95, 0.96, 1};  // of its contents
  AppContents contents = AppContents::plain;
  int layer = 0;
  double alpha = 1;
  int space = 0;  // the workspace it is on
  // Changes what the window list tells of the window, such as leaving a field out.
  std::function<void(platform::WindowInfo&)> disguise{};
};

// All windows of the simulated desktop, those of other applications and those of the program, in one order. Changes of
// place of the program's windows reach the order at the end of the turn of the main queue, or, when a test makes them
// outside of any turn, as soon as it looks.
class SimWindowServer : public platform::Windows {
 public:
  // One window as it stands in the order; exactly one of the pointers is set. Valid until the next change.
  struct Shown {
    platform::WindowNumber number = 0;
    int layer = 0;
    const AppWindow* application = nullptr;
    const SimWindow* own = nullptr;
  };

  SimWindowServer(SimMainQueue& queue, platform::Animator& animator) : queue_(queue), animator_(animator) {}

  std::unique_ptr<platform::Window> makeWindow(const platform::Rect& frame,
                                               const platform::WindowConfiguration& configuration) override;

  // Other applications' windows. A new one opens in front of its layer. Each of the others returns false when there is
  // no such window.
  platform::WindowNumber add(AppWindow window);
  bool change(platform::WindowNumber number, const std::function<void(AppWindow&)>& change);
  bool setFrame(platform::WindowNumber number, const platform::Rect& frame);
  bool raise(platform::WindowNumber number);
  bool close(platform::WindowNumber number);
  // All windows of an application, keeping the order among them.
  void raiseAll(std::int32_t ownerPid);
  void closeAll(std::int32_t ownerPid);
  // Null when there is no such window.
  const AppWindow* find(platform::WindowNumber number) const;

  // Only the windows of this workspace are on screen; the program's windows are on all of them.
  void showSpace(int space) { space_ = space; }
  int shownSpace() const { return space_; }

  // What is on screen, from front to back.
  std::vector<Shown> stack();
  // The program's windows, ordered in or not, in the order of their making.
  const std::vector<SimWindow*>& ownWindows() const { return own_; }
  // The program's window with that frame, null when there is none.
  SimWindow* ownWindow(const platform::Rect& frame) const;
  // How often the order of the program's windows was changed on screen.
  std::size_t orderChangeCount() const { return orderChangeCount_; }

  // Puts the program's windows where they asked to be.
  void commit();

 private:
  friend SimWindow;
  void attach(SimWindow& window);
  void detach(SimWindow& window);
  void orderChanged(SimWindow& window);
  std::optional<int> layerOf(platform::WindowNumber number);
  void commitOutsideTurn();
  void place(SimWindow& window);

  SimMainQueue& queue_;
  platform::Animator& animator_;
  platform::WindowNumber lastNumber_ = 0;
  int space_ = 0;
  WindowStack stack_;
  std::map<platform::WindowNumber, AppWindow> applications_;
  std::vector<SimWindow*> own_;
  std::vector<SimWindow*> byLastOrdering_;
  std::size_t orderChangeCount_ = 0;
};

}  // namespace hushpane::sim
