#include "desktops/sim/sim_hot_keys.h"

namespace hushpane::sim {

namespace {
constexpr std::uint16_t highestKeyCode = 127;
}

SimHotKeys::Combination SimHotKeys::combination(std::uint16_t keyCode, platform::ModifierFlags modifiers) {
  using namespace platform::modifier;
  return {keyCode, modifiers & (shift | control | option | command)};
}

platform::Token SimHotKeys::installHandler(Handler handler) {
  return handlers_.add(std::move(handler));
}

platform::Token SimHotKeys::registerHotKey(std::uint16_t keyCode, platform::ModifierFlags modifiers,
                                           platform::HotKeyID id) {
  const auto wanted = combination(keyCode, modifiers);
  if (keyCode > highestKeyCode || taken_.contains(wanted) || !registered_->emplace(wanted, id).second) return {};
  return platform::Token([table = std::weak_ptr(registered_), wanted] {
    if (const auto held = table.lock()) held->erase(wanted);
  });
}

bool SimHotKeys::take(std::uint16_t keyCode, platform::ModifierFlags modifiers) {
  const auto wanted = combination(keyCode, modifiers);
  return !registered_->contains(wanted) && taken_.insert(wanted).second;
}

void SimHotKeys::giveBack(std::uint16_t keyCode, platform::ModifierFlags modifiers) {
  taken_.erase(combination(keyCode, modifiers));
}

bool SimHotKeys::press(std::uint16_t keyCode, platform::ModifierFlags modifiers) {
  const auto pressed = combination(keyCode, modifiers);
  const auto own = registered_->find(pressed);
  if (own == registered_->end()) return taken_.contains(pressed);
  queue_.async([this, id = own->second] { handlers_.forEach([id](const auto& handler) { handler(id); }); });
  return true;
}

}  // namespace hushpane::sim
