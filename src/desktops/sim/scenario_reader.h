#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/color.h"
#include "platform/geometry.h"
#include "platform/value.h"

namespace hushpane::sim {

// Thrown by ScenarioReader, and caught by the parser.
struct BadScenarioLine {
  std::string message;
};

// Reads one line of a scenario word by word. Words are parted by blanks, a word in double quotes may hold blanks, and a
// word that begins with # begins a comment. Whatever is not as asked for is a BadScenarioLine.
class ScenarioReader {
 public:
  explicit ScenarioReader(std::string_view line);

  bool atEnd() const { return next_ == words_.size(); }
  void expectEnd() const;

  // `what` names the word in the message about its absence.
  std::string word(std::string_view what);
  // Takes the next word if it is `keyword`, unquoted.
  bool accept(std::string_view keyword);
  void expect(std::string_view keyword);

  double number(std::string_view what, double least, double most);
  int integer(std::string_view what, int least, int most);
  std::uint32_t displayId();
  platform::Point point();
  platform::Rect frame();   // at X Y size W H
  platform::Color color();  // rrggbb
  platform::Value value();  // true, 12, 0.5, text, "text", {key=value,...}, data TEXT
  std::optional<platform::Value> valueOrAbsent();

 private:
  struct Word {
    std::string text;
    bool isQuoted = false;
  };

  const Word& take(std::string_view what);
  void readQuoted(std::string_view line, std::size_t& position);

  std::vector<Word> words_;
  std::size_t next_ = 0;
};

}  // namespace hushpane::sim
