#pragma once

#include <cstddef>

namespace hushpane::desktops::propertyListLimit {

// What is beyond these limits counts as broken, so that no file costs more than a moment and some memory.
inline constexpr std::size_t bytes = 16u << 20;  // of a file, and of the texts and data of a binary one together
inline constexpr std::size_t values = 200'000;   // in one list
inline constexpr std::size_t nesting = 128;      // arrays and dictionaries in one another

}  // namespace hushpane::desktops::propertyListLimit
