#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>

namespace hushpane::x11_tests {

// Runs a case of the running test and records how it went: "works", "fails", or "impossible" and the reason. One that
// is said to be impossible must fail. Whether nothing was amiss.
bool judgeCase(const std::string& name, const std::optional<std::string>& impossible,
               const std::function<void()>& body);

// A case that cannot work somewhere, whatever Hushpane does.
struct Impossible {
  const char* places;    // a shell pattern
  const char* testCase;  // the same
  const char* reason;
};
// The reason of the first that matches; nothing for the many cases that can work.
std::optional<std::string> reasonOf(std::span<const Impossible> list, const std::string& place,
                                    const std::string& testCase);

}  // namespace hushpane::x11_tests
