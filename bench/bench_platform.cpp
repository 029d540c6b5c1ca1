#include "bench/bench_platform.h"

#include <glib.h>

#include <stdexcept>
#include <utility>
#include <variant>

namespace {

xcb_connection_t* firstConnection = nullptr;

}  // namespace

// The linker sends every call of xcb_connect() in this program here.
extern "C" xcb_connection_t* __real_xcb_connect(const char* display, int* screen);
extern "C" xcb_connection_t* __wrap_xcb_connect(const char* display, int* screen) {
  auto* const connection = __real_xcb_connect(display, screen);
  if (!firstConnection) firstConnection = connection;
  return connection;
}

namespace hushpane::bench {

namespace {
// Seconds.
constexpr double patience = 30;
constexpr double quiet = 2;
}  // namespace

BenchPlatform::BenchPlatform() {
  auto outcome = x11::X11Platform::start({});
  if (const auto* failure = std::get_if<x11::X11Platform::Failure>(&outcome))
    throw std::runtime_error(failure->message);
  platform_ = std::get<std::unique_ptr<x11::X11Platform>>(std::move(outcome));
}

xcb_connection_t* BenchPlatform::connection() const {
  return firstConnection;
}

void BenchPlatform::turn(bool mayWait) {
  g_main_context_iteration(nullptr, mayWait);
}

void BenchPlatform::finish() {
  while (g_main_context_pending(nullptr)) turn(false);
  xcb_flush(connection());
}

void BenchPlatform::runFor(double seconds) {
  bool isOver = false;
  const auto end = platform_->mainQueue().after(seconds, [&isOver] { isOver = true; });
  while (!isOver) turn(true);
}

void BenchPlatform::runUntil(const std::function<bool()>& condition) {
  bool isOver = false;
  const auto end = platform_->mainQueue().after(patience, [&isOver] { isOver = true; });
  while (!condition()) {
    if (isOver) throw std::runtime_error("the desktop does not come to the state that is to be measured");
    turn(true);
  }
}

void BenchPlatform::runUntilQuiet() {
  for (double waited = 0; waited < patience; waited += quiet)
    if (trafficOf([this] { runFor(quiet); }).requests == 0) return;
}

BenchPlatform::Traffic BenchPlatform::trafficOf(const std::function<void()>& work) {
  const auto before = xcb_no_operation(connection()).sequence;
  xcb_flush(connection());
  const auto bytes = bytesWritten();
  work();
  xcb_flush(connection());
  const auto after = bytesWritten();
  return {after - bytes, xcb_no_operation(connection()).sequence - before - 1};
}

std::uint64_t BenchPlatform::bytesWritten() const {
  return xcb_total_written(connection());
}

}  // namespace hushpane::bench
