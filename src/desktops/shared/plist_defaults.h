#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>

#include "desktops/shared/file_watch.h"
#include "desktops/shared/files.h"
#include "platform/lifetime.h"
#include "platform/main_queue.h"
#include "platform/notification_center.h"
#include "platform/user_defaults.h"

namespace hushpane::desktops {

// Settings in one property-list file, which anyone may edit meanwhile: changes by others take effect as they are saved.
//
// Every write goes to the file at once. What others changed is read before, so only a change at the very same moment
// can be lost, never the rest of the file. While the file cannot be written, what was set holds for this process and
// goes into the file with the next write that succeeds. A file that is broken leaves the last good values in place
// (none at the start), and its bytes are kept beside it as FILE.broken before it is replaced. A file that was removed
// means no values. Values have the precision that the file gives them: dates lose their fraction of a second.
class PlistDefaults : public platform::UserDefaults {
 public:
  // An empty path is a file that can be neither read nor written.
  PlistDefaults(std::filesystem::path file, platform::MainQueue& queue, platform::NotificationCenter& center);

  std::optional<platform::Value> value(std::string_view key) const override;
  void set(std::string_view key, platform::Value value) override;
  void remove(std::string_view key) override;

 private:
  enum class FileState { missing, broken, good };
  using Change = std::optional<platform::Value>;  // nothing removes

  void startWatching();
  void fileChanged();
  void refresh();
  void pickUpChanges();
  void change(std::string_view key, Change value);
  void apply(const std::string& key, const Change& value);
  bool save();
  bool keepBrokenFile() const;
  void announceChanges();

  std::filesystem::path file_;
  platform::MainQueue& queue_;
  platform::NotificationCenter& center_;
  platform::Dictionary values_;
  platform::Dictionary announced_;  // the values when the last notification was posted
  bool isAnnouncing_ = false;
  std::map<std::string, Change, std::less<>> unsaved_;  // set since the file could not be written
  FileState state_ = FileState::missing;
  std::optional<FileStamp> stamp_;  // of the file that values_ came from or went to
  std::optional<FileWatch> watch_;
  platform::WorkItem refresh_;
  platform::Lifetime lifetime_;
};

}  // namespace hushpane::desktops
