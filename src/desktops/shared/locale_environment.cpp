#include "desktops/shared/locale_environment.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <optional>
#include <string_view>
#include <utility>

namespace hushpane::desktops {

namespace {

constexpr std::size_t mostLanguages = 64;
constexpr std::size_t longestLanguage = 8;  // letters, by BCP 47
constexpr std::size_t scriptLength = 4;

constexpr std::array<std::pair<std::string_view, std::string_view>, 4> supersededLanguages{
    {{"iw", "he"}, {"in", "id"}, {"no", "nb"}, {"mo", "ro"}}};

// Those whose Spanish derives from es-419 in the Unicode locale data.
constexpr std::array<std::string_view, 22> latinAmerica{"AR", "BO", "BR", "BZ", "CL", "CO", "CR", "CU",
                                                        "DO", "EC", "GT", "HN", "MX", "NI", "PA", "PE",
                                                        "PR", "PY", "SV", "US", "UY", "VE"};

constexpr std::array<std::string_view, 3> traditionalChinese{"TW", "HK", "MO"};

struct LanguageTag {
  std::string language;
  std::string script;
  std::string region;
};

// Unlike those of <cctype>, they know no locale.
bool isLetter(char character) {
  return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}
bool isDigit(char character) {
  return character >= '0' && character <= '9';
}
char upper(char character) {
  return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A') : character;
}
char lower(char character) {
  return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

std::string lowerCase(std::string_view text) {
  std::string result(text);
  std::ranges::transform(result, result.begin(), lower);
  return result;
}

std::string upperCase(std::string_view text) {
  std::string result(text);
  std::ranges::transform(result, result.begin(), upper);
  return result;
}

bool isRegion(std::string_view part) {
  return (part.size() == 2 && std::ranges::all_of(part, isLetter)) ||
         (part.size() == 3 && std::ranges::all_of(part, isDigit));
}

bool isUntranslated(std::string_view locale) {
  return locale == "C" || locale.starts_with("C.") || locale == "POSIX";
}

std::string_view environment(const char* variable) {
  const char* value = std::getenv(variable);
  return value ? value : "";
}

std::string_view messageLocale() {
  for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"})
    if (const auto value = environment(variable); !value.empty()) return value;
  return "C";
}

// Cuts the text before the first of the separators off its front; the separator goes.
std::string_view takePart(std::string_view& text, std::string_view separators) {
  const auto end = std::min(text.find_first_of(separators), text.size());
  const auto part = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  return part;
}

std::optional<LanguageTag> parseLocaleName(std::string_view name) {
  name = name.substr(0, name.find_first_of(".@"));
  const auto language = takePart(name, "_-");
  if (language.size() < 2 || language.size() > longestLanguage || !std::ranges::all_of(language, isLetter))
    return std::nullopt;
  LanguageTag tag{lowerCase(language), "", ""};
  while (!name.empty()) {
    const auto part = takePart(name, "_-");
    if (part.size() == scriptLength && std::ranges::all_of(part, isLetter))
      tag.script = upper(part.front()) + lowerCase(part.substr(1));
    else if (isRegion(part))
      tag.region = upperCase(part);
    else
      return std::nullopt;
  }
  return tag;
}

template <class Regions>
bool contains(const Regions& regions, std::string_view region) {
  return std::ranges::find(regions, region) != regions.end();
}

// Brings a tag to the form in which interfaces are translated.
void settle(LanguageTag& tag) {
  for (const auto& [old, current] : supersededLanguages)
    if (tag.language == old) tag.language = current;
  if (tag.language == "zh") {
    if (tag.script.empty()) tag.script = contains(traditionalChinese, tag.region) ? "Hant" : "Hans";
    tag.region.clear();
  } else if (tag.language == "es" && contains(latinAmerica, tag.region)) {
    tag.region = "419";
  } else if (tag.language == "pt") {
    tag.region = tag.region.empty() || tag.region == "BR" ? "BR" : "PT";
  }
}

std::string textOf(const LanguageTag& tag) {
  std::string text = tag.language;
  for (const auto& part : {tag.script, tag.region})
    if (!part.empty()) text += "-" + part;
  return text;
}

void add(std::vector<std::string>& languages, std::string language) {
  if (std::ranges::find(languages, language) == languages.end()) languages.push_back(std::move(language));
}

}  // namespace

std::vector<std::string> LocaleEnvironment::preferredLanguages() const {
  const auto locale = messageLocale();
  if (isUntranslated(locale)) return {};
  auto names = environment("LANGUAGE");
  if (names.empty()) names = locale;
  std::vector<std::string> languages;
  while (!names.empty() && languages.size() < mostLanguages) {
    const auto name = takePart(names, ":");
    if (isUntranslated(name)) break;
    auto tag = parseLocaleName(name);
    if (!tag) continue;
    settle(*tag);
    add(languages, textOf(*tag));
    if (tag->language == "nn") add(languages, "nb");
  }
  return languages;
}

}  // namespace hushpane::desktops
