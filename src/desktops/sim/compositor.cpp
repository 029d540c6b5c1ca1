#include "desktops/sim/compositor.h"

#include <cmath>
#include <exception>

#include "desktops/sim/app_window_art.h"
#include "desktops/sim/desktop_art.h"
#include "desktops/sim/view_painter.h"

namespace hushpane::sim {

namespace {

SurfacePtr copyOf(const SurfacePtr& surface) {
  auto copy = Cairo::ImageSurface::create(Cairo::Surface::Format::ARGB32, surface->get_width(), surface->get_height());
  const auto context = Cairo::Context::create(copy);
  context->set_source(surface, 0, 0);
  context->paint();
  return copy;
}

// Draws with `draw`, faded as a whole.
template <class Draw>
void paintFaded(const ContextPtr& context, double alpha, Draw draw) {
  if (alpha >= 1) return draw();
  context->push_group();
  draw();
  context->pop_group_to_source();
  context->paint_with_alpha(alpha);
}

void paintOwnWindow(const ContextPtr& context, const SurfacePtr& picture, const SimWindow& window,
                    const platform::Screen& screen) {
  if (window.presentationAlpha() <= 0) return;
  Backdrop backdrop(copyOf(picture), {screen.frame.x, screen.frame.y}, screen.scale);
  context->save();
  addRectangle(context, window.frame());
  context->clip();
  paintFaded(context, window.presentationAlpha(), [&] {
    if (window.configuration().isOpaque) {
      setColor(context, platform::black);
      context->paint();
    }
    paintView(context, window.contentView(), window.frame(), backdrop);
  });
  context->restore();
}

void paintScreen(const ContextPtr& context, const SurfacePtr& picture, const std::vector<SimWindowServer::Shown>& stack,
                 const platform::Screen& screen) {
  context->scale(screen.scale, screen.scale);
  context->translate(-screen.frame.x, -screen.frame.y);
  paintDesktop(context, screen.frame);
  for (auto shown = stack.rbegin(); shown != stack.rend(); ++shown) {
    if (shown->own)
      paintOwnWindow(context, picture, *shown->own, screen);
    else
      paintFaded(context, shown->application->alpha, [&] { paintAppWindow(context, *shown->application); });
  }
}

}  // namespace

platform::Image renderScreen(const std::vector<SimWindowServer::Shown>& stack, const platform::Screen& screen) try {
  const auto pixels = [&screen](double points) { return static_cast<int>(std::lround(points * screen.scale)); };
  const int width = pixels(screen.frame.width);
  const int height = pixels(screen.frame.height);
  if (width <= 0 || height <= 0) return {};
  const auto picture = Cairo::ImageSurface::create(Cairo::Surface::Format::ARGB32, width, height);
  paintScreen(Cairo::Context::create(picture), picture, stack, screen);
  return imageOf(picture);
} catch (const std::exception&) {
  return {};
}

}  // namespace hushpane::sim
