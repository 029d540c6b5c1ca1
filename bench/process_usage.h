#pragma once

#include <sys/types.h>

namespace hushpane::bench {

// What a process has used so far.
struct ProcessUsage {
  double cpuSeconds = 0;
  long wakeUps = 0;  // how often a thread of it waited and went on
};

ProcessUsage usageOf(pid_t process);

// Megabytes of memory, shared pages counted by the share (PSS).
double memoryOf(pid_t process);
// Of that, what is not of a file: it does not depend on who else runs the same programs.
double ownMemoryOf(pid_t process);

}  // namespace hushpane::bench
