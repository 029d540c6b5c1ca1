#pragma once

#include "tests/x11/process.h"

namespace hushpane::x11_tests {

// A private X server on a free display.
class XServer {
 public:
  XServer(const Environment& environment, const std::filesystem::path& folder, const std::string& screen)
      : process_({"Xvfb", "-displayfd", std::to_string(Process::reportDescriptor), "-screen", "0", screen, "-nolisten",
                  "tcp", "-noreset"},
                 environment, folder),
        display_(":" + process_.report()) {}

  const std::string& display() const { return display_; }
  void terminate() { process_.terminate(); }

 private:
  Process process_;
  std::string display_;
};

}  // namespace hushpane::x11_tests
