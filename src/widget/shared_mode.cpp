#include "widget/shared_mode.h"

#include <string_view>

#include "desktops/shared/defaults_folder.h"
#include "desktops/shared/group_container.h"
#include "desktops/shared/property_list.h"
#include "platform/notification_center.h"
#include "state/stored_keys.h"
#include "state/widget_bridge.h"

namespace hushpane::widget {

namespace {

using Missing = desktops::GroupContainer::Missing;

}  // namespace

// The program's own way to what is shared, for one reading or one writing.
class SharedMode::Access {
 public:
  Access(const Homes& homes, platform::MainQueue& queue, Missing missing)
      : missing_(missing),
        settings_(desktops::settingsFolder(homes.settings)),
        container_(homes.data, missing),
        suites_(settings_, queue, center_),
        bridge_(container_, lists_, [this](std::string_view name) { return open(name); }) {}

  WidgetBridge& bridge() { return bridge_; }

 private:
  // Opening a suite makes its folder.
  platform::UserDefaults* open(std::string_view name) {
    std::error_code error;
    const bool exists = settings_ && std::filesystem::exists(*settings_ / (std::string(name) + ".plist"), error);
    return exists || missing_ == Missing::make ? suites_.open(name) : nullptr;
  }

  Missing missing_;
  std::optional<std::filesystem::path> settings_;
  desktops::PropertyListFiles lists_;
  desktops::GroupContainer container_;
  platform::NotificationCenter center_;
  desktops::DefaultsFolder suites_;
  WidgetBridge bridge_;
};

std::optional<std::filesystem::path> SharedMode::file() const {
  if (!homes_.data) return std::nullopt;
  return *homes_.data / WidgetBridge::groupIdentifier / WidgetBridge::sharedFileName;
}

std::optional<std::string> SharedMode::storedText() const {
  return Access(homes_, queue_, Missing::leave).bridge().sharedString(storedKeys::userMode);
}

VeilMode SharedMode::read() const {
  const auto mode = fromRawValue<VeilMode>(storedText().value_or(""));
  return mode && isUserMode(*mode) ? *mode : VeilMode::standard;
}

// The bridge ignores errors, so what it did is read back.
bool SharedMode::write(VeilMode mode) const {
  Access(homes_, queue_, Missing::make).bridge().setSharedString(rawValue(mode), storedKeys::userMode);
  return storedText() == rawValue(mode);
}

}  // namespace hushpane::widget
