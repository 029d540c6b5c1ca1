#include "desktops/shared/strings_table.h"

#include <optional>
#include <string>
#include <utility>
#include <variant>

#include "desktops/shared/debug_log.h"
#include "desktops/shared/property_list.h"

namespace hushpane::desktops {

namespace {

// No library that draws text takes it beyond such a character.
bool holdsNull(const std::string& text) {
  return text.find('\0') != text.npos;
}

platform::LocalizedStrings textsOf(platform::Dictionary list) {
  platform::LocalizedStrings strings;
  while (!list.empty()) {
    auto entry = list.extract(list.begin());
    auto* text = std::get_if<std::string>(&entry.mapped().storage);
    if (text && !holdsNull(*text) && !holdsNull(entry.key()))
      strings.emplace_hint(strings.end(), std::move(entry.key()), std::move(*text));
  }
  return strings;
}

}  // namespace

platform::LocalizedStrings readStringsTable(const std::filesystem::path& file) {
  auto list = PropertyListFiles().read(file);
  if (!list) debugLog("cannot read the texts in " + file.string());
  return textsOf(std::move(list).value_or(platform::Dictionary{}));
}

}  // namespace hushpane::desktops
