#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/value.h"

namespace hushpane::desktops {

// The root of a property list in the XML form, given in UTF-8. Nothing when the XML is malformed, an element is unknown
// or out of place, a number, date or data is malformed, or the limits are passed. A whole number outside the signed
// 64-bit range counts as absent.
std::optional<platform::Value> parseXmlPropertyList(std::string_view text);

// The XML form, well-formed for any content: what XML cannot carry in a text (malformed UTF-8, most control characters)
// becomes U+FFFD. Dates lose their fraction of a second; a date outside the years 1 to 9999 and containers nested
// deeper than a reader would take are left out.
std::string writeXmlPropertyList(const platform::Dictionary& root);

}  // namespace hushpane::desktops
