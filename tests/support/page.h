#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "declarative/host.h"
#include "desktops/shared/pango_text.h"
#include "support/simulated_program.h"

namespace hushpane::tests {

// One thing that a page shows, with all that the layers around it do to it.
struct Shown {
  declarative::Drawing drawing;
  platform::Rect frame;
  double opacity = 1;
  double saturation = 1;
  double blurRadius = 0;
  std::vector<platform::Shadow> shadows;
  std::size_t order = 0;  // from the back

  template <class What>
  const What* as() const {
    return std::get_if<What>(&drawing.what);
  }
  std::string text() const {
    const auto* drawn = as<declarative::DrawnText>();
    return drawn ? drawn->layout->text() : "";
  }
  // Its own, before the layers fade it.
  platform::Color color() const {
    if (const auto* drawn = as<declarative::DrawnText>()) return drawn->color;
    if (const auto* drawn = as<declarative::StrokedPath>()) return drawn->color;
    const auto* filled = as<declarative::FilledPath>();
    const auto* plain = filled ? std::get_if<platform::Color>(&filled->paint) : nullptr;
    return plain ? *plain : platform::Color{0, 0, 0, 0};
  }
  platform::Point center() const { return {frame.x + frame.width / 2, frame.y + frame.height / 2}; }
};

inline void collect(const declarative::Drawings& drawings, const Shown& around, std::vector<Shown>& found) {
  for (const auto& drawing : drawings) {
    Shown shown = around;
    shown.drawing = drawing;
    shown.frame = drawing.frame;
    if (const auto* layer = std::get_if<declarative::Layer>(&drawing.what)) {
      shown.opacity *= layer->effect.opacity;
      shown.saturation *= layer->effect.saturation;
      shown.blurRadius = std::max(shown.blurRadius, layer->effect.blurRadius);
      shown.shadows.insert(shown.shadows.end(), layer->effect.shadows.begin(), layer->effect.shadows.end());
    } else if (!std::holds_alternative<declarative::Clipping>(drawing.what)) {
      shown.order = found.size();
      found.push_back(shown);
    }
    collect(drawing.children, shown, found);
  }
}

inline bool isNear(const platform::Color& left, const platform::Color& right) {
  const auto close = [](double a, double b) { return std::abs(a - b) < 0.001; };
  return close(left.red, right.red) && close(left.green, right.green) && close(left.blue, right.blue) &&
         close(left.alpha, right.alpha);
}

inline testing::AssertionResult hasColor(const Shown& shown, const platform::Color& expected) {
  const auto color = shown.color();
  if (isNear(color, expected)) return testing::AssertionSuccess();
  return testing::AssertionFailure() << color.red << " " << color.green << " " << color.blue << " " << color.alpha
                                     << " instead of " << expected.red << " " << expected.green << " " << expected.blue
                                     << " " << expected.alpha;
}
inline testing::AssertionResult hasSize(const Shown& shown, double width, double height) {
  if (std::abs(shown.frame.width - width) < 0.001 && std::abs(shown.frame.height - height) < 0.001)
    return testing::AssertionSuccess();
  return testing::AssertionFailure() << shown.frame.width << " by " << shown.frame.height;
}

// A page in front of a user: what shows where, and a pointer.
class Page {
 public:
  Page(sim::SimPlatform& desktop, declarative::Element page, declarative::Environment environment = {},
       std::optional<double> width = std::nullopt)
      : desktop_(desktop),
        host_({desktop.mainQueue(), desktop.frameClock(), texts_,
               [this](const declarative::MenuRequest& request) { openedMenu_ = request.entries; }},
              std::move(page), std::move(environment), {}) {
    host_.setProposal({width, std::nullopt});
    desktop_.drain();
  }

  declarative::Host& host() { return host_; }
  platform::Size size() const { return host_.size(); }

  // Everything from the back to the front.
  std::vector<Shown> all() const {
    std::vector<Shown> found;
    collect(host_.drawings(), {}, found);
    return found;
  }
  template <class Condition>
  std::vector<Shown> all(Condition condition) const {
    std::vector<Shown> found = all();
    std::erase_if(found, [&](const Shown& shown) { return !condition(shown); });
    return found;
  }
  template <class What>
  std::vector<Shown> of() const {
    return all([](const Shown& shown) { return shown.as<What>(); });
  }
  std::vector<Shown> texts() const { return of<declarative::DrawnText>(); }
  std::vector<Shown> fills() const { return of<declarative::FilledPath>(); }
  std::vector<Shown> strokes() const { return of<declarative::StrokedPath>(); }
  std::vector<Shown> images() const { return of<declarative::DrawnImage>(); }
  std::vector<Shown> fillsOf(double width, double height) const {
    return all(
        [&](const Shown& shown) { return shown.as<declarative::FilledPath>() && hasSize(shown, width, height); });
  }
  std::vector<Shown> fillsOf(const platform::Color& color) const {
    return all([&](const Shown& shown) { return shown.as<declarative::FilledPath>() && hasColor(shown, color); });
  }

  std::vector<std::string> words() const {
    std::vector<std::string> words;
    for (const auto& shown : texts()) words.push_back(shown.text());
    return words;
  }
  bool shows(const std::string& text) const { return std::ranges::count(words(), text) > 0; }
  // Without such a text, the test fails.
  Shown text(const std::string& text) const {
    const auto found = all([&](const Shown& shown) { return shown.text() == text; });
    if (found.empty()) ADD_FAILURE() << "no " << text << " on the page: " << testing::PrintToString(words());
    return found.empty() ? Shown{} : found.front();
  }

  void hover(platform::Point point) {
    host_.pointerMoved(point);
    desktop_.drain();
  }
  void leave() {
    host_.pointerExited();
    desktop_.drain();
  }
  void click(platform::Point point) {
    host_.pointerDown(point);
    host_.pointerUp(point);
    desktop_.drain();
  }
  void click(const char* label) { click(text(label).center()); }

  // What the menu holds that was opened last.
  const std::vector<declarative::MenuEntry>& openedMenu() const { return openedMenu_; }

  void advance(double seconds) { desktop_.advance(seconds); }
  // Something may still be moving.
  bool isMoving() { return desktop_.frameClock().isRunning(); }

 private:
  sim::SimPlatform& desktop_;
  desktops::PangoTextEngine texts_;
  std::vector<declarative::MenuEntry> openedMenu_;
  declarative::Host host_;
};

// A view around one value, for controls that are bound to one.
template <class Type>
struct Around {
  Type initial;
  std::function<declarative::Element(declarative::Binding<Type>)> content;

  declarative::Element body(declarative::Context& context) const {
    return content(context.state("value", initial).binding());
  }
};

// Pages on a simulated desktop; the program itself runs after launch().
class PageTest : public SimulatedProgram {
 protected:
  static inline const declarative::Environment rightToLeft{.appearance = declarative::Appearance::light,
                                                           .direction = platform::LayoutDirection::rightToLeft,
                                                           .locale = "ar",
                                                           .foreground = declarative::primary};

  void SetUp() override { prepareDesktop(); }

  Page show(declarative::Element page, const declarative::Environment& environment = {},
            std::optional<double> width = std::nullopt) {
    return {*desktop, std::move(page), environment, width};
  }
};

}  // namespace hushpane::tests
