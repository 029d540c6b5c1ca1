#include "desktops/sim/desktop_art.h"

#include <algorithm>
#include <array>
#include <numbers>

namespace hushpane::sim {

namespace {

using platform::Color;
using platform::Rect;

constexpr Color skyTop{0.36, 0.53, 0.66};
constexpr Color skyMiddle{0.62, 0.74, 0.76};
constexpr Color skyBottom{0.95, 0.83, 0.71};

struct Glow {
  double x, y, radius;  // parts of the frame's width and height; the radius of its width
  Color color;
};
constexpr std::array glows{
    Glow{0.22, 0.85, 0.55, {0.98, 0.72, 0.55, 0.55}},
    Glow{0.85, 0.15, 0.50, {0.50, 0.78, 0.74, 0.50}},
    Glow{0.62, 0.75, 0.35, {0.93, 0.62, 0.62, 0.35}},
};

void addStop(const Cairo::RefPtr<Cairo::Gradient>& gradient, double offset, const Color& color) {
  gradient->add_color_stop_rgba(offset, color.red, color.green, color.blue, color.alpha);
}

void paintSky(const desktops::ContextPtr& context, const Rect& frame) {
  const auto sky = Cairo::LinearGradient::create(frame.x, frame.y, frame.x, frame.bottom());
  addStop(sky, 0, skyTop);
  addStop(sky, 0.55, skyMiddle);
  addStop(sky, 1, skyBottom);
  context->set_source(sky);
  context->paint();
}

void paintGlow(const desktops::ContextPtr& context, const Rect& frame, const Glow& glow) {
  const double x = frame.x + glow.x * frame.width;
  const double y = frame.y + glow.y * frame.height;
  const auto gradient = Cairo::RadialGradient::create(x, y, 0, x, y, glow.radius * frame.width);
  Color edge = glow.color;
  edge.alpha = 0;
  addStop(gradient, 0, glow.color);
  addStop(gradient, 1, edge);
  context->set_source(gradient);
  context->paint();
}

// In its middle, and so large that it leaves nothing of the frame.
void paintPicture(const desktops::ContextPtr& context, const Rect& frame, const desktops::SurfacePtr& picture) {
  const double width = picture->get_width(), height = picture->get_height();
  const double factor = std::max(frame.width / width, frame.height / height);
  context->save();
  desktops::addRectangle(context, frame);
  context->clip();
  context->translate(frame.x + (frame.width - width * factor) / 2, frame.y + (frame.height - height * factor) / 2);
  context->scale(factor, factor);
  const auto pattern = Cairo::SurfacePattern::create(picture);
  pattern->set_filter(Cairo::SurfacePattern::Filter::GOOD);
  pattern->set_extend(Cairo::Pattern::Extend::PAD);
  context->set_source(pattern);
  context->paint();
  context->restore();
}

constexpr double iconSide = 52;       // points
constexpr double iconDistance = 104;  // from one icon's top to the next
constexpr double iconMargin = 36;
constexpr std::array<Color, 3> folderColors{Color{0.96, 0.78, 0.38}, {0.52, 0.74, 0.90}, {0.90, 0.55, 0.48}};

void paintFolder(const desktops::ContextPtr& context, const Rect& frame, const Color& color) {
  const Color back{color.red * 0.82, color.green * 0.82, color.blue * 0.82, 1};
  desktops::addRoundedRectangle(context, {frame.x, frame.y + 5, frame.width * 0.5, frame.height * 0.4}, 5);
  desktops::addRoundedRectangle(context, {frame.x, frame.y + 11, frame.width, frame.height - 18}, 5);
  desktops::setColor(context, back);
  context->fill();
  desktops::addRoundedRectangle(context, {frame.x, frame.y + 18, frame.width, frame.height - 24}, 5);
  desktops::setColor(context, color);
  context->fill();
}

void paintDocument(const desktops::ContextPtr& context, const Rect& frame) {
  const Rect paper{frame.x + 8, frame.y, frame.width - 16, frame.height - 4};
  desktops::addRoundedRectangle(context, paper, 4);
  desktops::setColor(context, {0.98, 0.98, 0.97, 1});
  context->fill();
  desktops::setColor(context, {0.6, 0.64, 0.68, 1});
  for (double y = paper.y + 12; y < paper.bottom() - 8; y += 7)
    desktops::addRectangle(context, {paper.x + 7, y, 22, 2.5});
  context->fill();
}

void paintLabel(const desktops::ContextPtr& context, const Rect& icon) {
  desktops::addRoundedRectangle(context, {icon.x + 4, icon.bottom() + 6, icon.width - 8, 7}, 3.5);
  desktops::setColor(context, {1, 1, 1, 0.85});
  context->fill();
}

void paintIcons(const desktops::ContextPtr& context, const Rect& frame) {
  const double x = frame.right() - iconMargin - iconSide;
  int index = 0;
  for (double y = frame.y + 2 * iconMargin; y + iconDistance < frame.bottom() && index < 6; y += iconDistance) {
    const Rect icon{x, y, iconSide, iconSide};
    if (index % 2 == 0)
      paintFolder(context, icon, folderColors[static_cast<std::size_t>(index / 2)]);
    else
      paintDocument(context, icon);
    paintLabel(context, icon);
    ++index;
  }
}

}  // namespace

void paintDesktop(const desktops::ContextPtr& context, const Rect& frame, const platform::Image* picture) {
  const auto surface = picture ? desktops::surfaceOf(*picture) : desktops::SurfacePtr();
  if (surface) {
    paintPicture(context, frame, surface);
  } else {
    paintSky(context, frame);
    for (const auto& glow : glows) paintGlow(context, frame, glow);
  }
  paintIcons(context, frame);
}

}  // namespace hushpane::sim
