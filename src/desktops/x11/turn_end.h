#pragma once

#include <functional>
#include <memory>

#include "platform/token.h"

namespace hushpane::x11 {

// Work that is done once at the end of a turn of the main loop: when the events and blocks that are due have been
// handled, so that what they change together reaches the screen together.
class TurnEnd {
 public:
  TurnEnd();
  ~TurnEnd();
  TurnEnd(const TurnEnd&) = delete;
  TurnEnd& operator=(const TurnEnd&) = delete;

  // Handlers run in the order of registration, each at the end of every turn that asked for it.
  platform::Token add(std::function<void()> handler);
  void request();
  // Runs the handlers now when they have been waiting for long because events keep coming.
  void runIfOverdue();

 private:
  struct State;
  std::shared_ptr<State> state_;
};

}  // namespace hushpane::x11
