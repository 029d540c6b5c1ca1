#pragma once

#include <memory>
#include <string>

#include "bench/child_process.h"

namespace hushpane::bench {

// Settings of somebody who uses that mode with that surface, in the folder that bench/run has made for this run.
void choose(const std::string& mode, const std::string& surface);

std::unique_ptr<ChildProcess> startHushpane();

void sleepSeconds(double seconds);

// The number in an environment variable of bench/run.
long numberFrom(const char* variable, long otherwise);

}  // namespace hushpane::bench
