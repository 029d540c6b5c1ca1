#pragma once

#include <fstream>

#include "tests/x11/process.h"

namespace hushpane::x11_tests {

// A private session bus that starts no services.
class SessionBus {
 public:
  SessionBus(const Environment& environment, const std::filesystem::path& folder)
      : process_({"dbus-daemon", "--nofork", "--config-file", configuration(folder), "--print-address",
                  std::to_string(Process::reportDescriptor)},
                 environment, folder),
        address_(process_.report()) {}

  const std::string& address() const { return address_; }
  void terminate() { process_.terminate(); }

 private:
  static std::string configuration(const std::filesystem::path& folder) {
    const std::filesystem::path file = folder / "bus.conf";
    std::ofstream(file) << "<busconfig><type>session</type><listen>unix:dir=" << folder.string() << R"(</listen>
<policy context="default"><allow send_destination="*"/><allow eavesdrop="true"/><allow own="*"/></policy>
</busconfig>)";
    return file.string();
  }

  Process process_;
  std::string address_;
};

}  // namespace hushpane::x11_tests
