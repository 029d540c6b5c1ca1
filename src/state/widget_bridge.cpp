#include "state/widget_bridge.h"

#include <memory>
#include <utility>

#include "platform/platform.h"

namespace hushpane {

WidgetBridge& WidgetBridge::shared() {
  return platform::Platform::current().instance<WidgetBridge>([](platform::Platform& platform) {
    return std::make_shared<WidgetBridge>(platform.sharedContainer(), platform.propertyLists(),
                                          [&](std::string_view name) { return platform.userDefaultsSuite(name); });
  });
}

WidgetBridge::WidgetBridge(platform::SharedContainer& containers, platform::PropertyLists& propertyLists,
                           OpenSuite openSuite)
    : containers_(containers), propertyLists_(propertyLists), openSuite_(std::move(openSuite)) {}

const std::optional<std::filesystem::path>& WidgetBridge::sharedContainerURL() {
  if (!lookedUp_) {
    container_ = containers_.url(groupIdentifier);
    lookedUp_ = true;
  }
  return container_;
}

std::optional<std::filesystem::path> WidgetBridge::sharedFile() {
  const auto& container = sharedContainerURL();
  return container ? std::optional(*container / sharedFileName) : std::nullopt;
}

platform::Dictionary WidgetBridge::readSharedDictionary() {
  const auto file = sharedFile();
  return file ? propertyLists_.read(*file).value_or(platform::Dictionary{}) : platform::Dictionary{};
}

void WidgetBridge::writeSharedDictionary(const platform::Dictionary& dictionary) {
  if (const auto file = sharedFile()) propertyLists_.writeXml(*file, dictionary);
}

void WidgetBridge::setSharedString(std::string_view value, std::string_view key) {
  if (!sharedContainerURL()) {
    if (auto* suite = openSuite_(groupIdentifier)) suite->set(key, std::string(value));
    return;
  }
  platform::Dictionary dictionary = readSharedDictionary();
  dictionary.insert_or_assign(std::string(key), std::string(value));
  writeSharedDictionary(dictionary);
}

std::optional<std::string> WidgetBridge::sharedString(std::string_view key) {
  if (!sharedContainerURL()) {
    const auto* suite = openSuite_(groupIdentifier);
    return suite ? suite->get<std::string>(key) : std::nullopt;
  }
  const platform::Dictionary dictionary = readSharedDictionary();
  const auto found = dictionary.find(key);
  return found == dictionary.end() ? std::nullopt : found->second.as<std::string>();
}

}  // namespace hushpane
