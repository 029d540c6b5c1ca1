#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/token.h"

namespace hushpane::session {

// Another program that runs beside this one and prints an answer. It is started without a shell, is ended with the
// token, and leaves no dead process behind. The completion follows from the main loop, once, unless the token is
// dropped before: with all that the program printed on standard output, when that is at most `limit` bytes and the
// program ended by itself with exit code 0; else with nothing. An empty token means that it cannot be started; no
// completion follows then.
using ChildCompletion = std::function<void(std::optional<std::string> output)>;
platform::Token startChild(const std::vector<std::string>& words, std::size_t limit, ChildCompletion completion);

}  // namespace hushpane::session
