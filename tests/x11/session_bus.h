#pragma once

#include <fstream>

#include "tests/x11/process.h"

namespace hushpane::x11_tests {

// A private session bus; it starts no services unless asked.
class SessionBus {
 public:
  enum class Services { none, installed };

  SessionBus(const Environment& environment, const std::filesystem::path& folder, Services services = Services::none)
      : process_({"dbus-daemon", "--nofork", "--config-file", configuration(folder, services), "--print-address",
                  std::to_string(Process::reportDescriptor)},
                 environment, folder),
        address_(process_.report()) {}

  const std::string& address() const { return address_; }
  void terminate() { process_.terminate(); }

 private:
  static std::string configuration(const std::filesystem::path& folder, Services services) {
    const std::filesystem::path file = folder / (services == Services::none ? "bus.conf" : "bus-with-services.conf");
    std::ofstream(file) << "<busconfig><type>session</type><listen>unix:dir=" << folder.string() << "</listen>"
                        << (services == Services::none ? "" : "<standard_session_servicedirs/>") << R"(
<policy context="default"><allow send_destination="*"/><allow eavesdrop="true"/><allow own="*"/></policy>
</busconfig>)";
    return file.string();
  }

  Process process_;
  std::string address_;
};

}  // namespace hushpane::x11_tests
