#pragma once

#include "platform/window.h"

namespace hushpane::sim {

class SimWindowServer;

// A window of the program on the simulated desktop. What the base class tells is the model; isOnScreen() and
// shownLevel() tell what the desktop shows.
class SimWindow : public platform::Window {
 public:
  SimWindow(SimWindowServer& server, platform::WindowNumber number, platform::Animator& animator,
            const platform::Rect& frame, const platform::WindowConfiguration& configuration);
  ~SimWindow() override;

  platform::WindowNumber number() const { return number_; }
  // Ordered in as of the end of the last turn.
  bool isOnScreen() const;
  // The level as of the end of the last turn; nothing when the window is not on screen.
  std::optional<int> shownLevel() const;

 protected:
  void frameChanged() override {}
  void orderChanged() override;
  void alphaChanged() override {}
  void contentChanged() override {}

 private:
  SimWindowServer& server_;
  platform::WindowNumber number_;
};

}  // namespace hushpane::sim
