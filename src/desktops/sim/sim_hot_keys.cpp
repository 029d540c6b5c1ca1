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
  if (keyCode > highestKeyCode || taken_.contains(wanted) || registered_->contains(wanted)) return {};
  const auto number = ++lastRegistration_;
  registered_->emplace(wanted, Registration{id, number});
  return platform::Token([table = std::weak_ptr(registered_), number] {
    if (const auto held = table.lock())
      std::erase_if(*held, [number](const auto& entry) { return entry.second.number == number; });
  });
}

platform::Token SimHotKeys::installChangeHandler(ChangeHandler handler) {
  return changeHandlers_.add(std::move(handler));
}

bool SimHotKeys::take(std::uint16_t keyCode, platform::ModifierFlags modifiers) {
  const auto wanted = combination(keyCode, modifiers);
  return !registered_->contains(wanted) && taken_.insert(wanted).second;
}

void SimHotKeys::giveBack(std::uint16_t keyCode, platform::ModifierFlags modifiers) {
  taken_.erase(combination(keyCode, modifiers));
}

void SimHotKeys::swapPlaces(std::uint16_t first, std::uint16_t second) {
  const auto moves = [&](std::uint16_t keyCode) { return keyCode == first || keyCode == second; };
  std::set<Combination> taken;
  for (const auto& [keyCode, modifiers] : taken_)
    taken.emplace(!moves(keyCode) ? keyCode : keyCode == first ? second : first, modifiers);
  taken_ = std::move(taken);
  std::vector<platform::HotKeyID> lost;
  std::erase_if(*registered_, [&](const auto& entry) {
    if (!moves(entry.first.first)) return false;
    lost.push_back(entry.second.id);
    return true;
  });
  queue_.async([this, lost] { changeHandlers_.forEach([&lost](const auto& handler) { handler(lost); }); });
}

bool SimHotKeys::press(std::uint16_t keyCode, platform::ModifierFlags modifiers) {
  const auto pressed = combination(keyCode, modifiers);
  const auto own = registered_->find(pressed);
  if (own == registered_->end()) return taken_.contains(pressed);
  queue_.async([this, id = own->second.id] { handlers_.forEach([id](const auto& handler) { handler(id); }); });
  return true;
}

}  // namespace hushpane::sim
