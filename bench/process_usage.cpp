#include "bench/process_usage.h"

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
  for (const auto& thread : std::filesystem::directory_iterator(folderOf(process) / "task")) {
    double nanoseconds = 0;
    std::ifstream(thread.path() / "schedstat") >> nanoseconds;
    usage.cpuSeconds += nanoseconds / 1e9;
    usage.wakeUps += valueOf(thread.path() / "status", "voluntary_ctxt_switches:");
  }
  return usage;
}

double memoryOf(pid_t process) {
  return static_cast<double>(valueOf(folderOf(process) / "smaps_rollup", "Pss:")) / 1024;
}

double ownMemoryOf(pid_t process) {
  return static_cast<double>(valueOf(folderOf(process) / "smaps_rollup", "Pss_Anon:")) / 1024;
}

}  // namespace hushpane::bench
