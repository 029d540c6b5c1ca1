#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>

namespace hushpane::bench {

enum class TimeOf {
  clock,
  processor,  // not lengthened by what else the machine does; for work that waits for nobody
};

// Runs what is registered, in turns, gives the median time of each by name, in seconds, and forgets what was
// registered.
std::map<std::string, double> runBenchmarks(TimeOf time = TimeOf::clock);

}  // namespace hushpane::bench
