#pragma once

#include "platform/bookmarks.h"

namespace hushpane::desktops {

// Finds regular files by what the file system calls them: device, inode and, where it is known, time of birth, which
// tells a file from a later one that inherited the inode. A file is looked for in the folder where it was; when it is
// not there any more but another one took its name, as programs that save by replacing do, that one is found. The
// plain path of a file, as people write it into the settings, is a bookmark that is stale from the beginning.
class FileBookmarks : public platform::Bookmarks {
 public:
  std::optional<platform::Data> create(const std::filesystem::path& file) const override;
  std::optional<platform::ResolvedBookmark> resolve(const platform::Data& bookmark) const override;
};

}  // namespace hushpane::desktops
