// Processor time while a window of 1280x720 under the blur of focus paints itself anew 30 times a second.

#include <stdexcept>

#include "bench/child_process.h"
#include "bench/desk.h"
#include "bench/figure.h"
#include "bench/process_usage.h"

namespace {

using namespace hushpane::bench;

constexpr double settleSeconds = 4;
constexpr double seconds = 10;

double shareOf(pid_t process, pid_t other = 0) {
  const auto used = [&] { return usageOf(process).cpuSeconds + (other ? usageOf(other).cpuSeconds : 0); };
  const double before = used();
  sleepSeconds(seconds);
  return (used() - before) / seconds;
}

}  // namespace

int main() {
  const auto server = static_cast<pid_t>(numberFrom("BENCH_SERVER", 0));
  if (!server) throw std::runtime_error("to be started by bench/run");
  choose("focus", "blur");
  const ChildProcess repainter({clientProgram("repainter")});
  sleepSeconds(1);
  // What comes later is in front and has the focus.
  const ChildProcess front({clientProgram("crowd"), "1"});
  sleepSeconds(settleSeconds);
  const double alone = shareOf(server);
  const auto hushpane = startHushpane();
  sleepSeconds(settleSeconds);
  const double both = shareOf(server, hushpane->pid());
  print({"blurring a film of 1280x720, 30 frames a second",
         text(both * 100, "% of a core"),
         "the X server without a cover: " + text(alone * 100, "%"),
         both / alone,
         {},
         {}});
}
