#include "desktops/x11/overlay_painter.h"

#include <algorithm>
#include <span>
#include <utility>

#include "desktops/shared/look.h"

namespace hushpane::x11 {

namespace {

constexpr BlurLook blurLook{desktops::darkHud::blurRadius, desktops::darkHud::tint};

// A desktop that blurs needs only the tint.
void leaveBlurToDesktop(std::vector<Layer>& layers) {
  for (auto& layer : layers) {
    if (layer.kind != Layer::Kind::material) continue;
    layer.kind = Layer::Kind::color;
    layer.color = blurLook.tint;
  }
}

}  // namespace

DrawingNeeds needsOf(const OverlayPicture& picture) {
  const auto isMaterial = [](const Layer& layer) { return layer.kind == Layer::Kind::material; };
  const bool hidesAll = !picture.layers.empty() && picture.layers.front().isOpaque();
  DrawingNeeds needs;
  needs.isBlurDrawn = !picture.desktopBlurs && std::ranges::any_of(picture.layers, isMaterial);
  needs.isBackdropDrawn = !picture.isComposited && (picture.alpha < 1 || !hidesAll);
  if (needs.isBlurDrawn || needs.isBackdropDrawn)
    needs.use = BackdropUse::watch;
  else if (!hidesAll || picture.alpha < 1)
    needs.use = BackdropUse::keep;
  return needs;
}

OverlayPainter::OverlayPainter(Connection& connection, Render& render, CoveredWindows& windows,
                               RootBackground& background, std::function<void()> onDamage)
    : render_(render),
      backdrop_(connection, render, windows, background, std::move(onDamage)),
      images_(connection, render),
      drawables_(connection, render) {}

void OverlayPainter::setPicture(OverlayPicture picture, bool isContentChanged) {
  if (picture.desktopBlurs) leaveBlurToDesktop(picture.layers);
  const auto needs = needsOf(picture);
  if (isContentChanged || needs != needs_ || picture.bounds != picture_.bounds) isAllDirty_ = true;
  needs_ = needs;
  picture_ = std::move(picture);
  backdrop_.update(needs_.use, picture_.bounds, picture_.below, {picture_.isComposited, picture_.areFramesPainted});
}

void OverlayPainter::release() {
  backdrop_.update(BackdropUse::none, {}, {}, {});
  backdrop_.releaseUncovered();
  for (int round = 0; round < 2; ++round) {
    images_.freeUnused();
    drawables_.freeUnused();
  }
  canvas_ = {};
  smallCanvas_ = {};
  blur_.reset();
  isAllDirty_ = true;
}

// Brings the blurred backdrop up to date and returns where it differs from before.
PixelRegion OverlayPainter::refreshBlur() {
  PixelRegion changed;
  if (!needs_.isBlurDrawn) {
    blur_.reset();
    return changed;
  }
  PixelRegion all;
  all.add(everything());
  const bool isKept = blur_ && blur_->hasSize(picture_.bounds.width, picture_.bounds.height);
  if (!isKept) blur_ = std::make_unique<Blur>(render_, blurLook, picture_.bounds.width, picture_.bounds.height);
  changed.add(blur_->refresh(backdrop_, isKept ? backdrop_.dirty() : all));
  return changed;
}

void OverlayPainter::paint(xcb_render_picture_t target) {
  auto areas = refreshBlur();
  if (needs_.isBackdropDrawn)
    for (const auto& area : backdrop_.dirty().rects()) areas.add(area);
  backdrop_.clearDirty();
  if (std::exchange(isAllDirty_, false)) {
    areas.clear();
    areas.add(everything());
  }
  if (areas.isEmpty()) return;
  render_.setClip(target, areas.rects());
  if (drawDirectly(target)) {
    canvas_ = {};
    smallCanvas_ = {};
  } else if (isSmooth()) {
    canvas_ = {};
    drawSmoothly(target);
  } else {
    smallCanvas_ = {};
    drawOnCanvas(areas);
    copy(XCB_RENDER_PICT_OP_SRC, canvas_.picture.get(), 1, target, everything());
  }
  render_.clearClip(target);
  images_.freeUnused();
  drawables_.freeUnused();
}

// Most pictures that stay on screen are one request from the final one.
bool OverlayPainter::drawDirectly(xcb_render_picture_t target) {
  const auto& layers = picture_.layers;
  const double alpha = picture_.isComposited ? 1 : picture_.alpha;
  const bool isSingleOpaque = layers.size() == 1 && layers.front().isOpaque() && alpha >= 1;
  if (isSingleOpaque || (picture_.isComposited && layers.size() == 1)) {
    drawLayer(layers.front(), 1, XCB_RENDER_PICT_OP_SRC, target, everything());
    return true;
  }
  if (picture_.isComposited && layers.empty()) {
    const auto area = everything();
    render_.fill(XCB_RENDER_PICT_OP_SRC, target, {0, 0, 0, 0}, std::span(&area, 1));
    return true;
  }
  return false;
}

void OverlayPainter::prepareCanvas() {
  const auto format = picture_.isComposited ? SurfaceFormat::argb : SurfaceFormat::opaque;
  if (canvas_.hasSize(picture_.bounds.width, picture_.bounds.height) && canvasFormat_ == format) return;
  canvas_ = render_.makeSurface(format, picture_.bounds.width, picture_.bounds.height);
  canvasFormat_ = format;
}

void OverlayPainter::drawOnCanvas(const PixelRegion& areas) {
  prepareCanvas();
  const auto canvas = canvas_.picture.get();
  if (needs_.isBackdropDrawn)
    backdrop_.compose(canvas_, areas, 1);
  else
    render_.fill(XCB_RENDER_PICT_OP_SRC, canvas, {0, 0, 0, 0}, areas.rects());
  render_.setClip(canvas, areas.rects());
  const double alpha = picture_.isComposited ? 1 : picture_.alpha;
  for (const auto& layer : picture_.layers) drawLayer(layer, alpha, XCB_RENDER_PICT_OP_OVER, canvas, everything());
}

// Several layers without detail, such as a gradient over a blur.
bool OverlayPainter::isSmooth() const {
  return !needs_.isBackdropDrawn && std::ranges::all_of(picture_.layers, &Layer::isSmooth);
}

// They are put together in as few pixels as the blur has, and stretched over the overlay at once: one pass over the
// whole display where each layer would need its own.
void OverlayPainter::drawSmoothly(xcb_render_picture_t target) {
  constexpr int reduction = 4;  // where nothing is blurred here
  const auto whole = everything();
  const PixelRect area{0, 0, blur_ ? blur_->ownWidth() : std::max(1, whole.width / reduction),
                       blur_ ? blur_->ownHeight() : std::max(1, whole.height / reduction)};
  if (!smallCanvas_.hasSize(area.width, area.height))
    smallCanvas_ = render_.makeSurface(SurfaceFormat::argb, area.width, area.height);
  const auto canvas = smallCanvas_.picture.get();
  render_.fill(XCB_RENDER_PICT_OP_SRC, canvas, {0, 0, 0, 0}, std::span(&area, 1));
  for (const auto& layer : picture_.layers) drawLayer(layer, 1, XCB_RENDER_PICT_OP_OVER, canvas, area);
  render_.stretch(canvas, static_cast<double>(area.width) / whole.width,
                  static_cast<double>(area.height) / whole.height);
  copy(XCB_RENDER_PICT_OP_SRC, canvas, 1, target, whole);
}

void OverlayPainter::drawLayer(const Layer& layer, double alpha, std::uint8_t operation, xcb_render_picture_t target,
                               const PixelRect& area) {
  const double opacity = layer.opacity * alpha;
  switch (layer.kind) {
    case Layer::Kind::color: {
      auto color = layer.color;
      color.alpha *= opacity;
      return render_.fill(operation, target, color, std::span(&area, 1));
    }
    case Layer::Kind::image:
      return copy(operation, images_.picture(layer.image, area.width, area.height), opacity, target, area);
    case Layer::Kind::drawable:
      return copy(operation, drawables_.picture(layer, everything(), area), opacity, target, area);
    case Layer::Kind::material:
      if (blur_) copy(operation, blur_->picture(area.width, area.height), opacity, target, area);
  }
}

void OverlayPainter::copy(std::uint8_t operation, xcb_render_picture_t source, double opacity,
                          xcb_render_picture_t target, const PixelRect& area) {
  Picture mask;
  if (opacity < 1) mask = render_.makeSolid({0, 0, 0, opacity});
  render_.composite(operation, source, mask.get(), target, {0, 0}, area);
}

}  // namespace hushpane::x11
