#include "desktops/sim/play_scenario.h"

#include <fstream>
#include <iterator>
#include <optional>
#include <ostream>
#include <string>
#include <utility>

namespace hushpane::sim {

namespace {

constexpr int success = 0;
constexpr int failure = 1;
constexpr int badInput = 2;
constexpr std::uintmax_t largestFile = 1 << 20;  // bytes; ample for a text written by hand

std::optional<std::string> contentsOf(const std::filesystem::path& file) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(file, error) || std::filesystem::file_size(file, error) > largestFile || error)
    return std::nullopt;
  std::ifstream stream(file, std::ios::binary);
  std::string text((std::istreambuf_iterator<char>(stream)), {});
  return stream.bad() || !stream.is_open() ? std::nullopt : std::optional(std::move(text));
}

int play(const Scenario& scenario, ScenarioPlayer& player, const std::string& name, std::ostream& err) {
  for (const auto& [line, command] : scenario) {
    const auto failed = player.play(command);
    if (!failed) continue;
    err << name << ':' << line << ": " << failed->message << '\n';
    return failed->kind == ScenarioPlayer::Failure::Kind::badLine ? badInput : failure;
  }
  return success;
}

}  // namespace

int playScenario(const std::filesystem::path& file, const std::filesystem::path& outDir, Program program,
                 std::ostream& out, std::ostream& err) {
  const auto text = contentsOf(file);
  if (!text) {
    err << file.string() << ": cannot be read\n";
    return badInput;
  }
  const auto parsed = parseScenario(*text);
  if (const auto* error = std::get_if<ScenarioError>(&parsed)) {
    err << file.string() << ':' << error->line << ": " << error->message << '\n';
    return badInput;
  }
  std::error_code ignored;  // a folder that is missing shows when a picture is written
  std::filesystem::create_directories(outDir, ignored);
  ScenarioPlayer player(file.parent_path(), outDir, std::move(program),
                        [&out](const auto& path) { out << path.string() << '\n'; });
  return play(std::get<Scenario>(parsed), player, file.string(), err);
}

}  // namespace hushpane::sim
