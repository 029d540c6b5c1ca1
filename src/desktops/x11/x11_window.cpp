#include "desktops/x11/x11_window.h"

#include <xcb/shape.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>
#include <utility>

#include "desktops/x11/overlay_stage.h"
#include "desktops/x11/own_window.h"

namespace hushpane::x11 {

namespace {

constexpr std::uint8_t depth = 32;

}  // namespace

X11Window::X11Window(platform::Animator& animator, const platform::Rect& frame,
                     const platform::WindowConfiguration& configuration, OverlayServices services, OverlayStage& stage)
    : platform::Window(animator, frame, configuration),
      services_(services),
      stage_(stage),
      painter_(services.connection, services.render, services.covered, services.background,
               [this] { stage_.damaged(); }) {
  stage_.add(*this);
}

X11Window::~X11Window() {
  stage_.remove(*this);
}

void X11Window::ready(PlacementChoice& placement) {
  const bool isOutdated = shown_.generation != placement.generation();
  // A manager would have to be talked into another size.
  const bool isOfOtherSize = shown_.isManaged && shown_.bounds != bounds();
  if (shown_.window && (isOutdated || isOfOtherSize)) retire(placement);
  if (shown_.window) return;
  create(placement);
  placement.introduce(wish());
}

void X11Window::create(const PlacementChoice& placement) {
  auto& connection = services_.connection;
  auto* const server = connection.get();
  const auto visual = services_.render.argbVisual();
  shown_ = {};
  shown_.isManaged = placement.isManaged();
  shown_.generation = placement.generation();
  shown_.colormap = ColormapHandle(server, connection.newId());
  xcb_create_colormap(server, XCB_COLORMAP_ALLOC_NONE, shown_.colormap.get(), connection.root(), visual);
  shown_.bounds = bounds();
  shown_.window = WindowHandle(server, connection.newId());
  const auto at = shown_.isManaged ? managedBounds(connection, shown_.bounds) : shown_.bounds;
  const std::array<std::uint32_t, 4> values{XCB_BACK_PIXMAP_NONE, 0, shown_.isManaged ? 0u : 1u, shown_.colormap.get()};
  xcb_create_window(
      server, depth, id(), connection.root(), static_cast<std::int16_t>(at.x), static_cast<std::int16_t>(at.y),
      static_cast<std::uint16_t>(at.width), static_cast<std::uint16_t>(at.height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
      visual, XCB_CW_BACK_PIXMAP | XCB_CW_BORDER_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_COLORMAP, values.data());
  shown_.picture = services_.render.makePicture(id(), visual);
  services_.tree.addOwn(id(), at);
}

// The window of the old kind stays on screen for as long as the new one is not.
void X11Window::retire(Placement& placement) {
  placement.forget(id());
  if (retired_) services_.tree.removeOwn(retired_->window.get());
  retired_.emplace(std::exchange(shown_, {}));
}

PixelRect X11Window::placedBounds() const {
  auto placed = bounds();
  const auto* entry = shown_.isManaged && shown_.isMapped ? services_.tree.topLevelOf(id()) : nullptr;
  if (!entry || !entry->isMapped) return placed;
  placed.x = entry->bounds.x;
  placed.y = entry->bounds.y;
  return placed;
}

void X11Window::frameChanged() {
  isContentChanged_ = true;
  stage_.request();
}

void X11Window::orderChanged() {
  stage_.request();
}

void X11Window::alphaChanged() {
  // A compositor applies the alpha; without one it is part of the picture.
  if (!services_.compositor.isRunning()) isContentChanged_ = true;
  stage_.request();
}

void X11Window::contentChanged() {
  isContentChanged_ = true;
  stage_.request();
}

PlacementWish X11Window::wish() const {
  PlacementWish wish{id(), level(), place(), XCB_WINDOW_NONE, shown_.isPlaced, bounds(), {}};
  if (place() != Place::below) return wish;
  const auto* sibling = services_.tree.topLevelOf(placeSibling());
  if (sibling && sibling->isMapped) wish.sibling = sibling->id;
  return wish;
}

void X11Window::present(std::vector<StackEntry> below, const std::vector<xcb_window_t>& clear, bool isWaiting) {
  auto shape = isWaiting ? CoverShape::nothing() : CoverShape::around(below, clear);
  std::erase_if(below, [&](const StackEntry& entry) { return std::ranges::find(clear, entry.id) != clear.end(); });
  OverlayPicture picture;
  picture.bounds = placedBounds();
  picture.layers = layersOf(contentView());
  picture.alpha = presentationAlpha();
  picture.isComposited = services_.compositor.isRunning();
  picture.desktopBlurs = services_.compositor.blursBehindWindows();
  picture.areFramesPainted = services_.manager.paintsFrames(services_.compositor.owner());
  picture.below = std::move(below);
  const bool hasMaterial =
      std::ranges::find(picture.layers, Layer::Kind::material, &Layer::kind) != picture.layers.end();
  if (bounds() != std::exchange(shown_.bounds, bounds())) configureBounds(services_.connection, id(), shown_.bounds);
  const bool isMoved = picture.bounds != std::exchange(shown_.placed, picture.bounds);
  publishOpacity(picture.isComposited ? picture.alpha : 1);
  publishBlur(hasMaterial && picture.desktopBlurs);
  const auto [width, height] = std::pair(picture.bounds.width, picture.bounds.height);
  const bool isAppearing = !shown_.isMapped || shape != shown_.shape || (isMoved && shape.hasHole());
  painter_.setPicture(std::move(picture), std::exchange(isContentChanged_, false) || isAppearing);
  if (!isAppearing) {
    if (painter_.isPaintNeeded()) painter_.paint(shown_.picture.get());
    return;
  }
  // It appears with its picture: the server paints the background before anyone sees it.
  nextShape_ = std::move(shape);
  background_ = services_.render.makeSurface(SurfaceFormat::argb, width, height);
  painter_.paint(background_.picture.get());
  const std::uint32_t background = background_.pixmap.get();
  xcb_change_window_attributes(services_.connection.get(), id(), XCB_CW_BACK_PIXMAP, &background);
  // What it is to leave clear must be so before it moves above it, and must stay so until it has moved beneath.
  if (shown_.isMapped && nextShape_->hasHole()) showNext();
}

bool X11Window::settle() {
  shown_.isPlaced = true;
  const bool isRevealed = shown_.isManaged && nextShape_ && !(shown_.shape == *nextShape_);
  if (nextShape_) showNext();
  if (retired_ && shown_.shape != CoverShape::nothing()) {
    services_.tree.removeOwn(retired_->window.get());
    retired_.reset();
  }
  painter_.releaseUncovered();
  return isRevealed;
}

// With the background that was made for it.
void X11Window::showNext() {
  auto* const server = services_.connection.get();
  if (shown_.isMapped) xcb_clear_area(server, 0, id(), 0, 0, 0, 0);
  nextShape_->apply(services_.connection, id(), shown_.placed,
                    shown_.isManaged ? CoverShape::Whole::shaped : CoverShape::Whole::unshaped);
  if (!std::exchange(shown_.isMapped, true)) {
    setInputRegion();  // no click must be caught in between
    xcb_map_window(server, id());
    setInputRegion();
  }
  const std::uint32_t none = XCB_BACK_PIXMAP_NONE;
  xcb_change_window_attributes(server, id(), XCB_CW_BACK_PIXMAP, &none);
  shown_.shape = *std::exchange(nextShape_, std::nullopt);
  background_ = {};
}

void X11Window::hide(Placement& placement) {
  if (!shown_.window) return;
  retire(placement);
  services_.tree.removeOwn(retired_->window.get());
  retired_.reset();
  painter_.release();
  isContentChanged_ = true;
}

void X11Window::setInputRegion() {
  if (!configuration().ignoresMouseEvents) return;
  xcb_shape_rectangles(services_.connection.get(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_UNSORTED,
                       id(), 0, 0, 0, nullptr);
}

void X11Window::publishOpacity(double opacity) {
  if (std::exchange(shown_.publishedOpacity, opacity) != opacity)
    x11::publishOpacity(services_.connection, id(), opacity);
}

// Present and empty, the property asks for the whole window.
void X11Window::publishBlur(bool isWanted) {
  if (std::exchange(shown_.isBlurPublished, isWanted) == isWanted) return;
  auto& connection = services_.connection;
  const auto name = connection.atom("_KDE_NET_WM_BLUR_BEHIND_REGION");
  if (isWanted)
    xcb_change_property(connection.get(), XCB_PROP_MODE_REPLACE, id(), name, XCB_ATOM_CARDINAL, 32, 0, nullptr);
  else
    xcb_delete_property(connection.get(), id(), name);
}

}  // namespace hushpane::x11
