#include "widget/shared_file_watch.h"

#include <utility>

namespace hushpane::widget {

SharedFileWatch::SharedFileWatch(std::filesystem::path file, std::function<void()> changed)
    : file_(std::move(file)), changed_(std::move(changed)) {
  arm();
}

// The file's folder, or the first of the folders on the way to it that is missing.
std::filesystem::path SharedFileWatch::nextToCome() const {
  std::error_code error;
  auto folder = file_.parent_path();
  while (folder.has_relative_path() && !std::filesystem::is_directory(folder.parent_path(), error))
    folder = folder.parent_path();
  return folder;
}

void SharedFileWatch::arm() {
  std::filesystem::path watched;
  // A folder may come while its parent is not watched yet.
  while (watched != nextToCome()) {
    watched = nextToCome();
    folderWatch_.emplace(watched, [this] { folderChanged(); });
  }
  fileWatch_.emplace(file_, changed_);
}

void SharedFileWatch::folderChanged() {
  arm();
  changed_();
}

}  // namespace hushpane::widget
