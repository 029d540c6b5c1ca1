#include "bench/process_usage.h"

#include <ctime>
#include <filesystem>
#include <fstream>
#include <string>

namespace hushpane::bench {

namespace {

std::filesystem::path folderOf(pid_t process) {
  return std::filesystem::path("/proc") / std::to_string(process);
}

// The number after a name that begins a line.
long valueOf(const std::filesystem::path& file, const std::string& name) {
  std::ifstream lines(file);
  for (std::string line; std::getline(lines, line);)
    if (line.starts_with(name)) return std::stol(line.substr(name.size()));
  return 0;
}

}  // namespace

ProcessUsage usageOf(pid_t process) {
  ProcessUsage usage;
  // The process' own clock, which goes on with what threads have used that are over.
  clockid_t clock{};
  timespec time{};
  if (clock_getcpuclockid(process, &clock) == 0 && clock_gettime(clock, &time) == 0)
    usage.cpuSeconds = static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
  for (const auto& thread : std::filesystem::directory_iterator(folderOf(process) / "task"))
    usage.wakeUps += valueOf(thread.path() / "status", "voluntary_ctxt_switches:");
  return usage;
}

double memoryOf(pid_t process) {
  return static_cast<double>(valueOf(folderOf(process) / "smaps_rollup", "Pss:")) / 1024;
}

double ownMemoryOf(pid_t process) {
  return static_cast<double>(valueOf(folderOf(process) / "smaps_rollup", "Pss_Anon:")) / 1024;
}

}  // namespace hushpane::bench
