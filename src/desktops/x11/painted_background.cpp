#include "desktops/x11/painted_background.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <utility>
#include <vector>

#include "desktops/shared/image_file.h"
#include "desktops/x11/picture_place.h"
#include "desktops/x11/pixel_upload.h"
#include "desktops/x11/root_bounds.h"

namespace hushpane::x11 {

namespace {

using desktops::PixelSize;
using session::ColorShading;
using session::PicturePlacement;

// A change comes as several settings.
constexpr double secondsPerBatch = 0.05;
// How much smaller than on the screen, each way. The blur leaves nothing of what is lost.
constexpr int reduction = 4;
constexpr int shades = 64;  // between two colours; servers find fewer than 256 between neighbours

PixelSize reduced(PixelSize size) {
  return {std::max(1, size.width / reduction), std::max(1, size.height / reduction)};
}

// As many pixels as fill the size, never more than there are.
PixelSize filling(PixelSize picture, PixelSize least) {
  const double factor = std::min(1.0, std::max(static_cast<double>(least.width) / picture.width,
                                               static_cast<double>(least.height) / picture.height));
  return {std::max(1, static_cast<int>(std::lround(picture.width * factor))),
          std::max(1, static_cast<int>(std::lround(picture.height * factor)))};
}

std::uint32_t pixelOf(const platform::Color& color) {
  const auto channel = [](double value) { return static_cast<std::uint32_t>(std::lround(value * 255)); };
  return 0xff000000u | channel(color.red) << 16 | channel(color.green) << 8 | channel(color.blue);
}

// Shades over so many pixels of the screen, or one for all of them. They change in its middle half, as compositors draw
// them: from the centre of the first of two pixels to that of the second.
desktops::DrawableStretch along(bool isShaded, int start, int length) {
  const double half = length / 2.0;
  auto stretch = isShaded ? desktops::drawableStretch(shades, half, half) : desktops::DrawableStretch{};
  stretch.offset -= stretch.scale * (start + half / 2);
  return stretch;
}

// The pixels that a place touches.
PixelRect around(const platform::Rect& place) {
  const int left = static_cast<int>(std::floor(place.x)), top = static_cast<int>(std::floor(place.y));
  return {left, top, static_cast<int>(std::ceil(place.right())) - left,
          static_cast<int>(std::ceil(place.bottom())) - top};
}

}  // namespace

PaintedBackground::PaintedBackground(Connection& connection, Render& render, const Screens& screens,
                                     platform::MainQueue& queue, platform::NotificationCenter& center,
                                     session::TaskQueue& tasks)
    : connection_(connection), render_(render), screens_(screens), queue_(queue), center_(center), tasks_(tasks) {}

std::optional<PaintedBackground::Painting> PaintedBackground::paint() {
  painted_ = session::desktopBackground();
  if (!painted_) return std::nullopt;
  const auto root = rootBounds(connection_);
  if (root.isEmpty()) return std::nullopt;
  prepare(*painted_, root);
  Painting painting;
  painting.surface = render_.makeSurface(SurfaceFormat::opaque, root.width, root.height);
  const auto picture = painted_->picture && decoded_.image ? upload(*decoded_.image) : Surface();
  for (const auto& screen : screens_.screens()) {
    const auto area = screens_.toPixels(screen.frame);
    paintColors(painting.surface, *painted_, area);
    if (!picture) continue;
    const auto place = placeOfPicture(painted_->placement, decoded_.natural, area, root, screen.scale);
    const bool isTiled = painted_->placement == PicturePlacement::tiled;
    paintPicture(painting.surface, picture, place, isTiled ? area : area.intersection(around(place)));
  }
  painting.settings = std::make_unique<session::DesktopBackgroundWatch>(lifetime_.weak([this] { settingsChanged(); }));
  painting.arrangement =
      center_.addObserver(platform::notification::screenParametersDidChange, lifetime_.weak([this] { changed(); }));
  return painting;
}

// Until the picture of a new file is there, the old one stays; false while it is awaited.
bool PaintedBackground::prepare(const session::DesktopBackground& background, const PixelRect& root) {
  if (!background.picture) {
    source_.reset();
    decoded_ = {};
    return true;
  }
  Source source{*background.picture, desktops::stampOf(*background.picture), {}};
  switch (background.placement) {
    case PicturePlacement::tiled:
    case PicturePlacement::centered: break;
    case PicturePlacement::spanned: source.shown = {root.width, root.height}; break;
    default:
      for (const auto& screen : screens_.screens()) {
        const auto area = screens_.toPixels(screen.frame);
        source.shown = {std::max(source.shown.width, area.width), std::max(source.shown.height, area.height)};
      }
  }
  if (source == source_) return true;
  start(source);
  return false;
}

PaintedBackground::Decoded PaintedBackground::decode(const Source& source) {
  Decoded decoded;
  decoded.image = desktops::decodeImageFile(source.file, [&](PixelSize natural) {
    decoded.natural = natural;
    return source.shown == PixelSize{} ? reduced(natural) : filling(natural, reduced(source.shown));
  });
  return decoded;
}

void PaintedBackground::start(const Source& source) {
  if (std::exchange(isDecoding_, true)) return;
  tasks_.run<Decoded>(
      platform::TaskPriority::userInitiated, [source] { return decode(source); },
      lifetime_.weak([this, source](Decoded decoded) {
        isDecoding_ = false;
        source_ = source;
        decoded_ = std::move(decoded);
        changed();
      }));
}

void PaintedBackground::settingsChanged() {
  pending_ = queue_.after(secondsPerBatch, [this] {
    const auto background = session::desktopBackground();
    if (background == painted_) return;
    if (!background || prepare(*background, rootBounds(connection_))) changed();
  });
}

void PaintedBackground::changed() {
  handlers_.forEach([](const auto& handler) { handler(); });
}

Surface PaintedBackground::upload(const platform::Image& image) {
  auto surface = render_.makeSurface(SurfaceFormat::argb, image.width, image.height);
  auto pixels = image.pixels;
  uploadPixels(connection_.get(), surface.pixmap.get(), {0, 0, image.width, image.height}, pixels);
  return surface;
}

void PaintedBackground::paintColors(const Surface& target, const session::DesktopBackground& background,
                                    const PixelRect& screen) {
  const auto picture = target.picture.get();
  if (background.shading == ColorShading::solid)
    return render_.fill(XCB_RENDER_PICT_OP_SRC, picture, background.primary, std::span(&screen, 1));
  const bool isHorizontal = background.shading == ColorShading::horizontal;
  platform::Image colors{isHorizontal ? shades : 1, isHorizontal ? 1 : shades, {}};
  for (int index = 0; index < shades; ++index)
    colors.pixels.push_back(
        pixelOf(platform::interpolate(background.primary, background.secondary, index / (shades - 1.0))));
  const auto source = upload(colors);
  render_.stretch(source.picture.get(), along(isHorizontal, screen.x, screen.width),
                  along(!isHorizontal, screen.y, screen.height));
  render_.composite(XCB_RENDER_PICT_OP_SRC, source.picture.get(), XCB_NONE, picture, {0, 0}, screen);
}

void PaintedBackground::paintPicture(const Surface& target, const Surface& picture, const platform::Rect& place,
                                     const PixelRect& area) {
  const bool isTiled = painted_->placement == PicturePlacement::tiled;
  const std::uint32_t repeat = isTiled ? XCB_RENDER_REPEAT_NORMAL : XCB_RENDER_REPEAT_PAD;
  xcb_render_change_picture(connection_.get(), picture.picture.get(), XCB_RENDER_CP_REPEAT, &repeat);
  const double across = picture.width / place.width, down = picture.height / place.height;
  render_.stretch(picture.picture.get(), {across, -place.x * across}, {down, -place.y * down});
  render_.composite(XCB_RENDER_PICT_OP_OVER, picture.picture.get(), XCB_NONE, target.picture.get(), {0, 0}, area);
}

}  // namespace hushpane::x11
