// The tick of focus among 200 windows, when nothing is new.

#include "bench/bench_platform.h"
#include "bench/child_process.h"
#include "bench/desk.h"
#include "bench/display_client.h"
#include "bench/figure.h"
#include "bench/timings.h"
#include "bench/tree_reading.h"
#include "state/state_controller.h"

namespace {

using namespace hushpane;
using namespace hushpane::bench;

constexpr int windowCount = 200;
constexpr int ticks = 1000;

void print(const BenchPlatform::Traffic& traffic) {
  bench::print({"focus tick, 200 windows: sent to the server in 1000",
                std::to_string(traffic.requests) + " requests, " + std::to_string(traffic.bytes) + " bytes",
                {},
                {},
                "none",
                traffic.requests == 0 && traffic.bytes == 0});
}

void print(double tick, double reading) {
  bench::print({"focus tick, 200 windows: time of re-reading the tree", text(tick * 1e6, "us", 2),
                "asking for everything: " + text(reading * 1e6, "us", 0), reading / tick, "at least 20",
                reading / tick >= 20});
}

}  // namespace

int main() {
  choose("focus", "dim");
  const ChildProcess crowd({clientProgram("crowd"), std::to_string(windowCount)});
  BenchPlatform platform;
  DisplayClient client;
  auto& manager = StateController::shared().overlayManager();
  platform.runUntil([&] {
    const auto windows = platform.get().windowList().onScreenWindows();
    return windows && windows->size() >= windowCount && manager.frontmostWindowNumber();
  });
  platform.runUntilQuiet();
  if (!manager.frontmostCoverage().hasWindow) return 1;

  print(platform.trafficOf([&] {
    for (int tick = 0; tick < ticks; ++tick) {
      manager.updateZOrder();
      platform.turn(false);
    }
  }));

  TreeReading reading(client.get());
  if (reading.read() < windowCount) return 1;
  benchmark::RegisterBenchmark("tick", [&manager](benchmark::State& state) {
    for (auto _ : state) manager.updateZOrder();
  });
  benchmark::RegisterBenchmark("reading", [&reading](benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(reading.read());
  });
  auto times = runBenchmarks();
  print(times["tick"], times["reading"]);
}
