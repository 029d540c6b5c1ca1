#pragma once

#include "tests/x11/process.h"

namespace hushpane::x11_tests {

// A private X server on a free display.
class XServer {
 public:
  // One with a screen such as "1920x1080x24".
  static std::vector<std::string> virtualScreen(const std::string& screen) { return {"Xvfb", "-screen", "0", screen}; }

  XServer(const Environment& environment, const std::filesystem::path& folder, std::vector<std::string> command)
      : process_(complete(std::move(command)), environment, folder), display_(":" + process_.report()) {}

  const std::string& display() const { return display_; }
  void terminate() { process_.terminate(); }

 private:
  static std::vector<std::string> complete(std::vector<std::string> command) {
    for (const char* word : {"-nolisten", "tcp", "-noreset", "-displayfd"}) command.push_back(word);
    command.push_back(std::to_string(Process::reportDescriptor));
    return command;
  }

  Process process_;
  std::string display_;
};

}  // namespace hushpane::x11_tests
