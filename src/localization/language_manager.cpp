#include "localization/language_manager.h"

#include <memory>
#include <span>
#include <utility>
#include <vector>

#include "localization/supported_language.h"

namespace hushpane {

namespace {

constexpr std::string_view fallbackCode = "en";

// What `find` gives for the first preferred language that it knows, either as a whole or by the part before its first
// hyphen; empty when it knows none.
template <class Find>
auto findPreferred(const std::vector<std::string>& languages, Find find) {
  for (const std::string_view language : languages) {
    if (auto found = find(language)) return found;
    const auto hyphen = language.find('-');
    if (hyphen == language.npos) continue;
    if (auto found = find(language.substr(0, hyphen))) return found;
  }
  return decltype(find(std::string_view())){};
}

}  // namespace

LanguageManager& LanguageManager::shared() {
  return platform::Platform::current().instance<LanguageManager>(
      [](platform::Platform& platform) { return std::make_shared<LanguageManager>(platform, WidgetBridge::shared()); });
}

LanguageManager::LanguageManager(platform::Platform& platform, WidgetBridge& widgetBridge)
    : platform_(platform),
      widgetBridge_(widgetBridge),
      selection_(platform.userDefaults().get<std::string>(storageKey).value_or(std::string(systemSelection))),
      resolvedCode_(resolve(selection_)) {
  loadLocalizedBundle();
  publishResolvedCode();
}

void LanguageManager::select(std::string code) {
  if (code == selection_) return;
  objectWillChange();
  selection_ = std::move(code);
  storeSelection();
  objectWillChange();
  resolvedCode_ = resolve(selection_);
  loadLocalizedBundle();
  publishResolvedCode();
  platform_.widgetCenter().reloadAllTimelines();
  objectWillChange();
}

std::string LanguageManager::resolve(std::string_view selection) const {
  if (selection != systemSelection) return std::string(selection);
  const auto* language = findPreferred(platform_.locale().preferredLanguages(), supportedLanguage);
  return std::string(language ? language->code : fallbackCode);
}

void LanguageManager::loadLocalizedBundle() {
  localizedBundle_ = platform_.bundle().localizedStrings(resolvedCode_);
}

const std::string& LanguageManager::shownCode() const {
  return localizedBundle_ && !localizedBundle_->empty() ? resolvedCode_ : systemTexts().code;
}

std::string LanguageManager::localizedString(std::string_view key) const {
  const auto* text = find(key);
  return text ? *text : std::string(key);
}

std::string LanguageManager::localizedString(std::string_view key,
                                             std::initializer_list<FormatArgument> arguments) const {
  const auto* text = find(key);
  return formatLocalized(text ? std::string_view(*text) : key, std::span(arguments.begin(), arguments.size()));
}

void LanguageManager::storeSelection() {
  auto& defaults = platform_.userDefaults();
  defaults.set(storageKey, selection_);
  if (selection_ == systemSelection)
    defaults.remove(storedKeys::appleLanguages);
  else
    defaults.set(storedKeys::appleLanguages, platform::Array{selection_});
}

void LanguageManager::publishResolvedCode() {
  widgetBridge_.setSharedString(resolvedCode_, storageKey);
}

const std::string* LanguageManager::find(std::string_view key) const {
  const auto in = [&](const platform::LocalizedStringsPtr& strings) -> const std::string* {
    if (!strings) return nullptr;
    const auto found = strings->find(key);
    return found == strings->end() ? nullptr : &found->second;
  };
  const auto* text = in(localizedBundle_);
  return text ? text : in(systemTexts().strings);
}

const LanguageManager::SystemTexts& LanguageManager::systemTexts() const {
  if (!systemTexts_) systemTexts_ = openSystemTexts();
  return *systemTexts_;
}

LanguageManager::SystemTexts LanguageManager::openSystemTexts() const {
  const auto open = [&](std::string_view code) {
    auto strings = openBundle(code);
    return strings ? std::optional(SystemTexts{std::string(code), std::move(strings)}) : std::nullopt;
  };
  auto found = findPreferred(platform_.locale().preferredLanguages(), open);
  return found ? std::move(*found) : SystemTexts{std::string(fallbackCode), openBundle(fallbackCode)};
}

platform::LocalizedStringsPtr LanguageManager::openBundle(std::string_view code) const {
  return code == resolvedCode_ ? localizedBundle_ : platform_.bundle().localizedStrings(code);
}

}  // namespace hushpane
