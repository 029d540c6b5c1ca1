#include "localization/supported_language.h"

#include <algorithm>

namespace hushpane {

constinit const std::array<SupportedLanguage, 35> supportedLanguages{{
    {"en", "English", "🇬🇧"},
    {"ar", "العربية", "🇸🇦"},
    {"ca", "Català", "🇪🇸"},
    {"cs", "Čeština", "🇨🇿"},
    {"da", "Dansk", "🇩🇰"},
    {"de", "Deutsch", "🇩🇪"},
    {"el", "Ελληνικά", "🇬🇷"},
    {"es", "Español", "🇪🇸"},
    {"es-419", "Español (LatAm)", "🌎"},
    {"fi", "Suomi", "🇫🇮"},
    {"fr", "Français", "🇫🇷"},
    {"he", "עברית", "🇮🇱"},
    {"hr", "Hrvatski", "🇭🇷"},
    {"hu", "Magyar", "🇭🇺"},
    {"id", "Bahasa Indonesia", "🇮🇩"},
    {"it", "Italiano", "🇮🇹"},
    {"ja", "日本語", "🇯🇵"},
    {"ko", "한국어", "🇰🇷"},
    {"ms", "Bahasa Melayu", "🇲🇾"},
    {"nb", "Norsk Bokmål", "🇳🇴"},
    {"nl", "Nederlands", "🇳🇱"},
    {"pl", "Polski", "🇵🇱"},
    {"pt-BR", "Português (BR)", "🇧🇷"},
    {"pt-PT", "Português (PT)", "🇵🇹"},
    {"ro", "Română", "🇷🇴"},
    {"ru", "Русский", "🇷🇺"},
    {"sk", "Slovenčina", "🇸🇰"},
    {"sl", "Slovenščina", "🇸🇮"},
    {"sv", "Svenska", "🇸🇪"},
    {"th", "ไทย", "🇹🇭"},
    {"tr", "Türkçe", "🇹🇷"},
    {"uk", "Українська", "🇺🇦"},
    {"vi", "Tiếng Việt", "🇻🇳"},
    {"zh-Hans", "简体中文", "🇨🇳"},
    {"zh-Hant", "繁體中文", "🇹🇼"},
}};

const SupportedLanguage* supportedLanguage(std::string_view code) {
  const auto found = std::ranges::find(supportedLanguages, code, &SupportedLanguage::code);
  return found == supportedLanguages.end() ? nullptr : &*found;
}

}  // namespace hushpane
