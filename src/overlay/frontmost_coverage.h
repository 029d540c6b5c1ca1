#pragma once

#include <optional>
#include <set>
#include <span>
#include <vector>

#include "platform/screen.h"
#include "platform/window_list.h"

namespace hushpane {

// How far one application's windows reach over the screens.
struct FrontmostCoverage {
  std::set<platform::DisplayId> covered;  // displays that it fills
  bool hasWindow = false;
  std::set<platform::DisplayId> touched;  // displays that it reaches into
  double area = 0;                        // of its largest window, square points
  bool operator==(const FrontmostCoverage&) const = default;
};

using WindowSpan = std::span<const platform::WindowInfo>;

FrontmostCoverage coverageOf(std::int32_t pid, WindowSpan windows, const std::vector<platform::Screen>& screens);

// The front window of the application that does not fill a screen; windows above it stay uncovered with it.
std::optional<platform::WindowNumber> frontWindowNumber(std::int32_t pid, WindowSpan windows,
                                                        const std::vector<platform::Screen>& screens);

}  // namespace hushpane
