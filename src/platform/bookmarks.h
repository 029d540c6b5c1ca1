#pragma once

#include <filesystem>
#include <optional>

#include "platform/value.h"

namespace hushpane::platform {

// Where the file of a bookmark is now.
struct ResolvedBookmark {
  std::filesystem::path path;
  bool isStale = false;  // the path or the identity of the file has changed: a new bookmark should be made
};

// Opaque bytes that find a file again after it was renamed in its folder.
class Bookmarks {
 public:
  virtual ~Bookmarks() = default;

  // Nothing when the file does not exist.
  virtual std::optional<Data> create(const std::filesystem::path& file) const = 0;
  // Nothing when the file is gone or the bytes are foreign.
  virtual std::optional<ResolvedBookmark> resolve(const Data& bookmark) const = 0;
};

}  // namespace hushpane::platform
