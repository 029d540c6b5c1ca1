#include "desktops/shared/file_watch.h"

#include <sys/inotify.h>

#include <algorithm>
#include <cstring>
#include <optional>

#include "desktops/shared/files.h"

namespace hushpane::desktops {

namespace {

constexpr std::uint32_t events = IN_CLOSE_WRITE | IN_CREATE | IN_MOVED_FROM | IN_MOVED_TO | IN_DELETE | IN_ONLYDIR;

}  // namespace

FileWatch::FileWatch(const std::filesystem::path& file, std::function<void()> changed)
    : changed_(std::move(changed)), descriptor_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)), isBlind_(!descriptor_) {
  if (isBlind_) return;
  watch(file);
  const auto target = followLinks(file);
  if (target && *target != file) watch(*target);
  connection_ = Glib::signal_io().connect([this](Glib::IOCondition) { return readable(); }, descriptor_.get(),
                                          Glib::IOCondition::IO_IN);
}

FileWatch::~FileWatch() {
  connection_.disconnect();
}

void FileWatch::watch(const std::filesystem::path& file) {
  const int folder = inotify_add_watch(descriptor_.get(), file.parent_path().c_str(), events);
  isBlind_ = isBlind_ || folder < 0;
  if (folder >= 0) files_.emplace_back(folder, file.filename().string());
}

bool FileWatch::readable() {
  alignas(inotify_event) char buffer[4096];
  bool hasChanged = false;
  ssize_t size = 0;
  while ((size = read(descriptor_.get(), buffer, sizeof buffer)) > 0) {
    for (const char* at = buffer; at < buffer + size;) {
      inotify_event event{};
      std::memcpy(&event, at, sizeof event);
      const char* name = at + sizeof event;
      isBlind_ = isBlind_ || (event.mask & IN_IGNORED);
      hasChanged = hasChanged || (event.mask & IN_Q_OVERFLOW) || (event.len > 0 && concerns(event.wd, name));
      at = name + event.len;
    }
  }
  if (hasChanged) {
    const auto changed = changed_;  // which may end this watch
    changed();
  }
  return true;
}

bool FileWatch::concerns(int folder, const char* name) const {
  return std::any_of(files_.begin(), files_.end(),
                     [folder, name](const auto& file) { return file.first == folder && file.second == name; });
}

}  // namespace hushpane::desktops
