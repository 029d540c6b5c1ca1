#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "platform/property_list.h"
#include "platform/user_defaults.h"

namespace hushpane {

// The small texts that the program shares with its widget: a property list in the group's container, or the defaults
// suite of the same name where there is no container. Each write replaces the whole file; the last writer wins. It is
// all that the two have in common, so each side uses this class.
class WidgetBridge {
 public:
  static constexpr std::string_view groupIdentifier = "group.com.corvane.Hushpane";
  static constexpr std::string_view sharedFileName = "hushpane-shared.plist";
  // Distributed notification without payload: the widget stored a mode and asks for it.
  static constexpr std::string_view widgetModeChange = "com.corvane.Hushpane.widgetModeChange";

  // Gives the suite of that name, or null when it cannot be opened.
  using OpenSuite = std::function<platform::UserDefaults*(std::string_view)>;

  static WidgetBridge& shared();
  WidgetBridge(platform::SharedContainer& containers, platform::PropertyLists& propertyLists, OpenSuite openSuite);

  // Looked up once, on first use.
  const std::optional<std::filesystem::path>& sharedContainerURL();
  // Empty when there is no container or its file is missing or broken.
  platform::Dictionary readSharedDictionary();
  // Does nothing without a container; errors are ignored.
  void writeSharedDictionary(const platform::Dictionary& dictionary);

  void setSharedString(std::string_view value, std::string_view key);
  std::optional<std::string> sharedString(std::string_view key);

 private:
  std::optional<std::filesystem::path> sharedFile();

  platform::SharedContainer& containers_;
  platform::PropertyLists& propertyLists_;
  OpenSuite openSuite_;
  bool lookedUp_ = false;
  std::optional<std::filesystem::path> container_;
};

}  // namespace hushpane
