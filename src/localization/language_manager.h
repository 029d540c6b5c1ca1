#pragma once

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

#include "localization/localized_format.h"
#include "platform/platform.h"
#include "state/observable_object.h"
#include "state/stored_keys.h"
#include "state/widget_bridge.h"

namespace hushpane {

// The language of the interface: the user's choice, the language that it comes to, and every text in it. Announces
// changes of the choice and of the language.
class LanguageManager : public ObservableObject {
 public:
  static constexpr std::string_view storageKey = storedKeys::language;
  // The choice to follow the languages that the user prefers everywhere.
  static constexpr std::string_view systemSelection = "system";

  static LanguageManager& shared();
  LanguageManager(platform::Platform& platform, WidgetBridge& widgetBridge);

  // systemSelection or a language code; one that is not supported stays in force, too.
  const std::string& selection() const { return selection_; }
  // The language in use; never systemSelection.
  const std::string& resolvedCode() const { return resolvedCode_; }
  // The texts of the language in use; null when the program has no folder of it.
  const platform::LocalizedStringsPtr& localizedBundle() const { return localizedBundle_; }
  // The language that texts are shown in: the one in use, or where the program has no texts in it, the one that stands
  // in. Pages are read in its direction.
  const std::string& shownCode() const;

  // The only way to change the choice. Takes effect, is stored and told to the widget at once.
  void select(std::string code);
  // The language that a choice comes to.
  std::string resolve(std::string_view selection) const;
  // Reads the texts of the language in use anew.
  void loadLocalizedBundle();

  // The text under that key: in the language in use, else in the first preferred language that the program has a folder
  // of (English where it has none of them), else the key, which is the English text.
  std::string localizedString(std::string_view key) const;
  // The same with the arguments in their places.
  std::string localizedString(std::string_view key, std::initializer_list<FormatArgument> arguments) const;

 private:
  struct SystemTexts {
    std::string code;
    platform::LocalizedStringsPtr strings;  // null when the program has no folder at all
  };

  void storeSelection();
  void publishResolvedCode();
  const std::string* find(std::string_view key) const;
  const SystemTexts& systemTexts() const;
  SystemTexts openSystemTexts() const;
  platform::LocalizedStringsPtr openBundle(std::string_view code) const;

  platform::Platform& platform_;
  WidgetBridge& widgetBridge_;
  std::string selection_;
  std::string resolvedCode_;
  platform::LocalizedStringsPtr localizedBundle_;
  // What the program's resources answer by themselves, found when it is first asked for.
  mutable std::optional<SystemTexts> systemTexts_;
};

}  // namespace hushpane
