#pragma once

#include <filesystem>
#include <string_view>

#include "platform/bundle.h"

namespace hushpane::desktops {

// A table of strings: "key" = "text"; pairs with comments and escapes in UTF-8, or in UTF-16 after a byte-order mark,
// or any other form of property list. An entry without text stands for its own key; the last of several counts. Entries
// that are no texts, or hold the null character, are left out. A table that is malformed anywhere gives no strings at
// all, so that an interface is never half in one language.
platform::LocalizedStrings parseStringsTable(std::string_view bytes);

// The same of a file; empty when it is missing or cannot be read, too.
platform::LocalizedStrings readStringsTable(const std::filesystem::path& file);

}  // namespace hushpane::desktops
