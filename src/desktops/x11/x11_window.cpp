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
constexpr std::string_view windowName = "Hushpane";
// A compositor must not paint a large window past itself.
constexpr std::uint32_t neverBypass = 2;

}  // namespace

X11Window::X11Window(platform::Animator& animator, const platform::Rect& frame,
                     const platform::WindowConfiguration& configuration, OverlayServices services, OverlayStage& stage)
    : platform::Window(animator, frame, configuration),
      services_(services),
      stage_(stage),
      painter_(services.connection, services.render, services.covered, services.background,
               [this] { stage_.damaged(); }) {
  create();
  setProperties();
  stage_.add(*this);
}

X11Window::~X11Window() {
  stage_.remove(*this);
  painter_.release();
}

void X11Window::create() {
  auto& connection = services_.connection;
  auto* const server = connection.get();
  const auto visual = services_.render.argbVisual();
  colormap_ = ColormapHandle(server, connection.newId());
  xcb_create_colormap(server, XCB_COLORMAP_ALLOC_NONE, colormap_.get(), connection.root(), visual);
  shownBounds_ = bounds();
  window_ = WindowHandle(server, connection.newId());
  const std::array<std::uint32_t, 4> values{XCB_BACK_PIXMAP_NONE, 0, 1, colormap_.get()};
  xcb_create_window(server, depth, window_.get(), connection.root(), static_cast<std::int16_t>(shownBounds_.x),
                    static_cast<std::int16_t>(shownBounds_.y), static_cast<std::uint16_t>(shownBounds_.width),
                    static_cast<std::uint16_t>(shownBounds_.height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, visual,
                    XCB_CW_BACK_PIXMAP | XCB_CW_BORDER_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_COLORMAP,
                    values.data());
  picture_ = services_.render.makePicture(window_.get(), visual);
}

void X11Window::setProperties() {
  introduceOwnWindow(services_.connection, id(), windowName);
  setWindowNumber(services_.connection, id(), "_NET_WM_BYPASS_COMPOSITOR", XCB_ATOM_CARDINAL, neverBypass);
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
  PlacementWish wish{id(), level(), place(), XCB_WINDOW_NONE, isPlaced_};
  if (place() != Place::below) return wish;
  const auto* sibling = services_.tree.topLevelOf(placeSibling());
  if (sibling && sibling->isMapped) wish.sibling = sibling->id;
  return wish;
}

void X11Window::present(std::vector<StackEntry> below) {
  OverlayPicture picture;
  picture.bounds = bounds();
  picture.layers = layersOf(contentView());
  picture.alpha = presentationAlpha();
  picture.isComposited = services_.compositor.isRunning();
  picture.desktopBlurs = services_.compositor.blursBehindWindows();
  picture.below = std::move(below);
  const bool hasMaterial =
      std::ranges::find(picture.layers, Layer::Kind::material, &Layer::kind) != picture.layers.end();
  if (picture.bounds != std::exchange(shownBounds_, picture.bounds)) {
    const std::array<std::uint32_t, 4> values{
        static_cast<std::uint32_t>(picture.bounds.x), static_cast<std::uint32_t>(picture.bounds.y),
        static_cast<std::uint32_t>(picture.bounds.width), static_cast<std::uint32_t>(picture.bounds.height)};
    xcb_configure_window(services_.connection.get(), id(),
                         XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                         values.data());
  }
  publishOpacity(picture.isComposited ? picture.alpha : 1);
  publishBlur(hasMaterial && picture.desktopBlurs);
  const auto [width, height] = std::pair(picture.bounds.width, picture.bounds.height);
  painter_.setPicture(std::move(picture), std::exchange(isContentChanged_, false) || !isMapped_);
  if (isMapped_) {
    if (painter_.isPaintNeeded()) painter_.paint(picture_.get());
    return;
  }
  // The window appears with its picture: the server paints its background before anyone sees it.
  firstPicture_ = services_.render.makeSurface(SurfaceFormat::argb, width, height);
  painter_.paint(firstPicture_.picture.get());
  const std::uint32_t background = firstPicture_.pixmap.get();
  xcb_change_window_attributes(services_.connection.get(), id(), XCB_CW_BACK_PIXMAP, &background);
}

void X11Window::settle() {
  isPlaced_ = true;
  if (!std::exchange(isMapped_, true)) {
    auto* const server = services_.connection.get();
    xcb_map_window(server, id());
    setInputRegion();
    const std::uint32_t none = XCB_BACK_PIXMAP_NONE;
    xcb_change_window_attributes(server, id(), XCB_CW_BACK_PIXMAP, &none);
    firstPicture_ = {};
  }
  painter_.releaseUncovered();
}

void X11Window::hide() {
  if (!std::exchange(isMapped_, false)) return;
  xcb_unmap_window(services_.connection.get(), id());
  painter_.release();
  isContentChanged_ = true;
}

void X11Window::setInputRegion() {
  if (!configuration().ignoresMouseEvents) return;
  xcb_shape_rectangles(services_.connection.get(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_UNSORTED,
                       id(), 0, 0, 0, nullptr);
}

void X11Window::publishOpacity(double opacity) {
  if (std::exchange(publishedOpacity_, opacity) != opacity) x11::publishOpacity(services_.connection, id(), opacity);
}

// Present and empty, the property asks for the whole window.
void X11Window::publishBlur(bool isWanted) {
  if (std::exchange(isBlurPublished_, isWanted) == isWanted) return;
  auto& connection = services_.connection;
  const auto name = connection.atom("_KDE_NET_WM_BLUR_BEHIND_REGION");
  if (isWanted)
    xcb_change_property(connection.get(), XCB_PROP_MODE_REPLACE, id(), name, XCB_ATOM_CARDINAL, 32, 0, nullptr);
  else
    xcb_delete_property(connection.get(), id(), name);
}

}  // namespace hushpane::x11
