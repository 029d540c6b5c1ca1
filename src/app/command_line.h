#pragma once

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <variant>
#include <vector>

namespace hushpane {

// What the words after the program's name ask for.
struct RunDesktop {
  std::vector<std::string> urls;
  bool operator==(const RunDesktop&) const = default;
};
struct RunScenario {
  std::optional<std::filesystem::path> scenario;  // nothing: the built-in tour
  std::filesystem::path outputFolder = ".";
  bool operator==(const RunScenario&) const = default;
};
struct ShowHelp {
  bool operator==(const ShowHelp&) const = default;
};
struct ShowVersion {
  bool operator==(const ShowVersion&) const = default;
};
struct UsageError {
  std::string message;  // one line
  bool operator==(const UsageError&) const = default;
};

using Command = std::variant<RunDesktop, RunScenario, ShowHelp, ShowVersion, UsageError>;

Command parseCommandLine(std::span<const char* const> words);

extern const char* const helpText;

}  // namespace hushpane
