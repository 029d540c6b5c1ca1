#include "desktops/x11/render.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <vector>

namespace hushpane::x11 {

namespace {

constexpr int argbDepth = 32;

xcb_render_color_t premultiplied(const platform::Color& color) {
  const auto channel = [](double value) {
    return static_cast<std::uint16_t>(std::lround(std::clamp(value, 0.0, 1.0) * 0xffff));
  };
  const double alpha = std::clamp(color.alpha, 0.0, 1.0);
  return {channel(color.red * alpha), channel(color.green * alpha), channel(color.blue * alpha), channel(alpha)};
}

xcb_render_fixed_t fixed(double value) {
  return static_cast<xcb_render_fixed_t>(std::lround(value * 65536));
}

bool isArgb(const xcb_render_pictforminfo_t& format) {
  return format.type == XCB_RENDER_PICT_TYPE_DIRECT && format.depth == argbDepth && format.direct.alpha_mask == 0xff &&
         format.direct.alpha_shift == 24 && format.direct.red_shift == 16 && format.direct.green_shift == 8 &&
         format.direct.blue_shift == 0;
}

std::vector<xcb_rectangle_t> toXcb(std::span<const PixelRect> areas) {
  std::vector<xcb_rectangle_t> rectangles;
  rectangles.reserve(areas.size());
  for (const auto& area : areas) rectangles.push_back(area.toXcb());
  return rectangles;
}

}  // namespace

Render::Render(Connection& connection) : connection_(connection) {
  readFormats();
}

void Render::readFormats() {
  const Reply<xcb_render_query_pict_formats_reply_t> reply(xcb_render_query_pict_formats_reply(
      connection_.get(), xcb_render_query_pict_formats(connection_.get()), nullptr));
  if (!reply) return;
  const auto* formats = xcb_render_query_pict_formats_formats(reply.get());
  const auto count = xcb_render_query_pict_formats_formats_length(reply.get());
  for (const auto* format = formats; format != formats + count; ++format)
    if (isArgb(*format)) argbFormat_ = format->id;
  auto screens = xcb_render_query_pict_formats_screens_iterator(reply.get());
  for (int skipped = 0; skipped < connection_.screenNumber() && screens.rem > 1; ++skipped)
    xcb_render_pictscreen_next(&screens);
  if (screens.rem == 0) return;
  auto depths = xcb_render_pictscreen_depths_iterator(screens.data);
  for (; depths.rem; xcb_render_pictdepth_next(&depths)) {
    const auto* visuals = xcb_render_pictdepth_visuals(depths.data);
    const auto visualCount = xcb_render_pictdepth_visuals_length(depths.data);
    for (const auto* visual = visuals; visual != visuals + visualCount; ++visual) {
      formats_[visual->visual] = visual->format;
      if (visual->format == argbFormat_ && !argbVisual_) argbVisual_ = visual->visual;
    }
  }
  opaqueFormat_ = formats_[connection_.screen().root_visual];
}

bool Render::hasAlpha(xcb_visualid_t visual) const {
  const auto format = formats_.find(visual);
  return format != formats_.end() && format->second == argbFormat_;
}

Surface Render::makeSurface(SurfaceFormat format, int width, int height) {
  auto* const server = connection_.get();
  const bool isOpaque = format == SurfaceFormat::opaque;
  Surface surface;
  surface.width = width;
  surface.height = height;
  surface.pixmap = PixmapHandle(server, connection_.newId());
  xcb_create_pixmap(server, isOpaque ? connection_.screen().root_depth : argbDepth, surface.pixmap.get(),
                    connection_.root(), static_cast<std::uint16_t>(width), static_cast<std::uint16_t>(height));
  surface.picture = Picture(server, connection_.newId());
  const std::uint32_t repeat = XCB_RENDER_REPEAT_PAD;
  xcb_render_create_picture(server, surface.picture.get(), surface.pixmap.get(), isOpaque ? opaqueFormat_ : argbFormat_,
                            XCB_RENDER_CP_REPEAT, &repeat);
  return surface;
}

Picture Render::makePicture(xcb_drawable_t drawable, xcb_visualid_t visual) {
  const auto format = formats_.find(visual);
  if (format == formats_.end()) return {};
  Picture picture(connection_.get(), connection_.newId());
  const std::uint32_t mode = XCB_SUBWINDOW_MODE_INCLUDE_INFERIORS;
  xcb_render_create_picture(connection_.get(), picture.get(), drawable, format->second, XCB_RENDER_CP_SUBWINDOW_MODE,
                            &mode);
  return picture;
}

Picture Render::makeTiledPicture(xcb_pixmap_t pixmap, xcb_visualid_t visual) {
  const auto format = formats_.find(visual);
  if (format == formats_.end()) return {};
  Picture picture(connection_.get(), connection_.newId());
  const std::uint32_t repeat = XCB_RENDER_REPEAT_NORMAL;
  xcb_render_create_picture(connection_.get(), picture.get(), pixmap, format->second, XCB_RENDER_CP_REPEAT, &repeat);
  return picture;
}

Picture Render::makeSolid(const platform::Color& color) {
  Picture picture(connection_.get(), connection_.newId());
  xcb_render_create_solid_fill(connection_.get(), picture.get(), premultiplied(color));
  return picture;
}

void Render::composite(std::uint8_t operation, xcb_render_picture_t source, xcb_render_picture_t mask,
                       xcb_render_picture_t target, xcb_point_t origin, const PixelRect& area) {
  if (area.isEmpty()) return;
  xcb_render_composite(connection_.get(), operation, source, mask, target, static_cast<std::int16_t>(area.x - origin.x),
                       static_cast<std::int16_t>(area.y - origin.y), 0, 0, static_cast<std::int16_t>(area.x),
                       static_cast<std::int16_t>(area.y), static_cast<std::uint16_t>(area.width),
                       static_cast<std::uint16_t>(area.height));
}

void Render::fill(std::uint8_t operation, xcb_render_picture_t target, const platform::Color& color,
                  std::span<const PixelRect> areas) {
  const auto rectangles = toXcb(areas);
  xcb_render_fill_rectangles(connection_.get(), operation, target, premultiplied(color),
                             static_cast<std::uint32_t>(rectangles.size()), rectangles.data());
}

void Render::setClip(xcb_render_picture_t target, std::span<const PixelRect> areas) {
  const auto rectangles = toXcb(areas);
  xcb_render_set_picture_clip_rectangles(connection_.get(), target, 0, 0, static_cast<std::uint32_t>(rectangles.size()),
                                         rectangles.data());
}

void Render::clearClip(xcb_render_picture_t target) {
  const std::uint32_t none = XCB_NONE;
  xcb_render_change_picture(connection_.get(), target, XCB_RENDER_CP_CLIP_MASK, &none);
}

xcb_point_t Render::place(xcb_render_picture_t picture, double scale, xcb_point_t corner) {
  // Servers copy fast only without a transform.
  const bool isPlain = scale == 1;
  const auto origin = isPlain ? xcb_point_t{} : corner;
  stretch(picture, {scale, double(-origin.x)}, {scale, double(-origin.y)});
  return isPlain ? corner : xcb_point_t{};
}

void Render::stretch(xcb_render_picture_t picture, double horizontalScale, double verticalScale) {
  stretch(picture, {horizontalScale, 0}, {verticalScale, 0});
}

void Render::stretch(xcb_render_picture_t picture, const desktops::DrawableStretch& across,
                     const desktops::DrawableStretch& down) {
  const xcb_render_transform_t matrix{
      fixed(across.scale), 0, fixed(across.offset), 0, fixed(down.scale), fixed(down.offset), 0, 0, fixed(1)};
  xcb_render_set_picture_transform(connection_.get(), picture, matrix);
  const std::string_view filter = across.scale == 1 && down.scale == 1 ? "nearest" : "bilinear";
  xcb_render_set_picture_filter(connection_.get(), picture, static_cast<std::uint16_t>(filter.size()), filter.data(), 0,
                                nullptr);
}

}  // namespace hushpane::x11
