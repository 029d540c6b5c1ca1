#pragma once

#include <optional>
#include <string_view>

#include "platform/value.h"

namespace hushpane::desktops {

// True for bytes that claim to be a property list in the binary form.
bool isBinaryPropertyList(std::string_view bytes);

// The root of a property list in the binary form, version 00. Nothing when any part that the root reaches is broken:
// an offset or a reference outside the list, a container within itself, a key that is no text, a text that is no
// Unicode, a size beyond the limits. Null objects, object identifiers and whole numbers outside the signed 64-bit range
// count as absent; so does a root that is one of these.
std::optional<platform::Value> parseBinaryPropertyList(std::string_view bytes);

}  // namespace hushpane::desktops
