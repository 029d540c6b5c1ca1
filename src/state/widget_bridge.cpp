#include "state/widget_bridge.h"

namespace hushpane {

WidgetBridge& WidgetBridge::shared() {
  return platform::Platform::current().instance<WidgetBridge>();
}

WidgetBridge::WidgetBridge(platform::Platform& platform) : platform_(platform) {}

const std::optional<std::filesystem::path>& WidgetBridge::sharedContainerURL() {
  if (!lookedUp_) {
    container_ = platform_.sharedContainer().url(groupIdentifier);
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
  return file ? platform_.propertyLists().read(*file).value_or(platform::Dictionary{}) : platform::Dictionary{};
}

void WidgetBridge::writeSharedDictionary(const platform::Dictionary& dictionary) {
  if (const auto file = sharedFile()) platform_.propertyLists().writeXml(*file, dictionary);
}

void WidgetBridge::setSharedString(std::string_view value, std::string_view key) {
  if (!sharedContainerURL()) {
    if (auto* suite = platform_.userDefaultsSuite(groupIdentifier)) suite->set(key, std::string(value));
    return;
  }
  platform::Dictionary dictionary = readSharedDictionary();
  dictionary.insert_or_assign(std::string(key), std::string(value));
  writeSharedDictionary(dictionary);
}

std::optional<std::string> WidgetBridge::sharedString(std::string_view key) {
  if (!sharedContainerURL()) {
    const auto* suite = platform_.userDefaultsSuite(groupIdentifier);
    return suite ? suite->get<std::string>(key) : std::nullopt;
  }
  const platform::Dictionary dictionary = readSharedDictionary();
  const auto found = dictionary.find(key);
  return found == dictionary.end() ? std::nullopt : found->second.as<std::string>();
}

}  // namespace hushpane
