#include "platform/platform.h"

#include <cassert>

namespace hushpane::platform {

namespace {
Platform* currentPlatform = nullptr;
}

Platform::Platform() {
  assert(!currentPlatform);
  currentPlatform = this;
}

Platform::~Platform() {
  assert(instances_.empty());
  currentPlatform = nullptr;
}

Platform& Platform::current() {
  assert(currentPlatform);
  return *currentPlatform;
}

void Platform::releaseInstances() {
  while (!instances_.empty()) {
    const auto last = std::move(instances_.back());
    instances_.pop_back();
  }
}

void* Platform::find(std::type_index type) const {
  for (const auto& [key, object] : instances_)
    if (key == type) return object.get();
  return nullptr;
}

}  // namespace hushpane::platform
