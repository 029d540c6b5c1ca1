#include "tests/x11/client_window.h"

namespace hushpane::x11_tests {

// A visual with 8 bits of alpha beside the colours.
static xcb_visualid_t alphaVisual(const xcb_screen_t& screen) {
  for (auto depth = xcb_screen_allowed_depths_iterator(&screen); depth.rem; xcb_depth_next(&depth)) {
    if (depth.data->depth == 32 && depth.data->visuals_len > 0) return xcb_depth_visuals(depth.data)->visual_id;
  }
  throw std::runtime_error("the X server has no visual with alpha");
}

ClientWindow::ClientWindow(const XConnection& application, const Look& look, Appearing appearing)
    : x_(application), window_(xcb_generate_id(x_.get())), color_(look.color) {
  create(look);
  describe(look);
  xcb_map_window(x_.get(), window_);
  x_.sync();
  if (appearing == Appearing::someTime) return;
  if (!waitUntil([&] { return x_.isOnScreen(window_); })) throw std::runtime_error("a window did not appear");
}

void ClientWindow::create(const Look& look) const {
  const bool hasAlpha = look.opacity < 255;
  const xcb_visualid_t visual = hasAlpha ? alphaVisual(x_.screen()) : x_.screen().root_visual;
  const xcb_colormap_t colormap = xcb_generate_id(x_.get());
  xcb_create_colormap(x_.get(), XCB_COLORMAP_ALLOC_NONE, colormap, x_.root(), visual);
  const std::uint32_t values[] = {look.color.value | std::uint32_t{look.opacity} << 24, 0, look.overridesRedirect,
                                  XCB_EVENT_MASK_BUTTON_PRESS, colormap};
  xcb_create_window(
      x_.get(), hasAlpha ? 32 : x_.screen().root_depth, window_, x_.root(), static_cast<std::int16_t>(look.bounds.x),
      static_cast<std::int16_t>(look.bounds.y), static_cast<std::uint16_t>(look.bounds.width),
      static_cast<std::uint16_t>(look.bounds.height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, visual,
      XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK | XCB_CW_COLORMAP, values);
}

ClientWindow::~ClientWindow() {
  xcb_destroy_window(x_.get(), window_);
  x_.sync();
}

// Without decorations, at the place asked for (ICCCM 4.1.2.3: the position counts as the user's).
void ClientWindow::describe(const Look& look) const {
  constexpr std::uint32_t userPosition = 1, userSize = 2, hasDecorations = 2;
  std::vector<std::uint32_t> sizeHints{userPosition | userSize, std::uint32_t(look.bounds.x),
                                       std::uint32_t(look.bounds.y), std::uint32_t(look.bounds.width),
                                       std::uint32_t(look.bounds.height)};
  sizeHints.resize(18);
  x_.setNumbers(window_, "WM_NORMAL_HINTS", "WM_SIZE_HINTS", sizeHints);
  x_.setNumbers(window_, "_MOTIF_WM_HINTS", "_MOTIF_WM_HINTS", {hasDecorations, 0, 0, 0, 0});
  x_.setNumbers(window_, "_NET_WM_WINDOW_TYPE", "ATOM", {x_.atom(look.type)});
  if (look.type == "_NET_WM_WINDOW_TYPE_DOCK") {  // along the lower edge
    const auto left = std::uint32_t(look.bounds.x), right = std::uint32_t(look.bounds.right() - 1);
    const auto height = std::uint32_t(x_.screen().height_in_pixels - look.bounds.y);
    x_.setNumbers(window_, "_NET_WM_STRUT_PARTIAL", "CARDINAL", {0, 0, 0, height, 0, 0, 0, 0, 0, 0, left, right});
  }
  if (look.owner != XCB_NONE) x_.setNumbers(window_, "WM_TRANSIENT_FOR", "WINDOW", {look.owner});
}

int ClientWindow::clicks() {
  while (const auto event = own(xcb_poll_for_event(x_.get()))) {
    if ((event->response_type & 0x7f) == XCB_BUTTON_PRESS) ++clicks_;
  }
  return clicks_;
}

}  // namespace hushpane::x11_tests
