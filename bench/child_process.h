#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace hushpane::bench {

// A program that runs beside the benchmark. It ends with this object, at the latest with the benchmark itself.
class ChildProcess {
 public:
  explicit ChildProcess(const std::vector<std::string>& command);
  ~ChildProcess() { end(); }
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  pid_t pid() const { return pid_; }
  bool isRunning() const;
  // Sends the signal and waits until the program is over.
  void end(int signal);
  void end();

 private:
  pid_t pid_ = 0;
};

// Other people's programs, built beside the benchmarks.
std::string clientProgram(const std::string& name);

}  // namespace hushpane::bench
