#include "desktops/sim/sim_main_queue.h"

#include <algorithm>
#include <cassert>
#include <cmath>

namespace hushpane::sim {

namespace {
constexpr double longestDelay = 1e9;                  // seconds
constexpr std::int64_t shortestInterval = 1'000'000;  // nanoseconds
constexpr double perSecond = 1e9;                     // nanoseconds
}  // namespace

SimMainQueue::Nanoseconds SimMainQueue::nanoseconds(double seconds) {
  return seconds > 0 ? std::llround(std::min(seconds, longestDelay) * perSecond) : 0;
}

platform::Token SimMainQueue::schedule(Nanoseconds delay, Nanoseconds interval, std::function<void()> block) {
  auto job = std::make_shared<Job>(Job{std::make_shared<const std::function<void()>>(std::move(block)), interval});
  jobs_.emplace(Key{now_ + delay, ++lastSequence_}, job);
  return platform::Token([job = std::weak_ptr(job)] {
    if (const auto held = job.lock()) held->block.reset();
  });
}

void SimMainQueue::async(std::function<void()> block) {
  jobs_.emplace(Key{now_, ++lastSequence_},
                std::make_shared<Job>(Job{std::make_shared<const std::function<void()>>(std::move(block))}));
}

platform::WorkItem SimMainQueue::after(double seconds, std::function<void()> block) {
  return schedule(nanoseconds(seconds), 0, std::move(block));
}

platform::Timer SimMainQueue::repeating(double seconds, std::function<void()> block) {
  const Nanoseconds interval = std::max(nanoseconds(seconds), shortestInterval);
  return schedule(interval, interval, std::move(block));
}

double SimMainQueue::now() const {
  return static_cast<double>(now_) / perSecond;
}

platform::Date SimMainQueue::date() const {
  return {startDate_.secondsSince1970 + now()};
}

void SimMainQueue::setDate(platform::Date date) {
  startDate_.secondsSince1970 = date.secondsSince1970 - now();
}

void SimMainQueue::runFirst() {
  const auto first = jobs_.begin();
  const Nanoseconds due = first->first.first;
  const auto job = first->second;
  jobs_.erase(first);
  const auto block = job->block;
  if (!block) return;
  if (job->interval > 0) jobs_.emplace(Key{due + job->interval, ++lastSequence_}, job);
  now_ = std::max(now_, due);
  isRunning_ = true;
  (*block)();
  isRunning_ = false;
  if (turnEnded_) turnEnded_();
}

void SimMainQueue::runOneTurn() {
  assert(!isRunning_);
  const std::uint64_t last = lastSequence_;
  auto next = jobs_.begin();
  while (next != jobs_.end() && next->first.first <= now_ && next->first.second <= last) {
    runFirst();
    next = jobs_.begin();
  }
}

void SimMainQueue::advance(double seconds) {
  assert(!isRunning_);
  const Nanoseconds end = now_ + nanoseconds(seconds);
  while (!jobs_.empty() && jobs_.begin()->first.first <= end) runFirst();
  now_ = end;
}

std::size_t SimMainQueue::pendingCount() const {
  return static_cast<std::size_t>(
      std::count_if(jobs_.begin(), jobs_.end(), [](const auto& entry) { return entry.second->block != nullptr; }));
}

}  // namespace hushpane::sim
