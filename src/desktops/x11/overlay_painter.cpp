#include "desktops/x11/overlay_painter.h"

#include <algorithm>
#include <span>
#include <utility>

#include "desktops/shared/look.h"

namespace hushpane::x11 {

namespace {

constexpr BlurLook blurLook{desktops::darkHud::blurRadius, desktops::darkHud::tint};

bool isBlack(const platform::Color& color) {
  return color.red <= 0 && color.green <= 0 && color.blue <= 0;
}

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
    : connection_(connection),
      render_(render),
      backdrop_(connection, render, windows, background, std::move(onDamage)),
      images_(connection, render) {}

void OverlayPainter::setPicture(OverlayPicture picture, bool isContentChanged) {
  if (picture.desktopBlurs) leaveBlurToDesktop(picture.layers);
  const auto needs = needsOf(picture);
  if (isContentChanged || needs != needs_ || picture.bounds != picture_.bounds) isAllDirty_ = true;
  needs_ = needs;
  picture_ = std::move(picture);
  backdrop_.update(needs_.use, picture_.bounds, picture_.below);
}

void OverlayPainter::release() {
  backdrop_.update(BackdropUse::none, {}, {});
  backdrop_.releaseUncovered();
  images_.freeUnused();
  images_.freeUnused();
  behind_ = {};
  scratch_ = {};
  blur_.reset();
  isAllDirty_ = true;
}

// Brings the backdrop and its blurred form up to date and returns where either differs from before.
PixelRegion OverlayPainter::refreshSources() {
  const auto [width, height] = std::pair(picture_.bounds.width, picture_.bounds.height);
  PixelRegion all;
  all.add(everything());
  PixelRegion changed;
  if (needs_.isBackdropDrawn) {
    const bool isKept = behind_.hasSize(width, height);
    if (!isKept) behind_ = render_.makeSurface(SurfaceFormat::opaque, width, height);
    const auto& areas = isKept ? backdrop_.dirty() : all;
    if (!areas.isEmpty()) backdrop_.compose(behind_, areas, 1);
    for (const auto& area : areas.rects()) changed.add(area);
  } else {
    behind_ = {};
  }
  if (needs_.isBlurDrawn) {
    const bool isKept = blur_ && blur_->hasSize(width, height);
    if (!isKept) blur_ = std::make_unique<Blur>(render_, blurLook, width, height);
    changed.add(blur_->refresh(backdrop_, isKept ? backdrop_.dirty() : all));
  } else {
    blur_.reset();
  }
  backdrop_.clearDirty();
  return changed;
}

void OverlayPainter::paint(xcb_render_picture_t target) {
  auto areas = refreshSources();
  if (std::exchange(isAllDirty_, false)) {
    areas.clear();
    areas.add(everything());
  }
  if (areas.isEmpty()) return;
  render_.setClip(target, areas.rects());
  const bool isDirect = drawDirectly(target);
  if (!isDirect) drawComposed(target, areas);
  if (isDirect) scratch_ = {};
  render_.clearClip(target);
  images_.freeUnused();
}

// Most pictures that stay on screen are one request from the final one.
bool OverlayPainter::drawDirectly(xcb_render_picture_t target) {
  const auto& layers = picture_.layers;
  const double alpha = picture_.isComposited ? 1 : picture_.alpha;
  const bool isSingleOpaque = layers.size() == 1 && layers.front().isOpaque() && alpha >= 1;
  if (isSingleOpaque || (picture_.isComposited && layers.size() == 1)) {
    drawLayer(layers.front(), XCB_RENDER_PICT_OP_SRC, target);
    return true;
  }
  if (picture_.isComposited && layers.empty()) {
    const auto area = everything();
    render_.fill(XCB_RENDER_PICT_OP_SRC, target, {0, 0, 0, 0}, std::span(&area, 1));
    return true;
  }
  return !picture_.isComposited && drawDimmed(target);
}

// The backdrop under black layers alone.
bool OverlayPainter::drawDimmed(xcb_render_picture_t target) {
  double share = 1;
  for (const auto& layer : picture_.layers) {
    if (layer.kind != Layer::Kind::color || !isBlack(layer.color)) return false;
    share *= 1 - layer.color.alpha * layer.opacity;
  }
  const auto mask = makeDimMask(1 - picture_.alpha * (1 - share));
  render_.composite(XCB_RENDER_PICT_OP_SRC, behind_.picture.get(), mask.get(), target, {0, 0}, everything());
  return true;
}

// Scales the colours and leaves the alpha.
Picture OverlayPainter::makeDimMask(double share) {
  auto* const server = connection_.get();
  auto surface = render_.makeSurface(SurfaceFormat::argb, 1, 1);
  const PixelRect pixel{0, 0, 1, 1};
  render_.fill(XCB_RENDER_PICT_OP_SRC, surface.picture.get(), {share, share, share, 1}, std::span(&pixel, 1));
  const std::uint32_t values[]{XCB_RENDER_REPEAT_NORMAL, 1};
  xcb_render_change_picture(server, surface.picture.get(), XCB_RENDER_CP_REPEAT | XCB_RENDER_CP_COMPONENT_ALPHA,
                            values);
  return std::move(surface.picture);
}

void OverlayPainter::drawComposed(xcb_render_picture_t target, const PixelRegion& areas) {
  const auto [width, height] = std::pair(picture_.bounds.width, picture_.bounds.height);
  const bool isOpaque = !picture_.isComposited;
  if (!scratch_.hasSize(width, height) || isScratchOpaque_ != isOpaque)
    scratch_ = render_.makeSurface(isOpaque ? SurfaceFormat::opaque : SurfaceFormat::argb, width, height);
  isScratchOpaque_ = isOpaque;
  const auto scratch = scratch_.picture.get();
  render_.setClip(scratch, areas.rects());
  const auto area = everything();
  if (isOpaque && needs_.isBackdropDrawn)
    copy(XCB_RENDER_PICT_OP_SRC, behind_.picture.get(), 1, scratch);
  else
    render_.fill(XCB_RENDER_PICT_OP_SRC, scratch, {0, 0, 0, 0}, std::span(&area, 1));
  for (const auto& layer : picture_.layers) drawLayer(layer, XCB_RENDER_PICT_OP_OVER, scratch);
  if (isOpaque && picture_.alpha < 1) copy(XCB_RENDER_PICT_OP_OVER, behind_.picture.get(), 1 - picture_.alpha, scratch);
  copy(XCB_RENDER_PICT_OP_SRC, scratch, 1, target);
}

void OverlayPainter::drawLayer(const Layer& layer, std::uint8_t operation, xcb_render_picture_t target) {
  const auto area = everything();
  switch (layer.kind) {
    case Layer::Kind::color: {
      auto color = layer.color;
      color.alpha *= layer.opacity;
      return render_.fill(operation, target, color, std::span(&area, 1));
    }
    case Layer::Kind::image:
      return copy(operation, images_.picture(layer.image, area.width, area.height), layer.opacity, target);
    case Layer::Kind::material:
      if (blur_) copy(operation, blur_->picture(), layer.opacity, target);
  }
}

void OverlayPainter::copy(std::uint8_t operation, xcb_render_picture_t source, double opacity,
                          xcb_render_picture_t target) {
  Picture mask;
  if (opacity < 1) mask = render_.makeSolid({0, 0, 0, opacity});
  render_.composite(operation, source, mask.get(), target, {0, 0}, everything());
}

}  // namespace hushpane::x11
