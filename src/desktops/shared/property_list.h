#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/property_list.h"

namespace hushpane::desktops {

// The root dictionary of a property list in any of its forms: XML, binary, old-style text. Nothing when the bytes are
// broken or the root is not a dictionary; never more than a moment and bounded memory, whatever the bytes.
std::optional<platform::Dictionary> parsePropertyList(std::string_view bytes);

class PropertyListFiles : public platform::PropertyLists {
 public:
  std::optional<platform::Dictionary> read(const std::filesystem::path& file) const override;
  bool writeXml(const std::filesystem::path& file, const platform::Dictionary& root) override;
};

}  // namespace hushpane::desktops
