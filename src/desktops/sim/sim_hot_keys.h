#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <utility>
#include <vector>

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
  platform::Token installChangeHandler(ChangeHandler handler) override;

  // Another program takes a combination; false when somebody has it already.
  bool take(std::uint16_t keyCode, platform::ModifierFlags modifiers);
  void giveBack(std::uint16_t keyCode, platform::ModifierFlags modifiers);
  // The keyboard map changes so that two keys change their places. What another program has stays where it is on the
  // keyboard, and so is a combination with the other key from now on.
  void swapPlaces(std::uint16_t first, std::uint16_t second);
  // A key goes down with these modifiers; true when the program or another one has the combination, so that the window
  // in front hears nothing of it.
  bool press(std::uint16_t keyCode, platform::ModifierFlags modifiers);

  // The combinations that the program has now.
  std::size_t registeredCount() const { return registered_->size(); }

 private:
  using Combination = std::pair<std::uint16_t, platform::ModifierFlags>;
  static Combination combination(std::uint16_t keyCode, platform::ModifierFlags modifiers);

  SimMainQueue& queue_;
  struct Registration {
    platform::HotKeyID id;
    unsigned number = 0;
  };
  using Registered = std::map<Combination, Registration>;
  std::shared_ptr<Registered> registered_ = std::make_shared<Registered>();
  std::set<Combination> taken_;
  unsigned lastRegistration_ = 0;
  platform::HandlerList<void(platform::HotKeyID)> handlers_;
  platform::HandlerList<void(const std::vector<platform::HotKeyID>&)> changeHandlers_;
};

}  // namespace hushpane::sim
