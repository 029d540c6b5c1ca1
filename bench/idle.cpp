// What the program does while nothing happens: in standard mode, and in focus among 200 windows.

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "bench/child_process.h"
#include "bench/desk.h"
#include "bench/figure.h"
#include "bench/process_usage.h"

namespace {

using namespace hushpane;
using namespace hushpane::bench;

constexpr double settleSeconds = 4;
constexpr double libraryThreadSeconds = 30;  // by then GLib has ended the worker threads of the start
constexpr double attachSeconds = 1;
constexpr const char* windowCount = "200";
constexpr double largestShare = 0.003;  // of a core, in focus
constexpr double ticksPerSecond = 10;

double idleSeconds() {
  return static_cast<double>(numberFrom("BENCH_IDLE_SECONDS", 60));
}

// The last line of the summary of strace -c: per cent, seconds, microseconds a call, calls, "total". A process that
// made no call at all has no summary.
long callsIn(const std::filesystem::path& summary) {
  std::ifstream lines(summary);
  if (!lines) throw std::runtime_error("strace told nothing");
  for (std::string line; std::getline(lines, line);) {
    if (!line.ends_with("total")) continue;
    std::istringstream words(line);
    double share, seconds;
    long perCall, calls;
    if (words >> share >> seconds >> perCall >> calls) return calls;
  }
  return 0;
}

void measureStandard() {
  choose("standard", "blur");
  const auto hushpane = startHushpane();
  sleepSeconds(libraryThreadSeconds);
  const auto summary = std::filesystem::temp_directory_path() / "strace.txt";
  ChildProcess strace({"strace", "-c", "-f", "-q", "-o", summary.string(), "-p", std::to_string(hushpane->pid())});
  sleepSeconds(attachSeconds);
  const auto before = usageOf(hushpane->pid());
  sleepSeconds(idleSeconds());
  const auto after = usageOf(hushpane->pid());
  if (!strace.isRunning() || !hushpane->isRunning()) throw std::runtime_error("a program ended early");
  strace.end(SIGINT);
  const long calls = callsIn(summary);
  const long wakeUps = after.wakeUps - before.wakeUps;
  print({"standard mode, idle for " + text(idleSeconds(), "s", 0),
         std::to_string(calls) + " system calls, " + std::to_string(wakeUps) + " wake-ups",
         {},
         {},
         "none",
         calls == 0 && wakeUps == 0});
}

void measureFocus() {
  choose("focus", "dim");
  const ChildProcess crowd({clientProgram("crowd"), windowCount});
  sleepSeconds(settleSeconds);
  const auto hushpane = startHushpane();
  sleepSeconds(settleSeconds);
  const auto before = usageOf(hushpane->pid());
  sleepSeconds(idleSeconds());
  const auto after = usageOf(hushpane->pid());
  if (!hushpane->isRunning()) throw std::runtime_error("hushpane ended early");
  const double share = (after.cpuSeconds - before.cpuSeconds) / idleSeconds();
  const double wakeUps = static_cast<double>(after.wakeUps - before.wakeUps) / idleSeconds();
  print({"focus, idle, 200 windows: share of a core", text(share * 100, "%", 3), "the budget of 0.3 %",
         share / largestShare, "under 1", share < largestShare});
  print({"focus, idle, 200 windows: wake-ups a second", text(wakeUps, ""), "the 10 ticks", wakeUps / ticksPerSecond,
         "about 1", wakeUps < ticksPerSecond * 1.05});
}

}  // namespace

int main() {
  measureStandard();
  measureFocus();
}
