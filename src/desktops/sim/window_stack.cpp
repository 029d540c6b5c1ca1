#include "desktops/sim/window_stack.h"

#include <algorithm>

namespace hushpane::sim {

const WindowStack::Item* WindowStack::find(platform::WindowNumber number) const {
  const auto found = std::ranges::find(items_, number, &Item::number);
  return found == items_.end() ? nullptr : &*found;
}

void WindowStack::bringToFront(platform::WindowNumber number, int layer) {
  remove(number);
  const auto place = std::ranges::find_if(items_, [layer](const Item& item) { return item.layer <= layer; });
  items_.insert(place, {number, layer});
}

void WindowStack::putBelow(platform::WindowNumber number, platform::WindowNumber sibling) {
  const Item* moved = find(number);
  const Item* above = find(sibling);
  if (!moved || !above || number == sibling || moved->layer != above->layer) return;
  const Item item = *moved;
  remove(number);
  items_.insert(std::ranges::find(items_, sibling, &Item::number) + 1, item);
}

void WindowStack::remove(platform::WindowNumber number) {
  std::erase_if(items_, [number](const Item& item) { return item.number == number; });
}

}  // namespace hushpane::sim
