#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace hushpane::tests {

// A text in double quotes, its escapes resolved; neighbours without anything between them are one.
struct Literal {
  std::string text;
  bool isKey = false;  // it ends with _key
};

// Finds the literals of C++ sources, and of tables of strings, whose lexical form is the same. Comments and characters
// in single quotes are passed over. Raw literals are taken as they are.
class LiteralScanner {
 public:
  explicit LiteralScanner(std::string_view source) : rest_(source) {}

  std::vector<Literal> literals() {
    while (!rest_.empty()) step();
    return found_;
  }

 private:
  void step() {
    if (rest_.starts_with("//"))
      skipTo("\n");
    else if (rest_.starts_with("/*"))
      skipTo("*/");
    else if (rest_.starts_with("R\"") && !isWord(before_))
      readRaw();
    else if (rest_.front() == '"')
      readQuoted();
    else if (rest_.front() == '\'' && !isWord(before_))  // in 1'000 it only parts digits
      skipCharacter();
    else
      skipOne();
  }

  static bool isWord(char character) {
    return character == '_' || (character >= '0' && character <= '9') || (character >= 'a' && character <= 'z') ||
           (character >= 'A' && character <= 'Z');
  }

  char take() {
    if (rest_.empty()) return '\0';
    before_ = rest_.front();
    rest_.remove_prefix(1);
    return before_;
  }

  void skipOne() {
    if (std::string_view(" \t\r\n").find(take()) == std::string_view::npos) isNeighbour_ = false;
  }

  void skipTo(std::string_view end) {
    const auto at = rest_.find(end, 2);
    rest_.remove_prefix(at == rest_.npos ? rest_.size() : at + end.size());
    before_ = ' ';
  }

  void skipCharacter() {
    take();
    while (!rest_.empty() && rest_.front() != '\'')
      if (take() == '\\') take();
    take();
    isNeighbour_ = false;
  }

  void readRaw() {
    const auto open = rest_.find('(');
    const auto end = ")" + std::string(rest_.substr(2, open - 2)) + "\"";
    const auto close = rest_.find(end, open);
    if (open == rest_.npos || close == rest_.npos) return skipTo("\n");
    const std::string text(rest_.substr(open + 1, close - open - 1));
    rest_.remove_prefix(close + end.size());
    add(text);
  }

  void readQuoted() {
    take();
    std::string text;
    while (!rest_.empty() && rest_.front() != '"') {
      const char character = take();
      if (character == '\\')
        appendEscape(text);
      else
        text += character;
    }
    take();
    add(text);
  }

  void appendEscape(std::string& text) {
    constexpr std::string_view letters = "ntr0", meanings{"\n\t\r\0", 4};
    const char letter = take();
    if (letter == 'u' || letter == 'U')
      appendUtf8(text, readHex(letter == 'u' ? 4 : 8));
    else if (letter == 'x')
      text += static_cast<char>(readHex(2));
    else if (const auto at = letters.find(letter); at != letters.npos)
      text += meanings[at];
    else
      text += letter;
  }

  std::uint32_t readHex(std::size_t mostDigits) {
    const auto digits = rest_.substr(0, mostDigits).find_first_not_of("0123456789abcdefABCDEF");
    const std::string number(rest_.substr(0, std::min(digits, mostDigits)));
    rest_.remove_prefix(number.size());
    return static_cast<std::uint32_t>(std::stoul("0" + number, nullptr, 16));
  }

  static void appendUtf8(std::string& text, std::uint32_t character) {
    const auto append = [&](std::uint32_t byte) { text += static_cast<char>(byte); };
    const auto appendLast = [&](unsigned shift) { append(0x80 | (character >> shift & 0x3F)); };
    if (character < 0x80) return append(character);
    if (character < 0x800) {
      append(0xC0 | character >> 6);
    } else {
      if (character < 0x10000) {
        append(0xE0 | character >> 12);
      } else {
        append(0xF0 | character >> 18);
        appendLast(12);
      }
      appendLast(6);
    }
    appendLast(0);
  }

  void add(const std::string& text) {
    if (isNeighbour_)
      found_.back().text += text;
    else
      found_.push_back({text, false});
    constexpr std::string_view suffix = "_key";
    if (rest_.starts_with(suffix) && (rest_.size() == suffix.size() || !isWord(rest_[suffix.size()]))) {
      found_.back().isKey = true;
      rest_.remove_prefix(suffix.size());
    }
    isNeighbour_ = true;
    before_ = '"';
  }

  std::string_view rest_;
  char before_ = ' ';         // the character before the rest
  bool isNeighbour_ = false;  // nothing but blanks and comments since the last literal
  std::vector<Literal> found_;
};

}  // namespace hushpane::tests
