#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>

namespace hushpane::bench {

// Runs what is registered, in turns, gives the median time of each by name, in seconds, and forgets what was
// registered.
std::map<std::string, double> runBenchmarks();

}  // namespace hushpane::bench
