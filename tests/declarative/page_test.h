#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "declarative/host.h"
#include "desktops/sim/sim_frame_clock.h"
#include "desktops/sim/sim_main_queue.h"
#include "platform/handler_list.h"

namespace hushpane::declarative {

// A view written in place.
struct Part {
  std::function<Element(Context&)> make;
  Element body(Context& context) const { return make(context); }
};

// Something outside of the page that announces its changes.
template <class Type>
class Model {
 public:
  explicit Model(Type value) : value_(std::move(value)) {}
  const Type& get() const { return value_; }
  void set(Type value) {
    value_ = std::move(value);
    handlers_.forEach([this](const auto& handler) {
      ++told;
      handler();
    });
  }
  int told = 0;  // how often somebody learned of a change
  platform::Token observe(std::function<void()> handler) { return handlers_.add(std::move(handler)); }
  bool isObserved() const { return !handlers_.empty(); }

 private:
  Type value_;
  platform::HandlerList<void()> handlers_;
};

inline constexpr AdaptiveColor red = fixed({1, 0, 0, 1});
inline constexpr AdaptiveColor blue = fixed({0, 0, 1, 1});

// Where people read from right to left, or from left to right.
inline Environment directed(bool isMirrored) {
  Environment environment;
  if (isMirrored) environment.direction = platform::LayoutDirection::rightToLeft;
  return environment;
}

inline Element box(double width, double height, AdaptiveColor color = red) {
  return fill(Rectangle{}, color).frame({.width = width, .height = height});
}

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

  int calls = 0;

  platform::TextLayoutPtr layout(const std::string& text, const platform::TextStyle& style, double width) override {
    ++calls;
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

// A page on virtual time.
class PageTest : public testing::Test {
 protected:
  sim::SimMainQueue queue;
  sim::SimFrameClock clock{queue};
  PlainText texts;
  int changes = 0;
  std::string log;
  std::unique_ptr<Host> host;

  Host& show(Element page, Environment environment = {}) {
    host = std::make_unique<Host>(Host::Services{queue, clock, texts}, std::move(page), std::move(environment),
                                  [this] { ++changes; });
    return *host;
  }
  // A page that shows what `make` says of the model.
  template <class Type>
  Host& show(Model<Type>& model, std::function<Element(const Type&)> make, Environment environment = {}) {
    return show(Part{[&model, make](Context& context) {
                  context.observe(model);
                  return make(model.get());
                }},
                std::move(environment));
  }
  std::function<void()> noting(std::string what) {
    return [this, what] { log += what; };
  }
  // Changes the model and lets that many seconds pass.
  template <class Type>
  void set(Model<Type>& model, std::type_identity_t<Type> value, double seconds = 0) {
    model.set(std::move(value));
    queue.drain();
    queue.advance(seconds);
  }
  // The frames of all filled shapes, from back to front.
  std::vector<platform::Rect> boxes() const {
    std::vector<platform::Rect> frames;
    for (const auto& drawing : allOf<FilledPath>(host->drawings())) frames.push_back(drawing.frame);
    return frames;
  }
  void click(platform::Point point) {
    host->pointerDown(point);
    if (host) host->pointerUp(point);
    queue.drain();
  }
};

}  // namespace hushpane::declarative
