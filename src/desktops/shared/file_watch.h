#pragma once

#include <glibmm/main.h>
#include <sigc++/connection.h>

#include <filesystem>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "desktops/shared/file_descriptor.h"

namespace hushpane::desktops {

// Tells when a file may have changed: written, replaced, made or removed, also at the end of a symbolic link. It
// watches folders, so it survives programs that save by replacing, and it costs nothing until something happens there:
// the kernel's own notification, never a timer. A folder that cannot be watched is passed over. On GLib's default main
// context.
class FileWatch {
 public:
  FileWatch(const std::filesystem::path& file, std::function<void()> changed);
  FileWatch(const FileWatch&) = delete;
  FileWatch& operator=(const FileWatch&) = delete;
  ~FileWatch();

  // True once a folder could not be watched or is gone: then make another watch when the folder is there again.
  bool isBlind() const { return isBlind_; }

 private:
  void watch(const std::filesystem::path& file);
  bool readable();
  bool concerns(int folder, const char* name) const;

  std::function<void()> changed_;
  FileDescriptor descriptor_;
  std::vector<std::pair<int, std::string>> files_;  // folder's number and name in it
  bool isBlind_ = false;
  sigc::connection connection_;
};

}  // namespace hushpane::desktops
