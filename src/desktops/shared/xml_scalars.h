#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/value.h"

namespace hushpane::desktops::xmlScalar {

// The contents of the scalar elements of an XML property list, without outer white space. Each parser gives nothing for
// what is malformed.

struct Integer {
  std::optional<std::int64_t> value;  // nothing beyond 64 bits
};
std::optional<Integer> parseInteger(std::string_view text);

std::optional<double> parseReal(std::string_view text);
std::string writeReal(double value);

// YYYY-MM-DDThh:mm:ssZ in universal time.
std::optional<platform::Date> parseDate(std::string_view text);
// Nothing outside the years 1 to 9999.
std::optional<std::string> writeDate(platform::Date date);

std::optional<platform::Data> parseData(std::string_view text);
std::string writeData(const platform::Data& data);

// Escaped for XML; characters that XML cannot carry become U+FFFD.
std::string writeText(std::string_view text);

}  // namespace hushpane::desktops::xmlScalar
