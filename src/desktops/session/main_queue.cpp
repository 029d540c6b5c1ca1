#include "desktops/session/main_queue.h"

#include <algorithm>
#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <utility>

#include "desktops/session/ready_source.h"

namespace hushpane::session {

namespace {

using Microseconds = gint64;

constexpr double microsecondsPerSecond = 1e6;
constexpr Microseconds longestDelay = 1000LL * 365 * 24 * 3600 * 1000000;

Microseconds microseconds(double seconds) {
  if (!(seconds > 0)) return 0;
  const double converted = seconds * microsecondsPerSecond;
  return converted < static_cast<double>(longestDelay) ? static_cast<Microseconds>(converted) : longestDelay;
}

}  // namespace

struct MainQueue::State : std::enable_shared_from_this<MainQueue::State> {
  // Timers by due time and, among equals, by age.
  using Key = std::pair<Microseconds, std::uint64_t>;
  struct Entry {
    std::optional<Microseconds> period;
    std::shared_ptr<const std::function<void()>> block;
  };
  std::deque<std::function<void()>> blocks;
  std::map<Key, Entry> timers;
  std::map<std::uint64_t, Key> keys;
  std::uint64_t lastId = 0;
  std::optional<ReadySource> source;

  void attach() {
    source.emplace(G_PRIORITY_DEFAULT, [this] {
      const auto held = shared_from_this();
      held->run();
    });
  }

  void detach() {
    source.reset();
    std::exchange(blocks, {});
    std::exchange(timers, {});
    keys.clear();
  }

  void schedule() {
    if (!source) return;
    Microseconds due = -1;
    if (!blocks.empty())
      due = 0;
    else if (!timers.empty())
      due = timers.begin()->first.first;
    source->setReadyTime(due);
  }

  // Blocks queued meanwhile wait for the next turn, so that events come in between.
  void run() {
    for (auto round = blocks.size(); round > 0 && !blocks.empty(); --round) {
      const auto block = std::move(blocks.front());
      blocks.pop_front();
      block();
    }
    const auto now = g_get_monotonic_time();
    const auto newest = lastId;
    while (!timers.empty() && timers.begin()->first.first <= now && timers.begin()->first.second <= newest) fire(now);
    schedule();
  }

  void fire(Microseconds now) {
    auto node = timers.extract(timers.begin());
    const auto block = node.mapped().block;
    const auto id = node.key().second;
    if (const auto period = node.mapped().period) {
      // A late timer keeps its rhythm but never makes up for what it missed.
      node.key().first = std::max(node.key().first + *period, now + 1);
      keys[id] = node.key();
      timers.insert(std::move(node));
    } else {
      keys.erase(id);
    }
    (*block)();
  }

  platform::Token add(double seconds, bool repeats, std::function<void()> block) {
    const auto delay = microseconds(seconds);
    const Key key{g_get_monotonic_time() + delay, ++lastId};
    timers.emplace(key, Entry{repeats ? std::optional(std::max<Microseconds>(delay, 1)) : std::nullopt,
                              std::make_shared<const std::function<void()>>(std::move(block))});
    keys.emplace(key.second, key);
    schedule();
    return platform::Token([state = weak_from_this(), id = key.second] {
      const auto held = state.lock();
      if (!held) return;
      const auto found = held->keys.find(id);
      if (found == held->keys.end()) return;
      const auto node = held->timers.extract(found->second);
      held->keys.erase(found);
      held->schedule();
    });
  }
};

MainQueue::MainQueue() : state_(std::make_shared<State>()) {
  state_->attach();
}

MainQueue::~MainQueue() {
  state_->detach();
}

void MainQueue::async(std::function<void()> block) {
  state_->blocks.push_back(std::move(block));
  state_->schedule();
}

platform::WorkItem MainQueue::after(double seconds, std::function<void()> block) {
  return state_->add(seconds, false, std::move(block));
}

platform::Timer MainQueue::repeating(double seconds, std::function<void()> block) {
  return state_->add(seconds, true, std::move(block));
}

double MainQueue::now() const {
  return static_cast<double>(g_get_monotonic_time()) / microsecondsPerSecond;
}

platform::Date MainQueue::date() const {
  return {static_cast<double>(g_get_real_time()) / microsecondsPerSecond};
}

}  // namespace hushpane::session
