#pragma once

#include <sys/types.h>

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "tests/x11/wait.h"

namespace hushpane::x11_tests {

using Environment = std::map<std::string, std::string>;

// A program that runs beside the test and ends with this object, at the latest with the test itself. Its environment is
// the given one and nothing else; what it prints goes to files in a folder. Throws when the program is not installed.
class Process {
 public:
  Process(const std::vector<std::string>& command, const Environment& environment, const std::filesystem::path& folder);
  ~Process();
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  pid_t pid() const { return pid_; }
  bool isRunning() { return !poll(); }
  void signal(int number) const;

  // The exit status, or 128 and the signal that ended it, as shells count; nothing when it still runs at the limit.
  std::optional<int> wait(milliseconds limit = patience);
  // Asks it to end, insists after a while, and waits.
  std::optional<int> terminate();

  // Gives it a line to read.
  void tell(const std::string& line) const;

  std::string output() const;
  std::string errors() const;
  // The next line that the program writes on its descriptor `reportDescriptor`; throws when none comes.
  static constexpr int reportDescriptor = 3;
  std::string report();

 private:
  std::optional<int> poll();

  std::string name_;
  std::filesystem::path outputFile_;
  std::filesystem::path errorFile_;
  int reportPipe_ = -1;
  int inputPipe_ = -1;
  pid_t pid_ = -1;
  std::optional<int> status_;
};

// All bytes of a file, none when it cannot be read.
std::string contents(const std::filesystem::path& file);

// Runs a program to its end and gives what it printed; throws when it fails.
std::string run(const std::vector<std::string>& command, const Environment& environment,
                const std::filesystem::path& folder);

}  // namespace hushpane::x11_tests
