#include <iostream>
#include <span>
#include <variant>

#include "app/command_line.h"
#include "app/hushpane_app.h"
#include "desktops/shared/resource_bundle.h"
#include "desktops/sim/play_scenario.h"

namespace {

using namespace hushpane;

constexpr int usageExit = 2;

int run(const ShowHelp&) {
  std::cout << helpText;
  return 0;
}

int run(const ShowVersion&) {
  std::cout << "hushpane " HUSHPANE_VERSION "\n";
  return 0;
}

int run(const UsageError& error) {
  std::cerr << "hushpane: " << error.message << "; try --help\n";
  return usageExit;
}

int run(const RunScenario& command) {
  const auto scenario = command.scenario.value_or(desktops::resourceFolder() / "tour.scenario");
  return sim::playScenario(scenario, command.outputFolder, HushpaneApp::launch, std::cout, std::cerr);
}

int run(const RunDesktop&) {
  return 0;
}

}  // namespace

int main(int count, char** words) {
  const auto command = parseCommandLine(std::span<const char* const>(words + 1, words + count));
  return std::visit([](const auto& chosen) { return run(chosen); }, command);
}
