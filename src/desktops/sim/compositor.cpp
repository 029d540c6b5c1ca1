#include "desktops/sim/compositor.h"

#include <algorithm>
#include <cmath>
#include <exception>

#include "desktops/shared/cairo_canvas.h"
#include "desktops/shared/look.h"
#include "desktops/sim/app_window_art.h"
#include "desktops/sim/desktop_art.h"
#include "desktops/sim/view_painter.h"

namespace hushpane::sim {

namespace {

desktops::SurfacePtr copyOf(const desktops::SurfacePtr& surface) {
  auto copy = Cairo::ImageSurface::create(Cairo::Surface::Format::ARGB32, surface->get_width(), surface->get_height());
  const auto context = Cairo::Context::create(copy);
  context->set_source(surface, 0, 0);
  context->paint();
  return copy;
}

// Draws with `draw`, faded as a whole.
template <class Draw>
void paintFaded(const desktops::ContextPtr& context, double alpha, Draw draw) {
  if (alpha >= 1) return draw();
  context->push_group();
  draw();
  context->pop_group_to_source();
  context->paint_with_alpha(alpha);
}

bool hasMaterial(const platform::View& view) {
  return view.material() != platform::EffectMaterial::none ||
         std::ranges::any_of(view.subviews(), [](const auto& subview) { return hasMaterial(*subview); });
}

void paintOwnWindow(const desktops::ContextPtr& context, const desktops::SurfacePtr& picture, const SimWindow& window,
                    const platform::Screen& screen) {
  if (window.presentationAlpha() <= 0) return;
  const bool showsBackdrop = hasMaterial(window.contentView());
  Backdrop backdrop(showsBackdrop ? copyOf(picture) : picture, {screen.frame.x, screen.frame.y}, screen.scale);
  context->save();
  desktops::addRectangle(context, window.frame());
  context->clip();
  paintFaded(context, window.presentationAlpha(), [&] {
    if (window.configuration().isOpaque) {
      desktops::setColor(context, platform::black);
      context->paint();
    }
    paintView(context, window.contentView(), window.frame(), backdrop);
  });
  context->restore();
}

// A canvas in points of `frame` within the picture of a screen, clipped as `context` is.
template <class Draw>
void paintOnCanvas(const desktops::SurfacePtr& picture, const platform::Screen& screen, const platform::Rect& frame,
                   double alpha, const std::optional<platform::Rect>& damage, Draw draw) {
  platform::Rect visible = damage ? *damage : screen.frame;
  visible = visible.intersection(frame);
  if (visible.area() <= 0 || alpha <= 0) return;
  const auto layer = Cairo::ImageSurface::create(Cairo::Surface::Format::ARGB32,
                                                 static_cast<int>(std::ceil(frame.width * screen.scale)),
                                                 static_cast<int>(std::ceil(frame.height * screen.scale)));
  const platform::Rect inside{visible.x - frame.x, visible.y - frame.y, visible.width, visible.height};
  {
    desktops::CairoCanvas canvas(layer, screen.scale, inside);
    draw(canvas, inside);
  }
  const auto context = Cairo::Context::create(picture);
  context->set_source(layer, std::round((frame.x - screen.frame.x) * screen.scale),
                      std::round((frame.y - screen.frame.y) * screen.scale));
  context->paint_with_alpha(alpha);
}

constexpr platform::Color barColor{0.118, 0.133, 0.161, 1};

void paintIcon(const desktops::SurfacePtr& picture, const SimStatusItem& item, const platform::Screen& screen,
               const std::optional<platform::Rect>& damage) {
  const auto frame = item.frame();
  const auto& image = item.image();
  if (!frame) return;
  const platform::Rect icon{std::round(frame->x + (frame->width - image.size.width) / 2),
                            std::round(frame->y + (frame->height - image.size.height) / 2), image.size.width,
                            image.size.height};
  paintOnCanvas(picture, screen, icon, 1, damage, [&](platform::Canvas& canvas, const platform::Rect&) {
    const auto side = [&](double points) { return static_cast<int>(std::ceil(points * screen.scale)); };
    platform::Image drawn{side(icon.width), side(icon.height), {}};
    drawn.pixels.resize(static_cast<std::size_t>(drawn.width) * static_cast<std::size_t>(drawn.height));
    {
      desktops::CairoCanvas iconCanvas(drawn, screen.scale);
      image.draw(iconCanvas, screen.scale);
    }
    canvas.drawTemplate(drawn, {0, 0, icon.width, icon.height}, {1, 1, 1, 1});
  });
}

void paintPanel(const desktops::SurfacePtr& picture, const SimPanel& panel, const platform::Screen& screen,
                const std::optional<platform::Rect>& damage) {
  paintOnCanvas(
      picture, screen, panel.frame(), panel.presentationAlpha(), damage,
      [&](platform::Canvas& canvas, const platform::Rect& visible) { panel.contents().paint(canvas, visible); });
}

void paintScreen(const desktops::ContextPtr& context, const desktops::SurfacePtr& picture, const Scene& scene,
                 const platform::Screen& screen, const std::optional<platform::Rect>& damage = std::nullopt) {
  context->save();
  context->scale(screen.scale, screen.scale);
  context->translate(-screen.frame.x, -screen.frame.y);
  paintDesktop(context, screen.frame, scene.background.get());
  for (auto shown = scene.stack.rbegin(); shown != scene.stack.rend(); ++shown) {
    if (shown->own)
      paintOwnWindow(context, picture, *shown->own, screen);
    else
      paintFaded(context, shown->application->alpha, [&] { paintAppWindow(context, *shown->application); });
  }
  if (const auto bar = scene.statusItem ? scene.statusItem->barFrame() : std::nullopt)
    paintAppWindow(context, {.frame = *bar, .color = barColor, .contents = AppContents::bar, .disguise = {}});
  context->restore();
  if (scene.statusItem) paintIcon(picture, *scene.statusItem, screen, damage);
  for (auto panel = scene.panels.rbegin(); panel != scene.panels.rend(); ++panel)
    paintPanel(picture, **panel, screen, damage);
}

struct PixelSize {
  int width = 0;
  int height = 0;
};

PixelSize pixelSize(const platform::Rect& frame, double scale) {
  const auto pixels = [scale](double points) { return static_cast<int>(std::lround(points * scale)); };
  return {pixels(frame.width), pixels(frame.height)};
}

// Null for a frame without area.
desktops::SurfacePtr surfaceFor(const platform::Rect& frame, double scale) {
  const auto size = pixelSize(frame, scale);
  if (size.width <= 0 || size.height <= 0) return {};
  return Cairo::ImageSurface::create(Cairo::Surface::Format::ARGB32, size.width, size.height);
}

desktops::SurfacePtr paintedScreen(const Scene& scene, const platform::Screen& screen) {
  const auto picture = surfaceFor(screen.frame, screen.scale);
  if (picture) paintScreen(Cairo::Context::create(picture), picture, scene, screen);
  return picture;
}

// How far the light of a spot spreads, and more.
constexpr double blurReach = 2 * desktops::darkHud::blurRadius;

std::uint32_t paintedPixel(const Scene& scene, const platform::Screen& screen, int column, int row) {
  const auto picture = surfaceFor(screen.frame, screen.scale);
  const auto context = Cairo::Context::create(picture);
  const double reach = blurReach * screen.scale;
  desktops::addRectangle(context, {column - reach, row - reach, 2 * reach, 2 * reach});
  context->clip();
  const platform::Rect damage{screen.frame.x + column / screen.scale, screen.frame.y + row / screen.scale,
                              1 / screen.scale, 1 / screen.scale};
  paintScreen(context, picture, scene, screen, damage);
  picture->flush();
  const auto* line = picture->get_data() + static_cast<std::ptrdiff_t>(row) * picture->get_stride();
  return reinterpret_cast<const std::uint32_t*>(line)[column];
}

platform::Rect boundsOf(const std::vector<platform::Screen>& screens) {
  platform::Rect bounds = screens.front().frame;
  for (const auto& screen : screens) {
    const auto& frame = screen.frame;
    const double right = std::max(bounds.right(), frame.right());
    const double bottom = std::max(bounds.bottom(), frame.bottom());
    bounds.x = std::min(bounds.x, frame.x);
    bounds.y = std::min(bounds.y, frame.y);
    bounds.width = right - bounds.x;
    bounds.height = bottom - bounds.y;
  }
  return bounds;
}

void paintInPlace(const desktops::ContextPtr& context, const desktops::SurfacePtr& picture,
                  const platform::Screen& screen) {
  context->save();
  context->translate(screen.frame.x, screen.frame.y);
  context->scale(1 / screen.scale, 1 / screen.scale);
  context->set_source(picture, 0, 0);
  context->paint();
  context->restore();
}

}  // namespace

platform::Image renderScreen(const Scene& scene, const platform::Screen& screen) try {
  const auto picture = paintedScreen(scene, screen);
  return picture ? desktops::imageOf(picture) : platform::Image{};
} catch (const std::exception&) {
  return {};
}

std::optional<std::uint32_t> renderPixel(const Scene& scene, const platform::Screen& screen,
                                         platform::Point point) try {
  const auto size = pixelSize(screen.frame, screen.scale);
  const int column = static_cast<int>(std::floor((point.x - screen.frame.x) * screen.scale));
  const int row = static_cast<int>(std::floor((point.y - screen.frame.y) * screen.scale));
  if (column < 0 || row < 0 || column >= size.width || row >= size.height) return std::nullopt;
  return paintedPixel(scene, screen, column, row);
} catch (const std::exception&) {
  return std::nullopt;
}

platform::Image renderScreens(const Scene& scene, const std::vector<platform::Screen>& screens) try {
  if (screens.empty()) return {};
  const auto bounds = boundsOf(screens);
  const auto all = surfaceFor(bounds, screens.front().scale);
  if (!all) return {};
  const auto context = Cairo::Context::create(all);
  context->scale(screens.front().scale, screens.front().scale);
  context->translate(-bounds.x, -bounds.y);
  for (const auto& screen : screens)
    if (const auto picture = paintedScreen(scene, screen)) paintInPlace(context, picture, screen);
  return desktops::imageOf(all);
} catch (const std::exception&) {
  return {};
}

}  // namespace hushpane::sim
