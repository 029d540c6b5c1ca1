#pragma once

#include <filesystem>
#include <optional>

#include "platform/value.h"

namespace hushpane::platform {

// Property-list files.
class PropertyLists {
 public:
  virtual ~PropertyLists() = default;

  // The root dictionary of a file in any property-list form (XML, binary, old-style text); nothing when the file is
  // missing, unreadable, broken, or its root is not a dictionary.
  virtual std::optional<Dictionary> read(const std::filesystem::path& file) const = 0;

  // Replaces the file as a whole by the XML form; a failure leaves the old file and returns false.
  virtual bool writeXml(const std::filesystem::path& file, const Dictionary& root) = 0;
};

// The folder that the programs of one application group share.
class SharedContainer {
 public:
  virtual ~SharedContainer() = default;

  // The group's folder, made when it was missing; nothing when there can be none.
  virtual std::optional<std::filesystem::path> url(std::string_view groupIdentifier) = 0;
};

}  // namespace hushpane::platform
