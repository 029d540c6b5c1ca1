#include "desktops/shared/plist_defaults.h"

#include <utility>

#include "desktops/shared/debug_log.h"
#include "desktops/shared/property_list.h"
#include "desktops/shared/property_list_limits.h"
#include "desktops/shared/xdg_directories.h"
#include "desktops/shared/xml_property_list.h"

namespace hushpane::desktops {

namespace {

// Editors may take a file away for a moment before they put the new one in its place.
constexpr double secondsUntilRemoved = 0.3;

// The value as the file will give it back.
std::optional<platform::Value> asStored(platform::Value value) {
  auto list = parsePropertyList(writeXmlPropertyList({{"value", std::move(value)}}));
  if (!list || list->empty()) return std::nullopt;
  return std::move(list->begin()->second);
}

}  // namespace

PlistDefaults::PlistDefaults(std::filesystem::path file, platform::MainQueue& queue,
                             platform::NotificationCenter& center)
    : file_(std::move(file)), queue_(queue), center_(center) {
  makePrivateFolder(file_.parent_path());
  startWatching();
  pickUpChanges();
  announced_ = values_;
}

std::optional<platform::Value> PlistDefaults::value(std::string_view key) const {
  const auto found = values_.find(key);
  return found == values_.end() ? std::nullopt : std::optional(found->second);
}

void PlistDefaults::set(std::string_view key, platform::Value value) {
  if (auto stored = asStored(std::move(value))) change(key, std::move(stored));
}

void PlistDefaults::remove(std::string_view key) {
  change(key, std::nullopt);
}

void PlistDefaults::startWatching() {
  watch_.emplace(file_, [this] { fileChanged(); });
}

void PlistDefaults::fileChanged() {
  refresh_ = queue_.after(stampOf(file_) ? 0 : secondsUntilRemoved, [this] { refresh(); });
}

void PlistDefaults::refresh() {
  if (stampOf(file_) != stamp_) startWatching();  // a link may lead elsewhere now
  pickUpChanges();
  if (state_ != FileState::missing) return;
  values_.clear();
  for (const auto& [key, value] : unsaved_) apply(key, value);
  announceChanges();
}

void PlistDefaults::pickUpChanges() {
  const auto stamp = stampOf(file_);
  if (!stamp) {
    state_ = FileState::missing;
    stamp_.reset();
    return;
  }
  if (stamp == stamp_) return;
  const auto contents = readFile(file_, propertyListLimit::bytes);
  auto list = contents ? parsePropertyList(contents->bytes) : std::nullopt;
  stamp_ = contents ? contents->stamp : *stamp;
  state_ = list ? FileState::good : FileState::broken;
  if (!list) return debugLog("cannot read the settings in " + file_.string());
  values_ = std::move(*list);
  for (const auto& [key, value] : unsaved_) apply(key, value);
  announceChanges();
}

void PlistDefaults::change(std::string_view key, Change value) {
  pickUpChanges();
  const bool isStored = state_ != FileState::missing || !value;
  if (this->value(key) == value && isStored && unsaved_.empty()) return;
  const std::string name(key);
  apply(name, value);
  if (save())
    unsaved_.clear();
  else
    unsaved_.insert_or_assign(name, std::move(value));
  announceChanges();
}

void PlistDefaults::apply(const std::string& key, const Change& value) {
  if (value)
    values_.insert_or_assign(key, *value);
  else
    values_.erase(key);
}

bool PlistDefaults::save() {
  const bool isReady = makePrivateFolder(file_.parent_path()) && (state_ != FileState::broken || keepBrokenFile());
  const auto stamp = isReady ? replaceFile(file_, writeXmlPropertyList(values_)) : std::nullopt;
  if (!stamp) {
    debugLog("cannot write the settings to " + file_.string());
    return false;
  }
  stamp_ = stamp;
  state_ = FileState::good;
  if (watch_->isBlind()) startWatching();
  return true;
}

bool PlistDefaults::keepBrokenFile() const {
  std::error_code error;
  auto kept = file_;
  kept += ".broken";
  return std::filesystem::copy_file(file_, kept, std::filesystem::copy_options::overwrite_existing, error);
}

void PlistDefaults::announceChanges() {
  if (isAnnouncing_ || values_ == announced_) return;
  isAnnouncing_ = true;
  queue_.async(lifetime_.weak([this] {
    isAnnouncing_ = false;
    if (values_ == announced_) return;
    announced_ = values_;
    center_.post(platform::notification::userDefaultsDidChange);
  }));
}

}  // namespace hushpane::desktops
