// Bringing a cover up to date that composes itself, when everything or a part of what lies behind was painted anew.

#include <chrono>

#include "bench/bench_platform.h"
#include "bench/desk.h"
#include "bench/display_client.h"
#include "bench/figure.h"
#include "bench/process_usage.h"
#include "bench/timings.h"

namespace {

using namespace hushpane;
using namespace hushpane::bench;
using Clock = std::chrono::steady_clock;

constexpr double idleSeconds = 5;
// Covers are brought up to date at most once a frame; after that long nothing waits for the next one.
constexpr double frame = 0.02;
constexpr int refreshes = 40;  // in each of the rounds
constexpr xcb_rectangle_t part{300, 200, 400, 300};

struct Cover {
  const char* name;
  double longestMilliseconds;  // the aim
  void (*furnish)(platform::View& surface);
};

constexpr Cover dim{"dim", 6, [](platform::View& surface) { surface.setLayerColor({0, 0, 0, 0.5}); }};
constexpr Cover blur{"blur", 10,
                     [](platform::View& surface) { surface.setMaterial(platform::EffectMaterial::darkHud); }};

// A platform with a cover over a background that is painted by somebody else.
struct Scene {
  BenchPlatform& platform;
  DisplayClient& painter;
  xcb_window_t background;
};

std::unique_ptr<platform::Window> show(const Cover& cover, BenchPlatform& platform) {
  auto& desktop = platform.get();
  auto window = desktop.windows().makeWindow(desktop.screens().screens().front().frame,
                                             {.isOpaque = false, .hasShadow = false, .ignoresMouseEvents = true});
  cover.furnish(window->contentView().addSubview());
  window->orderFront();
  platform.runUntilQuiet();
  return window;
}

struct RefreshTime {
  double elapsed = 0;  // from the damage to the new picture on the server, with the way there and back
  double server = 0;   // of that, how long the server was at work
};

double serverSeconds() {
  static const auto server = static_cast<pid_t>(numberFrom("BENCH_SERVER", 0));
  return usageOf(server).cpuSeconds;
}

RefreshTime timeOfRefresh(Scene scene, const xcb_rectangle_t& damaged) {
  auto& platform = scene.platform;
  platform.runFor(frame);
  platform.finish();
  scene.painter.repaint(scene.background, damaged);
  const auto before = platform.bytesWritten();
  const double server = serverSeconds();
  const auto start = Clock::now();
  while (platform.bytesWritten() == before) platform.turn(true);
  platform.finish();
  sync(platform.connection());
  const auto end = Clock::now();
  return {std::chrono::duration<double>(end - start).count(), serverSeconds() - server};
}

void measureRefresh(const char* name, Scene scene, const xcb_rectangle_t& damaged, std::vector<double>& serverTimes) {
  benchmark::RegisterBenchmark(name,
                               [scene, damaged, &serverTimes](benchmark::State& state) {
                                 for (auto _ : state) {
                                   const auto time = timeOfRefresh(scene, damaged);
                                   state.SetIterationTime(time.elapsed);
                                   serverTimes.push_back(time.server);
                                 }
                               })
      ->UseManualTime()
      ->Iterations(refreshes);
}

// The least that anything can cost which touches every pixel of the display.
void measureCopy(const char* name, Scene scene) {
  auto& client = scene.painter;
  const auto all = client.everything();
  const auto pixmap = xcb_generate_id(client.get());
  xcb_create_pixmap(client.get(), client.screen().root_depth, pixmap, client.screen().root, all.width, all.height);
  const auto context = xcb_generate_id(client.get());
  xcb_create_gc(client.get(), context, pixmap, 0, nullptr);
  benchmark::RegisterBenchmark(name, [&client, all, pixmap, context, scene](benchmark::State& state) {
    for (auto _ : state) {
      xcb_copy_area(client.get(), scene.background, pixmap, context, 0, 0, 0, 0, all.width, all.height);
      client.sync();
    }
  })->Iterations(refreshes);
}

void printRefresh(const std::string& what, double time, double server, double copy, double longestMilliseconds) {
  print({what, text(time * 1e3, "ms") + ", server's work " + text(server * 1e3, "ms"),
         "copying the display once: " + text(copy * 1e3, "ms"), time / copy,
         "under " + text(longestMilliseconds, "ms", 0), time * 1e3 < longestMilliseconds});
}

void measure(const Cover& cover, Scene scene) {
  const auto window = show(cover, scene.platform);
  const auto idle = scene.platform.trafficOf([&] { scene.platform.runFor(idleSeconds); });
  std::vector<double> whole, partly;
  measureRefresh("whole", scene, scene.painter.everything(), whole);
  measureRefresh("part", scene, part, partly);
  measureCopy("copy", scene);
  auto times = runBenchmarks();
  const std::string name = std::string(cover.name) + " refresh without a compositor, ";
  printRefresh(name + "1920x1080", times["whole"], median(whole), times["copy"], cover.longestMilliseconds);
  printRefresh(name + "400x300 of it", times["part"], median(partly), times["copy"], cover.longestMilliseconds);
  print({name + "5 s of no damage", std::to_string(idle.requests) + " requests", {}, {}, "none", idle.requests == 0});
}

}  // namespace

int main() {
  BenchPlatform platform;
  DisplayClient painter;
  const Scene scene{platform, painter, painter.showBackground()};
  measure(dim, scene);
  measure(blur, scene);
}
