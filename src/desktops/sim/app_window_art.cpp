#include "desktops/sim/app_window_art.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

namespace hushpane::sim {

namespace {

using platform::Color;
using platform::interpolate;
using platform::Rect;

// Texts are drawn as bars, one for each word: they read as text at a glance and look the same on every machine.
constexpr double letterWidth = 6.5;  // points
constexpr double cornerRadius = 10;  // points
constexpr Color white{1, 1, 1, 1};

double lightness(const Color& color) {
  return 0.299 * color.red + 0.587 * color.green + 0.114 * color.blue;
}
bool isDark(const Color& color) {
  return lightness(color) < 0.5;
}
// What reads well on a ground of that colour; strength 1 is black or white.
Color inkOn(const Color& ground, double strength) {
  return interpolate(ground, isDark(ground) ? white : platform::black, strength);
}

// The same sequence of lengths at every drawing.
class Lengths {
 public:
  explicit Lengths(std::uint32_t seed) : state_(seed * 2654435761u + 1) {}
  // In [from, to).
  double next(double from, double to) {
    state_ = state_ * 1664525u + 1013904223u;
    return from + (to - from) * (state_ >> 8) / double(1u << 24);
  }

 private:
  std::uint32_t state_;
};

void paintBar(const desktops::ContextPtr& context, const Rect& rect, const Color& color) {
  desktops::addRoundedRectangle(context, rect, rect.height / 2);
  desktops::setColor(context, color);
  context->fill();
}

// Around the frame only, so that a window that lets something through shows no shadow of its own.
void paintShadow(const desktops::ContextPtr& context, const Rect& frame) {
  constexpr int rings = 14;
  context->save();
  desktops::addRectangle(context, {frame.x - 40, frame.y - 40, frame.width + 80, frame.height + 80});
  desktops::addRoundedRectangle(context, frame, cornerRadius);
  context->set_fill_rule(Cairo::Context::FillRule::EVEN_ODD);
  context->clip();
  context->set_fill_rule(Cairo::Context::FillRule::WINDING);
  for (int ring = rings; ring > 0; --ring) {
    const double spread = 1.6 * ring;
    desktops::addRoundedRectangle(
        context, {frame.x - spread, frame.y - spread + 7, frame.width + 2 * spread, frame.height + 2 * spread},
        cornerRadius + spread);
    desktops::setColor(context, {0, 0, 0, 0.016});
    context->fill();
  }
  context->restore();
}

void paintTitle(const desktops::ContextPtr& context, const AppWindow& window, const Rect& bar) {
  std::vector<double> words;
  double width = 0;
  std::istringstream title(window.title);
  for (std::string word; title >> word;) {
    words.push_back(letterWidth * static_cast<double>(word.size()));
    width += words.back() + letterWidth;
  }
  double x = bar.x + (bar.width - width + letterWidth) / 2;
  for (const double word : words) {
    paintBar(context, {x, bar.y + bar.height / 2 - 3.5, word, 7}, inkOn(window.color, 0.5));
    x += word + letterWidth;
  }
}

void paintCloseButton(const desktops::ContextPtr& context, const AppWindow& window, const Rect& bar) {
  const double y = bar.y + bar.height / 2;
  desktops::setColor(context, inkOn(window.color, 0.4));
  context->set_line_width(1.5);
  for (const double direction : {-1.0, 1.0}) {
    context->move_to(bar.right() - 20, y - 4 * direction);
    context->line_to(bar.right() - 12, y + 4 * direction);
  }
  context->stroke();
}

void paintText(const desktops::ContextPtr& context, const AppWindow& window, const Rect& area) {
  Lengths lengths(7);
  const double width = std::fmin(area.width - 96, 560);
  const double x = area.x + (area.width - width) / 2;
  paintBar(context, {x, area.y + 34, width * 0.55, 16}, inkOn(window.color, 0.8));
  int line = 0;
  for (double y = area.y + 74; y < area.bottom() - 24; y += 19, ++line) {
    if (line % 7 == 6) continue;
    const double part = line % 7 == 5 ? lengths.next(0.3, 0.7) : lengths.next(0.93, 1);
    paintBar(context, {x, y, width * part, 7}, inkOn(window.color, 0.32));
  }
}

void paintCode(const desktops::ContextPtr& context, const AppWindow& window, const Rect& area) {
  constexpr std::array<Color, 5> inks{
      Color{0.55, 0.73, 0.86}, {0.80, 0.84, 0.88}, {0.85, 0.66, 0.53}, {0.62, 0.80, 0.62}, {0.75, 0.63, 0.85}};
  constexpr double sidebar = 150;
  desktops::setColor(context, inkOn(window.color, 0.05));
  desktops::addRectangle(context, {area.x, area.y, sidebar, area.height});
  context->fill();
  Lengths lengths(3);
  for (double y = area.y + 18; y < area.bottom() - 16; y += 22)
    paintBar(context, {area.x + 18 + (lengths.next(0, 3) < 1 ? 0 : 14), y, lengths.next(40, 96), 6},
             inkOn(window.color, 0.28));
  double indent = 0;
  for (double y = area.y + 20; y < area.bottom() - 16; y += 20) {
    indent = std::fmin(3, std::fmax(0, indent + std::floor(lengths.next(-1, 2))));
    if (lengths.next(0, 8) < 1) continue;
    double x = area.x + sidebar + 28 + 24 * indent;
    const double end = std::fmin(x + lengths.next(90, 380), area.right() - 30);
    while (x < end - 14) {
      const double length = std::fmin(lengths.next(18, 90), end - x);
      paintBar(context, {x, y, length, 7}, inks[static_cast<std::size_t>(lengths.next(0, 5))]);
      x += length + 8;
    }
  }
}

void paintTerminal(const desktops::ContextPtr& context, const AppWindow& window, const Rect& area) {
  Lengths lengths(11);
  int line = 0;
  double y = area.y + 16;
  for (; y < area.bottom() - 60; y += 17, ++line) {
    double x = area.x + 18;
    if (line % 6 == 0) {
      paintBar(context, {x, y, 62, 7}, {0.45, 0.80, 0.62, 1});
      x += 72;
    }
    const double longest = std::fmax(20, (area.right() - x - 30) * 0.8);
    paintBar(context, {x, y, lengths.next(longest * 0.25, longest), 7},
             inkOn(window.color, line % 6 == 0 ? 0.8 : 0.45));
  }
  paintBar(context, {area.x + 18, y, 62, 7}, {0.45, 0.80, 0.62, 1});
  desktops::setColor(context, inkOn(window.color, 0.85));
  desktops::addRectangle(context, {area.x + 92, y - 4, 8, 15});
  context->fill();
}

void paintPage(const desktops::ContextPtr& context, const AppWindow& window, const Rect& area) {
  paintBar(context, {area.x + 16, area.y + 8, area.width - 32, 24}, inkOn(window.color, 0.07));
  const Rect hero{area.x + 32, area.y + 52, area.width - 64, std::fmin(190, area.height * 0.4)};
  const auto gradient = Cairo::LinearGradient::create(hero.x, hero.y, hero.right(), hero.bottom());
  gradient->add_color_stop_rgb(0, 0.35, 0.60, 0.62);
  gradient->add_color_stop_rgb(1, 0.93, 0.66, 0.47);
  desktops::addRoundedRectangle(context, hero, 10);
  context->set_source(gradient);
  context->fill();
  const double column = (hero.width - 40) / 3;
  Lengths lengths(5);
  for (int index = 0; index < 3; ++index) {
    const double x = hero.x + index * (column + 20);
    paintBar(context, {x, hero.bottom() + 24, column * 0.6, 11}, inkOn(window.color, 0.7));
    for (double y = hero.bottom() + 50; y < area.bottom() - 20; y += 17)
      paintBar(context, {x, y, column * lengths.next(0.75, 1), 6}, inkOn(window.color, 0.28));
  }
}

void paintPanel(const desktops::ContextPtr& context, const AppWindow& window) {
  const Rect& bar = window.frame;
  desktops::setColor(context, window.color);
  desktops::addRectangle(context, bar);
  context->fill();
  const double y = bar.y + bar.height / 2 - 4;
  double x = bar.x + 16;
  for (const double width : {16.0, 56.0, 34.0, 44.0}) {
    paintBar(context, {x, y, width, 8}, inkOn(window.color, 0.75));
    x += width + 18;
  }
  x = bar.right() - 16;
  for (const double width : {58.0, 14.0, 14.0, 14.0}) {
    x -= width;
    paintBar(context, {x, y, width, 8}, inkOn(window.color, 0.75));
    x -= 14;
  }
}

void paintContents(const desktops::ContextPtr& context, const AppWindow& window, const Rect& area) {
  switch (window.contents) {
    case AppContents::text: return paintText(context, window, area);
    case AppContents::code: return paintCode(context, window, area);
    case AppContents::terminal: return paintTerminal(context, window, area);
    case AppContents::page: return paintPage(context, window, area);
    case AppContents::plain:
    case AppContents::bar: return;
  }
}

}  // namespace

void paintAppWindow(const desktops::ContextPtr& context, const AppWindow& window) {
  if (window.contents == AppContents::bar) return paintPanel(context, window);
  const Rect& frame = window.frame;
  paintShadow(context, frame);
  context->save();
  desktops::addRoundedRectangle(context, frame, cornerRadius);
  context->clip();
  desktops::setColor(context, window.color);
  context->paint();
  const Rect bar{frame.x, frame.y, frame.width, titleBarHeight};
  desktops::setColor(context, inkOn(window.color, 0.09));
  desktops::addRectangle(context, bar);
  context->fill();
  paintTitle(context, window, bar);
  paintCloseButton(context, window, bar);
  const Rect area{frame.x, bar.bottom(), frame.width, frame.height - bar.height};
  desktops::addRectangle(context, area);
  context->clip();
  paintContents(context, window, area);
  context->restore();
}

}  // namespace hushpane::sim
