#include "app/command_line.h"

#include <cctype>
#include <string_view>

namespace hushpane {

const char* const helpText =
    "Usage: hushpane [URL...]\n"
    "       hushpane --sim [SCENARIO] [--out DIR]\n"
    "\n"
    "Quiets the desktop around the work in hand. Without arguments it starts on $DISPLAY.\n"
    "\n"
    "  URL          hushpane://mode/standard, hushpane://mode/cleanDesktop or hushpane://mode/focus;\n"
    "               handed to the running instance, or starts with it\n"
    "  --sim        play a scenario file, or a built-in one (tour, gallery), on a simulated desktop\n"
    "  --out DIR    where the scenario's pictures go (default: the current folder)\n"
    "  --help       this text\n"
    "  --version    the version\n";

namespace {

// RFC 3986: a scheme is a letter followed by letters, digits, "+", "-" and ".".
bool hasScheme(std::string_view word) {
  const auto colon = word.find(':');
  if (colon == std::string_view::npos || colon == 0 || !std::isalpha(static_cast<unsigned char>(word[0]))) return false;
  for (const unsigned char c : word.substr(0, colon))
    if (!std::isalnum(c) && c != '+' && c != '-' && c != '.') return false;
  return true;
}

class Parser {
 public:
  explicit Parser(std::span<const char* const> words) : words_(words) {}

  Command parse() {
    while (next_ < words_.size())
      if (auto ending = take(words_[next_++])) return *std::move(ending);
    if (simulated_ && !positionals_.empty()) {
      if (positionals_.size() > 1) return unexpected(positionals_[1]);
      scenario_.scenario = positionals_[0];
    }
    if (simulated_) return scenario_;
    if (hasOutputFolder_) return UsageError{"--out goes with --sim"};
    for (const auto& word : positionals_)
      if (!hasScheme(word)) return UsageError{"'" + word + "' is not a URL"};
    return RunDesktop{positionals_};
  }

 private:
  // The command when this word settles it.
  std::optional<Command> take(std::string_view word) {
    if (optionsEnded_ || word.empty() || word[0] != '-' || word == "-") {
      positionals_.emplace_back(word);
    } else if (word == "--") {
      optionsEnded_ = true;
    } else if (word == "--help" || word == "-h") {
      return ShowHelp{};
    } else if (word == "--version") {
      return ShowVersion{};
    } else if (word == "--sim") {
      simulated_ = true;
    } else if (word == "--out") {
      if (next_ == words_.size() || *words_[next_] == '\0') return UsageError{"--out needs a folder"};
      scenario_.outputFolder = words_[next_++];
      hasOutputFolder_ = true;
    } else {
      return UsageError{"unknown option '" + std::string(word) + "'"};
    }
    return std::nullopt;
  }

  static Command unexpected(const std::string& word) { return UsageError{"unexpected '" + word + "'"}; }

  std::span<const char* const> words_;
  std::size_t next_ = 0;
  std::vector<std::string> positionals_;
  RunScenario scenario_;
  bool simulated_ = false;
  bool hasOutputFolder_ = false;
  bool optionsEnded_ = false;
};

}  // namespace

Command parseCommandLine(std::span<const char* const> words) {
  return Parser(words).parse();
}

}  // namespace hushpane
