#pragma once

#include <filesystem>
#include <functional>
#include <optional>

#include "desktops/shared/file_watch.h"

namespace hushpane::widget {

// Tells when the shared file may have changed, also where its folder comes later or is made anew. It makes nothing and
// costs nothing until something happens there.
class SharedFileWatch {
 public:
  SharedFileWatch(std::filesystem::path file, std::function<void()> changed);

 private:
  void arm();
  void folderChanged();
  std::filesystem::path nextToCome() const;

  std::filesystem::path file_;
  std::function<void()> changed_;
  std::optional<desktops::FileWatch> folderWatch_;
  std::optional<desktops::FileWatch> fileWatch_;
};

}  // namespace hushpane::widget
