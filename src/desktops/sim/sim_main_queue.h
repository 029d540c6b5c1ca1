#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <utility>

#include "platform/main_queue.h"

namespace hushpane::sim {

// The main queue in virtual time: nothing runs until drain() or advance() is called, and then everything that is due
// runs in the order of its time, equal times in the order of queueing. Time is kept in whole nanoseconds, so many small
// steps end exactly where one large step does.
class SimMainQueue : public platform::MainQueue {
 public:
  void async(std::function<void()> block) override;
  platform::WorkItem after(double seconds, std::function<void()> block) override;
  platform::Timer repeating(double seconds, std::function<void()> block) override;
  double now() const override;
  platform::Date date() const override;

  // From here on the wall clock goes on from `date`.
  void setDate(platform::Date date);

  // Runs what is due now, and what that queues for now, until nothing is left.
  void drain() { advance(0); }
  // Runs what is due now, but not what that queues. Shows in which turn something happens.
  void runOneTurn();
  // Lets time pass; what is due at the very end still runs.
  void advance(double seconds);

  // Forgets all that is still to run.
  void clear() { jobs_.clear(); }

  // Called after each block that ran.
  void setTurnEnded(std::function<void()> handler) { turnEnded_ = std::move(handler); }
  // True inside a block.
  bool isRunning() const { return isRunning_; }
  // Blocks, delayed work and timers that are still to run.
  std::size_t pendingCount() const;

 private:
  using Nanoseconds = std::int64_t;
  using Key = std::pair<Nanoseconds, std::uint64_t>;
  struct Job {
    std::shared_ptr<const std::function<void()>> block;  // null: cancelled
    Nanoseconds interval = 0;                            // 0: once
  };

  static Nanoseconds nanoseconds(double seconds);
  platform::Token schedule(Nanoseconds delay, Nanoseconds interval, std::function<void()> block);
  void runFirst();

  Nanoseconds now_ = 0;
  platform::Date startDate_{1'767'225'600};  // 2026-01-01 00:00 UTC
  std::uint64_t lastSequence_ = 0;
  std::map<Key, std::shared_ptr<Job>> jobs_;
  std::function<void()> turnEnded_;
  bool isRunning_ = false;
};

}  // namespace hushpane::sim
