#include "desktops/shared/old_style_property_list.h"

#include <cstdint>
#include <string>

#include "desktops/shared/property_list_limits.h"
#include "desktops/shared/unicode_text.h"

namespace hushpane::desktops {

namespace {

using platform::Array;
using platform::Data;
using platform::Dictionary;
using platform::Value;

struct Broken {};

void require(bool condition) {
  if (!condition) throw Broken{};
}

bool isSpace(char character) {
  return std::string_view(" \t\n\r\v\f").find(character) != std::string_view::npos;
}

bool isDigit(char character) {
  return character >= '0' && character <= '9';
}

// Characters of texts that need no quotes.
bool isBare(char character) {
  return isDigit(character) || (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
         std::string_view("_$/:.-").find(character) != std::string_view::npos;
}

int digitValue(char character) {
  if (isDigit(character)) return character - '0';
  if (character >= 'a' && character <= 'f') return character - 'a' + 10;
  if (character >= 'A' && character <= 'F') return character - 'A' + 10;
  return 16;
}

class Reader {
 public:
  explicit Reader(std::string_view text) : text_(text) {}

  Value root() {
    skipSpace();
    const char first = peek();
    if (first == '{' || first == '(' || first == '<') {
      Value result = value(0);
      skipSpace();
      require(atEnd());
      return result;
    }
    require(!atEnd());
    return entries(0, EntriesEnd::endOfText);
  }

 private:
  enum class EntriesEnd { brace, endOfText };

  bool atEnd() const { return at_ == text_.size(); }
  char peek() const { return atEnd() ? '\0' : text_[at_]; }

  char take() {
    require(!atEnd());
    return text_[at_++];
  }

  bool skip(std::string_view expected) {
    if (!text_.substr(at_).starts_with(expected)) return false;
    at_ += expected.size();
    return true;
  }

  void skipSpace() {
    for (;;) {
      while (!atEnd() && isSpace(text_[at_])) ++at_;
      if (skip("//"))
        at_ = std::min(text_.find('\n', at_), text_.size());
      else if (skip("/*")) {
        at_ = text_.find("*/", at_);
        require(at_ != std::string_view::npos);
        at_ += 2;
      } else {
        return;
      }
    }
  }

  void countValue() { require(++values_ <= propertyListLimit::values); }

  Value value(std::size_t depth) {
    countValue();
    require(depth < propertyListLimit::nesting);
    skipSpace();
    if (skip("{")) return entries(depth + 1, EntriesEnd::brace);
    if (skip("(")) return array(depth + 1);
    if (skip("<")) return data();
    return text();
  }

  Dictionary entries(std::size_t depth, EntriesEnd end) {
    Dictionary result;
    for (skipSpace(); end == EntriesEnd::brace ? !skip("}") : !atEnd(); skipSpace()) {
      std::string key = text();
      skipSpace();
      if (skip("=")) {
        Value entry = value(depth);
        result.insert_or_assign(std::move(key), std::move(entry));
        skipSpace();
      } else {
        require(end == EntriesEnd::endOfText);
        countValue();
        result.insert_or_assign(key, Value(key));
      }
      require(skip(";"));
    }
    return result;
  }

  Array array(std::size_t depth) {
    Array result;
    for (skipSpace(); !skip(")"); skipSpace()) {
      result.push_back(value(depth));
      skipSpace();
      require(skip(",") || peek() == ')');
    }
    return result;
  }

  Data data() {
    Data result;
    for (skipSpace(); !skip(">"); skipSpace()) {
      const int high = digitValue(take());
      const int low = digitValue(take());
      require(high < 16 && low < 16);
      result.push_back(static_cast<std::uint8_t>(high << 4 | low));
    }
    return result;
  }

  std::string text() {
    if (skip("\"")) return quoted('"');
    if (skip("'")) return quoted('\'');
    const std::size_t start = at_;
    while (!atEnd() && isBare(text_[at_])) ++at_;
    require(at_ > start);
    return std::string(text_.substr(start, at_ - start));
  }

  std::string quoted(char quote) {
    std::string result;
    for (char next = take(); next != quote; next = take()) {
      if (next == '\\')
        escape(result);
      else
        result += next;
    }
    return result;
  }

  void escape(std::string& result) {
    static constexpr std::string_view names = "abfnrtv";
    static constexpr std::string_view meanings = "\a\b\f\n\r\t\v";
    const char next = take();
    if (next == 'U' || next == 'u') return require(appendUtf8(result, unicodeEscape()));
    if (digitValue(next) < 8) {
      --at_;
      return require(appendUtf8(result, digits(8, 3)));
    }
    const auto found = names.find(next);
    result += found == std::string_view::npos ? next : meanings[found];
  }

  // Characters beyond the first plane are written as a pair of surrogates.
  char32_t unicodeEscape() {
    const char32_t first = digits(16, 4);
    if (first < 0xD800 || first >= 0xDC00) return first;
    require(skip("\\U") || skip("\\u"));
    const char32_t second = digits(16, 4);
    require(second >= 0xDC00 && second < 0xE000);
    return 0x10000 + ((first - 0xD800) << 10) + (second - 0xDC00);
  }

  // A number of one to `most` digits.
  char32_t digits(int base, int most) {
    char32_t result = 0;
    int count = 0;
    for (; count < most && digitValue(peek()) < base; ++count)
      result = result * static_cast<unsigned>(base) + static_cast<unsigned>(digitValue(take()));
    require(count > 0);
    return result;
  }

  std::string_view text_;
  std::size_t at_ = 0;
  std::size_t values_ = 0;
};

}  // namespace

std::optional<Value> parseOldStylePropertyList(std::string_view text) {
  try {
    return Reader(text).root();
  } catch (Broken) {
    return std::nullopt;
  }
}

}  // namespace hushpane::desktops
