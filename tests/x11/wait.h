#pragma once

#include <chrono>
#include <thread>

namespace hushpane::x11_tests {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;
using namespace std::chrono_literals;

// What a busy machine with sanitizers is given for anything that people would call immediate.
inline constexpr milliseconds patience = 8s;

// Asks until the condition holds; false when the limit is over first.
template <class Condition>
bool waitUntil(Condition condition, milliseconds limit = patience) {
  const auto end = Clock::now() + limit;
  while (!condition()) {
    if (Clock::now() > end) return false;
    std::this_thread::sleep_for(2ms);
  }
  return true;
}

// Asks during the whole time; false as soon as the condition fails.
template <class Condition>
bool holdsFor(milliseconds time, Condition condition) {
  return !waitUntil([&] { return !condition(); }, time);
}

}  // namespace hushpane::x11_tests
