#include "localization/supported_language.h"

#include <algorithm>

namespace hushpane {

namespace {

constexpr std::size_t scriptLength = 4;  // letters, by ISO 15924

// Those that interfaces are translated into, not only the supported ones: a choice stored by hand stays in force.
constexpr std::array<std::string_view, 10> rightToLeftLanguages{"ar", "ckb", "dv", "fa", "he",
                                                                "ps", "sd",  "ug", "ur", "yi"};
constexpr std::array<std::string_view, 6> rightToLeftScripts{"Adlm", "Arab", "Hebr", "Nkoo", "Syrc", "Thaa"};

// Cuts the part before the first hyphen off the front of a tag; the hyphen goes.
std::string_view takePart(std::string_view& tag) {
  const auto part = tag.substr(0, tag.find('-'));
  tag.remove_prefix(std::min(part.size() + 1, tag.size()));
  return part;
}

template <class Names>
bool contains(const Names& names, std::string_view name) {
  return std::ranges::find(names, name) != names.end();
}

}  // namespace

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

bool isRightToLeft(std::string_view tag) {
  const auto language = takePart(tag);
  while (!tag.empty())
    if (const auto part = takePart(tag); part.size() == scriptLength) return contains(rightToLeftScripts, part);
  return contains(rightToLeftLanguages, language);
}

}  // namespace hushpane
