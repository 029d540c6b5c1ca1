#pragma once

#include <initializer_list>
#include <string>

#include "localization/language_manager.h"
#include "localization/localization_key.h"

namespace hushpane {

// The interface text in the language in use.
inline std::string localized(LocalizationKey key) {
  return LanguageManager::shared().localizedString(key.text);
}
inline std::string localized(LocalizationKey key, std::initializer_list<FormatArgument> arguments) {
  return LanguageManager::shared().localizedString(key.text, arguments);
}

}  // namespace hushpane
