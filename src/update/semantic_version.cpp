#include "update/semantic_version.h"

#include <algorithm>
#include <charconv>

namespace hushpane::update {

namespace {

constexpr std::size_t longestVersion = 64;

bool isDigit(char letter) {
  return letter >= '0' && letter <= '9';
}

bool isNumber(std::string_view part) {
  return !part.empty() && std::ranges::all_of(part, isDigit);
}

bool hasLeadingZero(std::string_view part) {
  return part.size() > 1 && part.front() == '0';
}

bool isIdentifier(std::string_view part) {
  const auto isAllowed = [](char letter) {
    return isDigit(letter) || (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') || letter == '-';
  };
  return !part.empty() && std::ranges::all_of(part, isAllowed);
}

std::vector<std::string> partsOf(std::string_view text) {
  std::vector<std::string> parts;
  for (auto dot = text.find('.'); dot != text.npos; dot = text.find('.')) {
    parts.emplace_back(text.substr(0, dot));
    text.remove_prefix(dot + 1);
  }
  parts.emplace_back(text);
  return parts;
}

std::optional<std::uint64_t> number(const std::string& part) {
  std::uint64_t value = 0;
  const auto* end = part.data() + part.size();
  if (!isNumber(part) || hasLeadingZero(part)) return std::nullopt;
  const auto result = std::from_chars(part.data(), end, value);
  return result.ec == std::errc() && result.ptr == end ? std::optional(value) : std::nullopt;
}

// Cuts off what follows the mark, without the mark; nothing when there is no mark.
std::optional<std::string_view> cutOff(std::string_view& text, char mark) {
  const auto found = text.find(mark);
  if (found == text.npos) return std::nullopt;
  const auto rest = text.substr(found + 1);
  text = text.substr(0, found);
  return rest;
}

// Numbers by their value, and before all words; words by their letters. Numbers may be longer than any type.
std::strong_ordering compareParts(const std::string& left, const std::string& right) {
  const bool isLeftNumber = isNumber(left), isRightNumber = isNumber(right);
  if (isLeftNumber != isRightNumber) return isRightNumber <=> isLeftNumber;
  if (isLeftNumber && left.size() != right.size()) return left.size() <=> right.size();
  return left <=> right;
}

}  // namespace

std::optional<SemanticVersion> SemanticVersion::parse(std::string_view text) {
  if (text.size() > longestVersion) return std::nullopt;
  SemanticVersion version;
  if (const auto build = cutOff(text, '+'))
    if (!std::ranges::all_of(partsOf(*build), isIdentifier)) return std::nullopt;
  if (const auto preRelease = cutOff(text, '-')) {
    version.preRelease_ = partsOf(*preRelease);
    for (const auto& part : version.preRelease_)
      if (!isIdentifier(part) || (isNumber(part) && hasLeadingZero(part))) return std::nullopt;
  }
  for (const auto& part : partsOf(text)) {
    const auto value = number(part);
    if (!value) return std::nullopt;
    version.numbers_.push_back(*value);
  }
  return version.numbers_.size() == 3 ? std::optional(version) : std::nullopt;
}

std::strong_ordering SemanticVersion::operator<=>(const SemanticVersion& other) const {
  if (const auto order = numbers_ <=> other.numbers_; order != 0) return order;
  if (preRelease_.empty() || other.preRelease_.empty()) return preRelease_.empty() <=> other.preRelease_.empty();
  return std::lexicographical_compare_three_way(preRelease_.begin(), preRelease_.end(), other.preRelease_.begin(),
                                                other.preRelease_.end(), compareParts);
}

}  // namespace hushpane::update
