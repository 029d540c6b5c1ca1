#include "desktops/sim/scenario_reader.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <utility>

namespace hushpane::sim {

namespace {

constexpr double farthest = 100'000;    // points from the origin
constexpr double largestSide = 10'000;  // points
constexpr std::string_view blanks = " \t\r";

template <class Number>
std::optional<Number> parsed(std::string_view text) {
  Number number{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

[[noreturn]] void fail(std::string message) {
  throw BadScenarioLine{std::move(message)};
}

std::string quoted(std::string_view text) {
  return "'" + std::string(text) + "'";
}

platform::Value plainValue(std::string_view text) {
  if (text == "true") return true;
  if (text == "false") return false;
  if (const auto whole = parsed<std::int64_t>(text)) return *whole;
  if (const auto real = parsed<double>(text); real && std::isfinite(*real)) return *real;
  return std::string(text);
}

platform::Dictionary dictionaryValue(std::string_view text) {
  platform::Dictionary result;
  std::string_view rest = text.substr(1, text.size() - 2);
  while (!rest.empty()) {
    const auto comma = rest.find(',');
    const auto entry = rest.substr(0, comma);
    const auto equals = entry.find('=');
    if (equals == std::string_view::npos || equals == 0) fail(quoted(entry) + " in a dictionary is no KEY=VALUE");
    result.insert_or_assign(std::string(entry.substr(0, equals)), plainValue(entry.substr(equals + 1)));
    rest = comma == std::string_view::npos ? std::string_view() : rest.substr(comma + 1);
  }
  return result;
}

}  // namespace

ScenarioReader::ScenarioReader(std::string_view line) {
  std::size_t position = line.find_first_not_of(blanks);
  while (position != std::string_view::npos && line[position] != '#') {
    if (line[position] == '"') {
      readQuoted(line, position);
    } else {
      const auto end = std::min(line.find_first_of(blanks, position), line.size());
      words_.push_back({std::string(line.substr(position, end - position)), false});
      position = end;
    }
    position = line.find_first_not_of(blanks, position);
  }
}

void ScenarioReader::readQuoted(std::string_view line, std::size_t& position) {
  const auto end = line.find('"', position + 1);
  if (end == std::string_view::npos) fail("a quoted text does not end");
  words_.push_back({std::string(line.substr(position + 1, end - position - 1)), true});
  position = end + 1;
}

void ScenarioReader::expectEnd() const {
  if (!atEnd()) fail("unexpected " + quoted(words_[next_].text));
}

const ScenarioReader::Word& ScenarioReader::take(std::string_view what) {
  if (atEnd()) fail("missing " + std::string(what));
  return words_[next_++];
}

std::string ScenarioReader::word(std::string_view what) {
  return take(what).text;
}

bool ScenarioReader::accept(std::string_view keyword) {
  if (atEnd() || words_[next_].isQuoted || words_[next_].text != keyword) return false;
  ++next_;
  return true;
}

void ScenarioReader::expect(std::string_view keyword) {
  if (atEnd()) fail("missing " + quoted(keyword));
  if (!accept(keyword)) fail("expected " + quoted(keyword) + " instead of " + quoted(words_[next_].text));
}

double ScenarioReader::number(std::string_view what, double least, double most) {
  const auto text = word(what);
  const auto number = parsed<double>(text);
  if (!number || !std::isfinite(*number)) fail(quoted(text) + " is no number for " + std::string(what));
  if (*number < least || *number > most) fail(std::string(what) + " " + text + " is out of range");
  return *number;
}

int ScenarioReader::integer(std::string_view what, int least, int most) {
  const auto text = word(what);
  const auto number = parsed<int>(text);
  if (!number) fail(quoted(text) + " is no whole number for " + std::string(what));
  if (*number < least || *number > most) fail(std::string(what) + " " + text + " is out of range");
  return *number;
}

std::uint32_t ScenarioReader::displayId() {
  const auto text = word("a display id");
  const auto number = parsed<std::uint32_t>(text);
  if (!number) fail(quoted(text) + " is no display id");
  return *number;
}

platform::Point ScenarioReader::point() {
  const double x = number("x", -farthest, farthest);
  return {x, number("y", -farthest, farthest)};
}

platform::Rect ScenarioReader::frame() {
  expect("at");
  const auto origin = point();
  expect("size");
  const double width = number("width", 1, largestSide);
  return {origin.x, origin.y, width, number("height", 1, largestSide)};
}

platform::Color ScenarioReader::color() {
  const auto text = word("a colour");
  std::uint32_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, 16);
  if (text.size() != 6 || error != std::errc() || end != text.data() + text.size())
    fail(quoted(text) + " is no colour of the form rrggbb");
  const auto channel = [number](unsigned shift) { return ((number >> shift) & 0xff) / 255.0; };
  return {channel(16), channel(8), channel(0), 1};
}

platform::Value ScenarioReader::value() {
  if (words_.size() - next_ > 1 && accept("data")) {
    const std::string bytes = word("bytes");
    return platform::Data(bytes.begin(), bytes.end());
  }
  const Word& word = take("a value");
  if (word.isQuoted) return word.text;
  if (word.text.size() >= 2 && word.text.front() == '{' && word.text.back() == '}') return dictionaryValue(word.text);
  return plainValue(word.text);
}

std::optional<platform::Value> ScenarioReader::valueOrAbsent() {
  return accept("absent") ? std::nullopt : std::optional(value());
}

}  // namespace hushpane::sim
