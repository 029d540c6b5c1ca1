#include "bench/desk.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <thread>

#include "desktops/shared/property_list.h"
#include "state/stored_keys.h"

namespace hushpane::bench {

void choose(const std::string& mode, const std::string& surface) {
  const char* home = std::getenv("XDG_CONFIG_HOME");
  if (!home) throw std::runtime_error("to be started by bench/run");
  const auto folder = std::filesystem::path(home) / "hushpane";
  std::filesystem::create_directories(folder);
  const platform::Dictionary settings{{std::string(storedKeys::hasSeenWelcome), true},
                                      {std::string(storedKeys::lastUserMode), mode},
                                      {std::string(storedKeys::ambientSurface), surface},
                                      {std::string(storedKeys::focusSurface), surface}};
  if (!desktops::PropertyListFiles().writeXml(folder / "com.corvane.Hushpane.plist", settings))
    throw std::runtime_error("cannot write the settings");
}

std::unique_ptr<ChildProcess> startHushpane() {
  return std::make_unique<ChildProcess>(std::vector<std::string>{HUSHPANE_BINARY});
}

void sleepSeconds(double seconds) {
  std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
}

long numberFrom(const char* variable, long otherwise) {
  const char* value = std::getenv(variable);
  return value ? std::strtol(value, nullptr, 10) : otherwise;
}

}  // namespace hushpane::bench
