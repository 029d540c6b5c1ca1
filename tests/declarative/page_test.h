#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <sstream>
#include <string>

#include "declarative/host.h"
#include "desktops/sim/sim_frame_clock.h"
#include "desktops/sim/sim_main_queue.h"

namespace hushpane::declarative {

// Sets every letter half as wide as the font is large, lines as high as the font, and breaks between words.
class PlainText : public platform::TextEngine {
 public:
  struct Layout : platform::TextLayout {
    std::string words;
    platform::Size area;
    double fontSize = 0;
    int lines = 0;
    const std::string& text() const override { return words; }
    platform::Size size() const override { return area; }
    double firstBaseline() const override { return 0.75 * fontSize; }
    int lineCount() const override { return lines; }
    bool isTruncated() const override { return false; }
    double fontScale() const override { return 1; }
  };

  platform::TextLayoutPtr layout(const std::string& text, const platform::TextStyle& style, double width) override {
    auto layout = std::make_shared<Layout>();
    layout->words = text;
    layout->fontSize = style.font.size;
    const double letter = style.font.size / 2;
    double line = 0, widest = 0;
    int lines = 1;
    std::istringstream words(text);
    for (std::string word; words >> word;) {
      const double length = letter * static_cast<double>(word.size());
      if (line > 0 && line + letter + length > width && lines != style.lineLimit) {
        ++lines;
        line = 0;
      }
      line += (line > 0 ? letter : 0) + length;
      widest = std::max(widest, line);
    }
    layout->lines = lines;
    layout->area = {style.lineLimit == 1 ? std::min(widest, width) : widest,
                    lines * style.font.size + (lines - 1) * style.lineSpacing};
    return layout;
  }
};

// A page on virtual time.
class PageTest : public testing::Test {
 protected:
  sim::SimMainQueue queue;
  sim::SimFrameClock clock{queue};
  PlainText texts;
  int changes = 0;
  std::unique_ptr<Host> host;

  Host& show(Element page, Environment environment = {}) {
    host = std::make_unique<Host>(Host::Services{queue, clock, texts}, std::move(page), std::move(environment),
                                  [this] { ++changes; });
    return *host;
  }
  void click(platform::Point point) {
    host->pointerDown(point);
    host->pointerUp(point);
    queue.drain();
  }
};

// Every drawing of the page that holds a `What`, however deep.
template <class What>
std::vector<Drawing> allOf(const Drawings& drawings) {
  std::vector<Drawing> found;
  for (const auto& drawing : drawings) {
    if (std::holds_alternative<What>(drawing.what)) found.push_back(drawing);
    for (auto& below : allOf<What>(drawing.children)) found.push_back(std::move(below));
  }
  return found;
}

}  // namespace hushpane::declarative
