#include "tests/managers/impossible.h"

#include <fnmatch.h>

namespace hushpane::x11_tests {
namespace {

struct Impossible {
  const char* combinations;  // a shell pattern
  const char* testCase;
  const char* reason;
};

constexpr Impossible list[]{
    {"twm", "second workspace", "twm has no workspaces."},
    {"twm", "desktop window", "twm takes the window of the desktop for an ordinary one."},
};

}  // namespace

std::optional<std::string> whyImpossible(const std::string& combination, const std::string& testCase) {
  for (const Impossible& entry : list)
    if (testCase == entry.testCase && fnmatch(entry.combinations, combination.c_str(), 0) == 0) return entry.reason;
  return std::nullopt;
}

}  // namespace hushpane::x11_tests
