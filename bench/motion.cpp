// What moves by itself: the gradient over the blur, thirty frames a second, and the cross-fade of two pictures, sixty.

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <memory>

#include "bench/bench_platform.h"
#include "bench/desk.h"
#include "bench/display_client.h"
#include "bench/figure.h"
#include "bench/process_usage.h"
#include "desktops/shared/fluid_gradient_renderer.h"

namespace {

using namespace hushpane;
using namespace hushpane::bench;
using Clock = std::chrono::steady_clock;
using Detail = desktops::FluidGradientRenderer::Detail;

constexpr double seconds = 10;
constexpr double framesPerSecond = 30;
constexpr platform::Animation crossFade{0.45, platform::TimingFunction::easeInEaseOut};
constexpr double frame = 1 / 60.0;

std::unique_ptr<platform::Window> makeWindow(BenchPlatform& platform) {
  auto& desktop = platform.get();
  return desktop.windows().makeWindow(desktop.screens().screens().front().frame,
                                      {.isOpaque = false, .hasShadow = false, .ignoresMouseEvents = true});
}

double cpuSeconds() {
  static const auto server = static_cast<pid_t>(numberFrom("BENCH_SERVER", 0));
  return usageOf(server).cpuSeconds + usageOf(getpid()).cpuSeconds;
}

struct Cost {
  double share = 0;          // of a core, client and server together
  double bytesPerFrame = 0;  // to the server
};

// The gradient as the program shows it, drawn with that detail.
Cost costOfGradient(BenchPlatform& platform, Detail detail) {
  desktops::FluidGradientRenderer device(detail);
  const auto window = makeWindow(platform);
  auto& effect = window->contentView().addSubview();
  auto& view = window->contentView().addSubview();
  effect.setMaterial(platform::EffectMaterial::darkHud);
  const auto picture = std::make_shared<platform::Image>();
  const auto& bounds = window->frame();
  int frames = 0;
  const auto draw = [&] {
    const float time = static_cast<float>(frames++ / framesPerSecond);
    device.draw({time, 0.68f, 0.65f}, static_cast<int>(bounds.width), static_cast<int>(bounds.height), *picture);
    view.presentDrawable(picture);
  };
  draw();
  window->orderFront();
  platform.runUntilQuiet();
  const auto timer = platform.get().mainQueue().repeating(1 / framesPerSecond, draw);
  const double cpu = cpuSeconds();
  const int before = frames;
  const auto traffic = platform.trafficOf([&] { platform.runFor(seconds); });
  platform.finish();
  sync(platform.connection());
  return {(cpuSeconds() - cpu) / seconds, static_cast<double>(traffic.bytes) / (frames - before)};
}

void measureGradient(BenchPlatform& platform) {
  const auto whole = costOfGradient(platform, Detail::full);
  const auto reduced = costOfGradient(platform, Detail::reduced);
  print({"gradient, 1920x1080: sent for a frame",
         text(reduced.bytesPerFrame / 1e3, "kB"),
         "frames of all pixels: " + text(whole.bytesPerFrame / 1e3, "kB", 0),
         reduced.bytesPerFrame / whole.bytesPerFrame,
         {},
         {}});
  print({"gradient over blur, 30 frames a second",
         text(reduced.share * 100, "% of a core"),
         "frames of all pixels: " + text(whole.share * 100, "% of a core"),
         reduced.share / whole.share,
         {},
         {}});
}

platform::ImagePtr pictureOf(std::uint32_t color, const platform::Rect& bounds) {
  const auto width = static_cast<int>(bounds.width), height = static_cast<int>(bounds.height);
  return std::make_shared<platform::Image>(
      platform::Image{width, height, std::vector<std::uint32_t>(static_cast<std::size_t>(width) * height, color)});
}

// Each frame is counted when the server has drawn it.
void measureCrossFade(BenchPlatform& platform) {
  const auto window = makeWindow(platform);
  auto& view = window->contentView().addSubview();
  view.setContents(pictureOf(0xff204060, window->frame()));
  window->orderFront();
  platform.runUntilQuiet();
  const double cpu = cpuSeconds();
  view.setContents(pictureOf(0xff806020, window->frame()), crossFade);
  std::vector<double> gaps;
  auto last = Clock::now();
  double fade = view.contentsFade();
  while (view.outgoingContents()) {
    platform.turn(true);
    if (view.contentsFade() == fade) continue;
    fade = view.contentsFade();
    platform.finish();
    sync(platform.connection());
    const auto now = Clock::now();
    gaps.push_back(std::chrono::duration<double>(now - last).count());
    last = now;
  }
  const double first = gaps.front(), longest = *std::max_element(gaps.begin() + 1, gaps.end());
  const double possible = (crossFade.duration - first) / frame;
  const auto rest = static_cast<double>(gaps.size() - 1);
  print({"cross-fade of two pictures, 1920x1080: first frame",
         text(first * 1e3, "ms"),
         "a frame of 1/60 s",
         first / frame,
         {},
         {}});
  print({"cross-fade: frames after the first", text(rest, "", 0), "what 60 Hz has: " + text(possible, ""),
         rest / possible, "above 0.95", rest / possible > 0.95});
  print({"cross-fade: longest gap between two frames", text(longest * 1e3, "ms"), "a frame of 1/60 s", longest / frame,
         "under 2", longest / frame < 2});
  print({"cross-fade: processor time",
         text((cpuSeconds() - cpu) * 1e3, "ms", 0),
         "its 0.45 s",
         (cpuSeconds() - cpu) / crossFade.duration,
         {},
         {}});
}

}  // namespace

int main() {
  choose("standard", "blur");
  BenchPlatform platform;
  DisplayClient desktop;
  desktop.showBackground();
  platform.runUntilQuiet();
  measureGradient(platform);
  measureCrossFade(platform);
}
