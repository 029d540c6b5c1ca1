#pragma once

#include <filesystem>

#include "platform/bundle.h"

namespace hushpane::desktops {

// A file with a table of strings: "key" = "text"; pairs with comments and escapes in UTF-8, or in UTF-16 after a
// byte-order mark, or any other form of property list. An entry without text stands for its own key; the last of
// several counts. Entries that are no texts, or hold the null character, are left out. A table that is malformed
// anywhere gives no strings at all, so that an interface is never half in one language; so does a file that is missing
// or cannot be read.
platform::LocalizedStrings readStringsTable(const std::filesystem::path& file);

}  // namespace hushpane::desktops
