#include "tests/x11/screen_watch.h"

namespace hushpane::x11_tests {

ScreenWatch::ScreenWatch(const std::string& display, std::vector<Point> spots)
    : spots_(std::move(spots)), thread_([this, display] { watch(display); }) {
  waitUntil([this] { return isWatching_.load(); });
}

ScreenWatch::~ScreenWatch() {
  stop();
}

std::vector<ScreenWatch::Look> ScreenWatch::stop() {
  isOver_ = true;
  if (thread_.joinable()) thread_.join();
  return looks_;
}

void ScreenWatch::watch(const std::string& display) {
  const XConnection x(display);
  const xcb_atom_t activeWindow = x.atom("_NET_ACTIVE_WINDOW");
  tellsActiveWindow_ = !x.numbers(x.root(), "_NET_SUPPORTING_WM_CHECK").empty();
  for (auto next = Clock::now(); !isOver_; next += 1ms) {
    looks_.push_back(look(x, activeWindow));
    isWatching_ = true;
    std::this_thread::sleep_until(next);
  }
  looks_.push_back(look(x, activeWindow));
}

// All requests go out in one batch, so the server answers them together.
ScreenWatch::Look ScreenWatch::look(const XConnection& x, xcb_atom_t activeWindow) const {
  const auto active = xcb_get_property(x.get(), 0, x.root(), activeWindow, XCB_ATOM_WINDOW, 0, 1);
  const auto focus = xcb_get_input_focus(x.get());
  std::vector<xcb_get_image_cookie_t> images;
  for (const Point& spot : spots_) {
    images.push_back(xcb_get_image(x.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, x.root(), static_cast<std::int16_t>(spot.x),
                                   static_cast<std::int16_t>(spot.y), 1, 1, ~0u));
  }
  Look result;
  if (const auto reply = own(xcb_get_property_reply(x.get(), active, nullptr));
      reply && xcb_get_property_value_length(reply.get()) == sizeof(xcb_window_t)) {
    result.activeWindow = *static_cast<const xcb_window_t*>(xcb_get_property_value(reply.get()));
  }
  // Window managers without EWMH tell by the keyboard.
  if (const auto reply = own(xcb_get_input_focus_reply(x.get(), focus, nullptr));
      reply && !tellsActiveWindow_ && reply->focus > XCB_INPUT_FOCUS_POINTER_ROOT) {
    result.activeWindow = reply->focus;
  }
  for (const auto cookie : images) {
    const auto reply = own(xcb_get_image_reply(x.get(), cookie, nullptr));
    result.pixels.push_back(
        reply ? Pixel{*reinterpret_cast<const std::uint32_t*>(xcb_get_image_data(reply.get())) & 0xffffff} : Pixel{});
  }
  result.time = Clock::now();
  return result;
}

}  // namespace hushpane::x11_tests
