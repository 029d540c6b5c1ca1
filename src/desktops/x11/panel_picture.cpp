#include "desktops/x11/panel_picture.h"

#include <cstddef>
#include <cstdint>
#include <exception>

#include "desktops/shared/cairo_canvas.h"
#include "desktops/shared/cairo_layer.h"
#include "desktops/x11/pixel_upload.h"

namespace hushpane::x11 {

namespace {

constexpr std::uint32_t half = 0x80000000;

const std::uint32_t* rowOf(const desktops::SurfacePtr& surface, int y) {
  return reinterpret_cast<const std::uint32_t*>(surface->get_data() +
                                                static_cast<std::ptrdiff_t>(y) * surface->get_stride());
}

desktops::SurfacePtr makeSurface(int width, int height) try {
  return Cairo::ImageSurface::create(Cairo::Surface::Format::ARGB32, width, height);
} catch (const std::exception&) {
  return {};
}

desktops::PixelArea touched(const desktops::SurfacePtr& surface, const platform::Rect& damage, double scale) {
  return desktops::pixelsTouched(damage, scale).intersection({0, 0, surface->get_width(), surface->get_height()});
}

}  // namespace

void PanelPicture::setSize(int width, int height) {
  if (surface_ && surface_->get_width() == width && surface_->get_height() == height) return;
  surface_ = makeSurface(width, height);
}

void PanelPicture::release() {
  surface_.reset();
}

void PanelPicture::draw(double scale, const platform::Rect& damage, const std::optional<platform::Color>& ground,
                        const std::function<void(platform::Canvas&)>& paint) {
  if (!surface_) return;
  desktops::CairoCanvas canvas(surface_, scale, damage);
  canvas.clear();
  if (ground) canvas.fill(platform::rectanglePath(damage), *ground);
  paint(canvas);
}

void PanelPicture::send(xcb_connection_t* server, xcb_drawable_t drawable, double scale,
                        const platform::Rect& damage) const {
  if (!surface_) return;
  const auto area = touched(surface_, damage, scale);
  if (area.isEmpty()) return;
  surface_->flush();
  std::vector<std::uint32_t> pixels;
  pixels.reserve(static_cast<std::size_t>(area.width) * static_cast<std::size_t>(area.height));
  for (int y = area.y; y < area.y + area.height; ++y) {
    const auto* row = rowOf(surface_, y) + area.x;
    pixels.insert(pixels.end(), row, row + area.width);
  }
  uploadPixels(server, drawable, {area.x, area.y, area.width, area.height}, pixels);
}

// One rectangle for each run of pixels in a row; a row like the one above makes its rectangles higher.
std::vector<xcb_rectangle_t> pixelsOf(const platform::Path& path, double scale, int width, int height) {
  std::vector<xcb_rectangle_t> rectangles;
  const auto surface = makeSurface(width, height);
  if (!surface) return rectangles;
  {
    desktops::CairoCanvas canvas(surface, scale);
    canvas.fill(path, platform::black);
  }
  surface->flush();
  std::size_t above = 0;  // where the rectangles of the row above begin
  for (int y = 0; y < height; ++y) {
    const auto first = rectangles.size();
    const auto* row = rowOf(surface, y);
    for (int x = 0; x < width; ++x) {
      if (row[x] < half) continue;
      const int start = x;
      while (x < width && row[x] >= half) ++x;
      rectangles.push_back(
          {static_cast<std::int16_t>(start), static_cast<std::int16_t>(y), static_cast<std::uint16_t>(x - start), 1});
    }
    const auto count = rectangles.size() - first;
    bool isSame = count > 0 && first - above == count;
    for (std::size_t index = 0; isSame && index < count; ++index)
      isSame = rectangles[above + index].x == rectangles[first + index].x &&
               rectangles[above + index].width == rectangles[first + index].width;
    if (!isSame) {
      above = first;
      continue;
    }
    for (std::size_t index = 0; index < count; ++index) ++rectangles[above + index].height;
    rectangles.resize(first);
  }
  return rectangles;
}

}  // namespace hushpane::x11
