#pragma once

#include <glib.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace hushpane::tests {

// A text in double quotes; neighbours without anything but blanks and comments between them are one.
struct Literal {
  std::string text;    // as it is written: a key with an escape is found in no table
  bool isKey = false;  // it ends with _key
};

// The literals of a C++ source, or of a table of strings, whose lexical form is the same.
inline std::vector<Literal> literalsIn(const std::string& source) {
  constexpr auto tokens = R"re((?<blank>\s++|//[^\n]*+|/\*.*?\*/)|)re"
                          R"re(R"(?<mark>\w*+)\((?<raw>.*?)\)\g{mark}"(?<rawKey>_key\b)?|)re"
                          R"re("(?<text>[^"\\]*+(?:\\.[^"\\]*+)*+)"(?<key>_key\b)?|)re"
                          R"re('(?:[^'\\]|\\.)[^'\\]*+'|\d[\w']*+|\w++|.)re";
  const auto flags = static_cast<GRegexCompileFlags>(G_REGEX_RAW | G_REGEX_DOTALL | G_REGEX_OPTIMIZE);
  static GRegex* const token = g_regex_new(tokens, flags, GRegexMatchFlags{}, nullptr);
  GMatchInfo* match = nullptr;
  g_regex_match(token, source.c_str(), GRegexMatchFlags{}, &match);
  const std::unique_ptr<GMatchInfo, decltype(&g_match_info_free)> owner(match, g_match_info_free);
  const auto group = [&](const char* name) {
    int begin = -1, end = -1;
    const bool isThere = g_match_info_fetch_named_pos(match, name, &begin, &end) && begin >= 0;
    return isThere ? std::optional(source.substr(begin, end - begin)) : std::nullopt;
  };
  std::vector<Literal> found;
  for (bool isNeighbour = false; g_match_info_matches(match); g_match_info_next(match, nullptr)) {
    if (group("blank")) continue;
    const auto raw = group("raw"), text = raw ? raw : group("text");
    if (text && !isNeighbour) found.emplace_back();
    if (text) found.back().text += *text;
    if (group("key") || group("rawKey")) found.back().isKey = true;
    isNeighbour = text.has_value();
  }
  return found;
}

}  // namespace hushpane::tests
