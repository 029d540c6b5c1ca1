#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <utility>

#include "desktops/sim/sim_main_queue.h"
#include "platform/handler_list.h"
#include "platform/hot_keys.h"

namespace hushpane::sim {

// Who has which combination of keys, by script. A press reaches the program with the next turn of the main queue.
class SimHotKeys : public platform::HotKeys {
 public:
  explicit SimHotKeys(SimMainQueue& queue) : queue_(queue) {}

  platform::Token installHandler(Handler handler) override;
  platform::Token registerHotKey(std::uint16_t keyCode, platform::ModifierFlags modifiers,
                                 platform::HotKeyID id) override;

  // Another program takes a combination; false when somebody has it already.
  bool take(std::uint16_t keyCode, platform::ModifierFlags modifiers);
  void giveBack(std::uint16_t keyCode, platform::ModifierFlags modifiers);
  // A key goes down with these modifiers; true when the program or another one has the combination, so that the window
  // in front hears nothing of it.
  bool press(std::uint16_t keyCode, platform::ModifierFlags modifiers);

  // The combinations that the program has now.
  std::size_t registeredCount() const { return registered_->size(); }

 private:
  using Combination = std::pair<std::uint16_t, platform::ModifierFlags>;
  static Combination combination(std::uint16_t keyCode, platform::ModifierFlags modifiers);

  SimMainQueue& queue_;
  using Registered = std::map<Combination, platform::HotKeyID>;
  std::shared_ptr<Registered> registered_ = std::make_shared<Registered>();
  std::set<Combination> taken_;
  platform::HandlerList<void(platform::HotKeyID)> handlers_;
};

}  // namespace hushpane::sim
