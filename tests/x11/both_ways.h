#pragma once

#include "tests/x11/desktop.h"

namespace hushpane::x11_tests {

// A desktop whose tests run twice: without a compositor and with one.
class BothWays : public Desktop, public testing::WithParamInterface<bool> {
 protected:
  BothWays() {
    if (hasCompositor()) startCompositor();
  }

  bool hasCompositor() const { return GetParam(); }
  std::string wayName() const { return hasCompositor() ? "composited" : "plain"; }
};

#define HUSHPANE_RUN_BOTH_WAYS(suite)                       \
  INSTANTIATE_TEST_SUITE_P(Desktop, suite, testing::Bool(), \
                           [](const auto& way) { return way.param ? "Composited" : "Plain"; })

}  // namespace hushpane::x11_tests
