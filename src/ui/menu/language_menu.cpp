#include "ui/menu/language_menu.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "declarative/menu.h"
#include "localization/supported_language.h"
#include "ui/localized.h"

namespace hushpane {

using namespace declarative;

namespace {

constexpr double height = 24, margin = 4;  // points
constexpr std::string_view fallbackCode = "en";

const SupportedLanguage& languageInUse() {
  const auto* language = supportedLanguage(LanguageManager::shared().resolvedCode());
  return language ? *language : *supportedLanguage(fallbackCode);
}

void choose(std::string_view selection) {
  LanguageManager::shared().select(std::string(selection));
}

MenuEntry entryOf(const SupportedLanguage& language, bool isChecked) {
  return {.title = localized("%@  %@"_key, {std::string(language.flag), std::string(language.endonym)}),
          .isChecked = isChecked,
          .action = [code = language.code] { choose(code); }};
}

std::vector<MenuEntry> entries() {
  const bool followsSystem = LanguageManager::shared().selection() == LanguageManager::systemSelection;
  std::vector<MenuEntry> entries{{.title = localized("System"_key),
                                  .isChecked = followsSystem,
                                  .action = [] { choose(LanguageManager::systemSelection); }},
                                 {.title = {}, .isDivider = true, .action = {}}};
  for (const auto& language : supportedLanguages)
    entries.push_back(entryOf(language, !followsSystem && language == languageInUse()));
  return entries;
}

}  // namespace

Element LanguageMenu::body(Context& context) const {
  context.observe(LanguageManager::shared());
  const std::string title = localized("Language"_key);
  const Element label = text(std::string(languageInUse().flag), platform::Font{.size = 13})
                            .fixedSize()
                            .padding({.leading = margin, .trailing = margin})
                            .frame({.height = height})
                            .contentShape(Rectangle{});
  return menu(entries(), label).tooltip(title).accessibility({.role = AccessibilityRole::button, .label = title});
}

}  // namespace hushpane
