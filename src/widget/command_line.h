#pragma once

#include <span>
#include <string>
#include <variant>

#include "state/veil_mode.h"
#include "widget/status_line.h"

namespace hushpane::widget {

// What the words after the widget's name ask for.
struct PrintMode {
  LineFormat format = LineFormat::text;
  bool operator==(const PrintMode&) const = default;
};
struct FollowMode {
  LineFormat format = LineFormat::text;
  bool operator==(const FollowMode&) const = default;
};
struct SetMode {
  VeilMode mode;
  bool operator==(const SetMode&) const = default;
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

using Command = std::variant<PrintMode, FollowMode, SetMode, ShowHelp, ShowVersion, UsageError>;

Command parseCommandLine(std::span<const char* const> words);

extern const char* const helpText;

}  // namespace hushpane::widget
