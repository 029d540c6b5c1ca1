#include "widget/command_line.h"

#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>

namespace hushpane::widget {

const char* const helpText =
    "Usage: hushpane-widget [--json] [--follow]\n"
    "       hushpane-widget --set MODE\n"
    "\n"
    "Shows the mode of Hushpane in a status bar, and changes it. Without arguments it prints the mode.\n"
    "\n"
    "  --json       print one line of JSON with text, alt, class and tooltip\n"
    "  --follow     print a line now and one at each change, until the reader is gone\n"
    "  --set MODE   switch to standard, cleanDesktop or focus\n"
    "  --help       this text\n"
    "  --version    the version\n";

namespace {

std::optional<VeilMode> userModeNamed(std::string_view text) {
  const auto mode = fromRawValue<VeilMode>(text);
  return mode && isUserMode(*mode) ? mode : std::nullopt;
}

class Parser {
 public:
  explicit Parser(std::span<const char* const> words) : words_(words) {}

  Command parse() {
    while (next_ < words_.size())
      if (auto ending = take(words_[next_++])) return *std::move(ending);
    if (mode_ && (follows_ || format_)) return UsageError{"--set goes alone"};
    if (mode_) return SetMode{*mode_};
    const auto format = format_.value_or(LineFormat::text);
    return follows_ ? Command(FollowMode{format}) : Command(PrintMode{format});
  }

 private:
  // The command when this word settles it.
  std::optional<Command> take(std::string_view word) {
    if (word == "--help" || word == "-h") return ShowHelp{};
    if (word == "--version") return ShowVersion{};
    if (word == "--set") return takeMode();
    if (word == "--json") {
      format_ = LineFormat::json;
    } else if (word == "--follow") {
      follows_ = true;
    } else {
      const char* fault = word.starts_with('-') ? "unknown option '" : "unexpected '";
      return UsageError{fault + std::string(word) + "'"};
    }
    return std::nullopt;
  }

  std::optional<Command> takeMode() {
    if (mode_) return UsageError{"--set takes one mode"};
    mode_ = next_ < words_.size() ? userModeNamed(words_[next_++]) : std::nullopt;
    if (!mode_) return UsageError{"--set needs standard, cleanDesktop or focus"};
    return std::nullopt;
  }

  std::span<const char* const> words_;
  std::size_t next_ = 0;
  std::optional<LineFormat> format_;
  std::optional<VeilMode> mode_;
  bool follows_ = false;
};

}  // namespace

Command parseCommandLine(std::span<const char* const> words) {
  return Parser(words).parse();
}

}  // namespace hushpane::widget
