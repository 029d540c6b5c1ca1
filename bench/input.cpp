// From a hot key to the cover on the screen, and what the mouse costs with the shake detector on and off.
//
// `bench_input moves` only moves the mouse, for a profiler: with the detector off, then on.

#include <xcb/xtest.h>

#include <chrono>
#include <ctime>
#include <memory>
#include <stdexcept>
#include <string_view>

#include "app/hushpane_app.h"
#include "bench/bench_platform.h"
#include "bench/desk.h"
#include "bench/display_client.h"
#include "bench/figure.h"
#include "desktops/x11/xcb_handle.h"
#include "state/preferences_store.h"

namespace {

using namespace hushpane;
using namespace hushpane::bench;
using Clock = std::chrono::steady_clock;

constexpr int movements = 1000;
constexpr int rounds = 21;
constexpr double frame = 1 / 60.0;  // seconds
constexpr double fade = 0.7;        // seconds in which a cover comes
constexpr double patience = 5;      // seconds
constexpr double settleSeconds = 2;

class Hand {
 public:
  void key(xcb_keycode_t keycode, bool isDown) const { fake(isDown ? XCB_KEY_PRESS : XCB_KEY_RELEASE, keycode, 0); }
  void controlAlt(xcb_keycode_t letter) const {
    constexpr xcb_keycode_t control = 37, alt = 64;
    for (const auto keycode : {control, alt, letter}) key(keycode, true);
    for (const auto keycode : {letter, alt, control}) key(keycode, false);
    xcb_flush(client_->get());
  }
  void move(std::int16_t distance) const {
    constexpr std::uint8_t isStep = 1;
    fake(XCB_MOTION_NOTIFY, isStep, distance);
    client_->sync();
  }
  std::uint32_t pixel() const {
    auto* server = client_->get();
    const x11::Reply<xcb_get_image_reply_t> image(xcb_get_image_reply(
        server, xcb_get_image(server, XCB_IMAGE_FORMAT_Z_PIXMAP, client_->screen().root, 40, 40, 1, 1, ~0u), nullptr));
    if (!image) throw std::runtime_error("the screen cannot be seen");
    return *reinterpret_cast<const std::uint32_t*>(xcb_get_image_data(image.get())) & 0xFFFFFF;
  }

 private:
  void fake(std::uint8_t type, std::uint8_t detail, std::int16_t x) const {
    xcb_test_fake_input(client_->get(), type, detail, XCB_CURRENT_TIME, client_->screen().root, x, 0, 0);
  }
  std::unique_ptr<DisplayClient> client_ = std::make_unique<DisplayClient>();
};

double processorSeconds() {
  timespec time{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

// To and fro, but never far enough for a shake.
[[gnu::noinline]] void moveTheMouse(BenchPlatform& platform, const Hand& hand) {
  for (int movement = 0; movement < movements; ++movement) {
    hand.move(movement % 2 == 0 ? 5 : -5);
    platform.turn(false);
  }
  platform.finish();
}

void setDetector(BenchPlatform& platform, const Hand& hand, bool isOn) {
  PreferencesStore::shared().mouseShakeEnabled = isOn;
  platform.runUntilQuiet();
  hand.move(1);  // asks what the mouse is
  platform.finish();
}

void measureMovements() {
  choose("standard", "dim");
  BenchPlatform platform;
  HushpaneApp::launch(platform.get());
  const Hand hand;
  double seconds[2]{};
  BenchPlatform::Traffic traffic;
  for (const bool isOn : {false, true}) {
    setDetector(platform, hand, isOn);
    const double before = processorSeconds();
    traffic = platform.trafficOf([&] { moveTheMouse(platform, hand); });
    seconds[isOn] = processorSeconds() - before;
  }
  print({"1000 movements, shake detector on: sent to the server",
         std::to_string(traffic.requests) + " requests",
         {},
         {},
         "none",
         traffic.requests == 0});
  print({"1000 movements, shake detector on: processor time",
         text(seconds[1] * 1e3, "ms"),
         "detector off, moving included: " + text(seconds[0] * 1e3, "ms"),
         seconds[1] / seconds[0],
         {},
         {}});
}

double secondsUntil(Clock::time_point start, const std::function<bool()>& condition) {
  for (;;) {
    const double passed = std::chrono::duration<double>(Clock::now() - start).count();
    if (condition()) return passed;
    if (passed > patience) throw std::runtime_error("the cover does not come or go");
  }
}

void measureHotKey() {
  choose("standard", "dim");
  const auto hushpane = startHushpane();
  const Hand hand;
  DisplayClient desktop;
  desktop.showBackground();
  sleepSeconds(settleSeconds);
  constexpr xcb_keycode_t letterA = 38, letterS = 39;
  const auto clear = hand.pixel();
  std::uint32_t covered = 0;
  std::vector<double> first, whole;
  for (int round = 0; round <= rounds; ++round) {
    const auto start = Clock::now();
    hand.controlAlt(letterA);
    const double begun = secondsUntil(start, [&] { return hand.pixel() != clear; });
    if (round == 0) {  // what the whole cover looks like
      sleepSeconds(settleSeconds);
      covered = hand.pixel();
    } else {
      first.push_back(begun);
      whole.push_back(secondsUntil(start, [&] { return hand.pixel() == covered; }));
    }
    hand.controlAlt(letterS);
    secondsUntil(Clock::now(), [&] { return hand.pixel() == clear; });
    sleepSeconds(0.1);
  }
  const double begun = median(first), done = median(whole);
  print(
      {"hot key to the first frame of the cover", text(begun * 1e3, "ms"), "a frame of 1/60 s", begun / frame, {}, {}});
  print({"hot key to the whole cover", text(done * 1e3, "ms"), "its fade of 0.7 s", done / fade, {}, {}});
}

}  // namespace

int main(int count, char** words) {
  measureMovements();
  const bool onlyMoves = count > 1 && std::string_view(words[1]) == "moves";
  if (!onlyMoves) measureHotKey();
}
