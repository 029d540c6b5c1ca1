#include "desktops/shared/property_list.h"

#include <utility>

#include "desktops/shared/binary_property_list.h"
#include "desktops/shared/files.h"
#include "desktops/shared/old_style_property_list.h"
#include "desktops/shared/property_list_limits.h"
#include "desktops/shared/unicode_text.h"
#include "desktops/shared/xml_property_list.h"

namespace hushpane::desktops {

namespace {

// Old-style text may begin with a "<" too, but then its root is data.
bool looksLikeXml(std::string_view text) {
  const auto first = text.find_first_not_of(" \t\r\n");
  return first != std::string_view::npos && text[first] == '<';
}

std::optional<platform::Value> parseRoot(std::string_view bytes) {
  if (isBinaryPropertyList(bytes)) return parseBinaryPropertyList(bytes);
  const auto text = decodeText(bytes);
  if (!text) return std::nullopt;
  return looksLikeXml(*text) ? parseXmlPropertyList(*text) : parseOldStylePropertyList(*text);
}

}  // namespace

std::optional<platform::Dictionary> parsePropertyList(std::string_view bytes) {
  if (bytes.size() > propertyListLimit::bytes) return std::nullopt;
  auto root = parseRoot(bytes);
  auto* dictionary = root ? std::get_if<platform::Dictionary>(&root->storage) : nullptr;
  if (!dictionary) return std::nullopt;
  return std::move(*dictionary);
}

std::optional<platform::Dictionary> PropertyListFiles::read(const std::filesystem::path& file) const {
  const auto contents = readFile(file, propertyListLimit::bytes);
  return contents ? parsePropertyList(contents->bytes) : std::nullopt;
}

bool PropertyListFiles::writeXml(const std::filesystem::path& file, const platform::Dictionary& root) {
  return replaceFile(file, writeXmlPropertyList(root)).has_value();
}

}  // namespace hushpane::desktops
