#include <filesystem>
#include <iostream>
#include <memory>
#include <span>
#include <utility>
#include <variant>

#include "app/command_line.h"
#include "app/contact_sheets.h"
#include "app/hushpane_app.h"
#include "desktops/shared/resource_bundle.h"
#include "desktops/sim/play_scenario.h"
#include "desktops/x11/x11_platform.h"

namespace {

using namespace hushpane;

constexpr int noDesktopExit = 1;
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
  const auto scenario = command.scenario.value_or("tour");
  const auto builtIn = desktops::resourceFolder() / (scenario.string() + ".scenario");
  std::error_code ignored;
  const bool isBuiltIn = !std::filesystem::exists(scenario, ignored) && std::filesystem::exists(builtIn, ignored);
  return sim::playScenario(isBuiltIn ? builtIn : scenario, command.outputFolder,
                           {HushpaneApp::launch, openContactSheet}, std::cout, std::cerr);
}

int start(std::unique_ptr<x11::X11Platform> desktop) {
  HushpaneApp::launch(*desktop);
  return desktop->run();
}

int start(x11::X11Platform::HandedOver) {
  return 0;
}

int start(const x11::X11Platform::Failure& failure) {
  std::cerr << "hushpane: " << failure.message << '\n';
  return noDesktopExit;
}

int run(const RunDesktop& command) {
  auto outcome = x11::X11Platform::start(command.urls);
  return std::visit([](auto& found) { return start(std::move(found)); }, outcome);
}

}  // namespace

int main(int count, char** words) {
  const auto command = parseCommandLine(std::span<const char* const>(words + 1, words + count));
  return std::visit([](const auto& chosen) { return run(chosen); }, command);
}
