#include "desktops/x11/x11_panel.h"

#include <xcb/shape.h>

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>
#include <vector>

#include "desktops/x11/own_window.h"

namespace hushpane::x11 {

namespace {

using platform::Rect;

constexpr std::uint8_t depth = 32;
constexpr std::string_view windowName = "Hushpane panel";
constexpr std::uint32_t events = XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_POINTER_MOTION | XCB_EVENT_MASK_LEAVE_WINDOW |
                                 XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_KEY_PRESS;
constexpr int mainButton = 1, wheelUp = 4, wheelDown = 5;
constexpr double pointsPerNotch = 44;

Rect unionOf(const Rect& left, const Rect& right) {
  const double x = std::min(left.x, right.x), y = std::min(left.y, right.y);
  return {x, y, std::max(left.right(), right.right()) - x, std::max(left.bottom(), right.bottom()) - y};
}

}  // namespace

X11Panel::X11Panel(platform::Animator& animator, const platform::PanelConfiguration& configuration,
                   platform::PanelContents& contents, PanelServices services)
    : platform::Panel(animator, configuration, contents), services_(services) {}

X11Panel::~X11Panel() {
  close();
}

void X11Panel::setNeedsDisplay(const Rect& rect) {
  if (!isVisible() || rect.area() <= 0) return;
  damage_ = damage_ ? unionOf(*damage_, rect) : rect;
  services_.turnEnd.request();
}

void X11Panel::frameChanged() {
  services_.turnEnd.request();
}

void X11Panel::outlineChanged() {
  isCut_ = false;
  services_.turnEnd.request();
}

void X11Panel::alphaChanged() {
  services_.turnEnd.request();
}

void X11Panel::orderChanged() {
  if (!isVisible()) return close();
  isToBeRaised_ = true;
  if (!window_) open();
  services_.turnEnd.request();
}

void X11Panel::open() {
  auto& connection = services_.connection;
  auto* const server = connection.get();
  const auto visual = services_.render.argbVisual();
  colormap_ = ColormapHandle(server, connection.newId());
  xcb_create_colormap(server, XCB_COLORMAP_ALLOC_NONE, colormap_.get(), connection.root(), visual);
  bounds_ = {0, 0, 1, 1};
  window_ = WindowHandle(server, connection.newId());
  const std::array<std::uint32_t, 6> values{XCB_BACK_PIXMAP_NONE, 0, XCB_GRAVITY_NORTH_WEST, 1, events,
                                            colormap_.get()};
  xcb_create_window(server, depth, window_.get(), connection.root(), 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                    visual,
                    XCB_CW_BACK_PIXMAP | XCB_CW_BORDER_PIXEL | XCB_CW_BIT_GRAVITY | XCB_CW_OVERRIDE_REDIRECT |
                        XCB_CW_EVENT_MASK | XCB_CW_COLORMAP,
                    values.data());
  services_.tree.addOwn(window_.get(), bounds_);
  introduceOwnWindow(connection, window_.get(), windowName);
  // It has a shadow of its own.
  setWindowNumber(connection, window_.get(), "_COMPTON_SHADOW", XCB_ATOM_CARDINAL, 0);
  turns_ = services_.turnEnd.add([this] { show(); });
  compositorChanges_ = services_.compositor.addChangeHandler([this] {
    isCut_ = false;
    setNeedsDisplay(everything());
    services_.turnEnd.request();
  });
  events_ = connection.addEventHandler([this](const auto& event) { handle(event); });
  if (!configuration().ignoresMouseEvents) ownWindow_ = services_.monitors.addOwnWindow(window_.get());
}

void X11Panel::close() {
  if (!window_) return;
  ownWindow_.reset();
  events_.reset();
  compositorChanges_.reset();
  turns_.reset();
  services_.keyboard.remove(window_.get());
  services_.tree.removeOwn(window_.get());
  window_.reset();
  colormap_.reset();
  picture_.release();
  damage_.reset();
  publishedOpacity_.reset();
  isMapped_ = isCut_ = false;
}

void X11Panel::show() {
  if (!window_) return;
  place();
  if (bounds_.isEmpty()) return;
  publishOpacity();
  cut();
  draw();
  auto* const server = services_.connection.get();
  if (std::exchange(isToBeRaised_, false)) {
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(server, window_.get(), XCB_CONFIG_WINDOW_STACK_MODE, &above);
  }
  if (std::exchange(isMapped_, true)) return;
  xcb_map_window(server, window_.get());
  const std::uint32_t none = XCB_BACK_PIXMAP_NONE;
  xcb_change_window_attributes(server, window_.get(), XCB_CW_BACK_PIXMAP, &none);
  if (configuration().takesKeyboard) services_.keyboard.add(window_.get());
}

void X11Panel::place() {
  const auto bounds = services_.screens.toPixels(frame());
  const double scale = services_.screens.scaleOf(outlineFrame());
  if (bounds == bounds_ && scale == scale_) return;
  const bool isResized = bounds.width != bounds_.width || bounds.height != bounds_.height || scale != scale_;
  bounds_ = bounds;
  scale_ = scale;
  if (bounds_.isEmpty()) return;
  const std::array<std::uint32_t, 4> values{static_cast<std::uint32_t>(bounds.x), static_cast<std::uint32_t>(bounds.y),
                                            static_cast<std::uint32_t>(bounds.width),
                                            static_cast<std::uint32_t>(bounds.height)};
  xcb_configure_window(services_.connection.get(), window_.get(),
                       XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                       values.data());
  if (!isResized) return;
  isCut_ = false;
  picture_.setSize(bounds_.width, bounds_.height);
  damage_ = everything();
}

// The pointer meets what is inside the outline; without a compositor nothing else is there.
void X11Panel::cut() {
  if (std::exchange(isCut_, true)) return;
  auto* const server = services_.connection.get();
  const auto inside = pixelsOf(outline(), scale_, bounds_.width, bounds_.height);
  const auto setShape = [&](xcb_shape_sk_t kind, const std::vector<xcb_rectangle_t>& rectangles) {
    xcb_shape_rectangles(server, XCB_SHAPE_SO_SET, kind, XCB_CLIP_ORDERING_YX_SORTED, window_.get(), 0, 0,
                         static_cast<std::uint32_t>(rectangles.size()), rectangles.data());
  };
  setShape(XCB_SHAPE_SK_INPUT, configuration().ignoresMouseEvents ? std::vector<xcb_rectangle_t>{} : inside);
  if (services_.compositor.isRunning())
    xcb_shape_mask(server, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING, window_.get(), 0, 0, XCB_PIXMAP_NONE);
  else
    setShape(XCB_SHAPE_SK_BOUNDING, inside);
}

void X11Panel::draw() {
  if (!damage_) return;
  const Rect damage = damage_->intersection(everything());
  damage_.reset();
  if (damage.area() <= 0) return;
  const auto ground = services_.compositor.isRunning() ? std::nullopt : std::optional(this->ground());
  picture_.draw(scale_, damage, ground, [&](platform::Canvas& canvas) { contents().paint(canvas, damage); });
  auto* const server = services_.connection.get();
  if (isMapped_) return picture_.send(server, window_.get(), scale_, damage);
  // The window appears with its picture: the server paints its background before anyone sees it.
  const PixmapHandle first(server, services_.connection.newId());
  xcb_create_pixmap(server, depth, first.get(), window_.get(), static_cast<std::uint16_t>(bounds_.width),
                    static_cast<std::uint16_t>(bounds_.height));
  picture_.send(server, first.get(), scale_, everything());
  const std::uint32_t background = first.get();
  xcb_change_window_attributes(server, window_.get(), XCB_CW_BACK_PIXMAP, &background);
}

// Without a compositor nobody looks at it.
void X11Panel::publishOpacity() {
  const double opacity = presentationAlpha();
  if (std::exchange(publishedOpacity_, opacity) == opacity) return;
  x11::publishOpacity(services_.connection, window_.get(), opacity);
}

void X11Panel::handle(const xcb_generic_event_t& event) {
  switch (event.response_type & 0x7f) {
    case XCB_EXPOSE: {
      const auto& expose = reinterpret_cast<const xcb_expose_event_t&>(event);
      if (expose.window != window_.get()) return;
      const Rect area{expose.x / scale_, expose.y / scale_, expose.width / scale_, expose.height / scale_};
      return picture_.send(services_.connection.get(), window_.get(), scale_, area);
    }
    case XCB_MOTION_NOTIFY: {
      const auto& motion = reinterpret_cast<const xcb_motion_notify_event_t&>(event);
      if (motion.event != window_.get()) return;
      return tell([point = pointAt(motion.event_x, motion.event_y)](auto& contents) { contents.pointerMoved(point); });
    }
    case XCB_LEAVE_NOTIFY: {
      const auto& leave = reinterpret_cast<const xcb_leave_notify_event_t&>(event);
      if (leave.event != window_.get() || leave.mode != XCB_NOTIFY_MODE_NORMAL) return;
      return tell([](auto& contents) { contents.pointerExited(); });
    }
    case XCB_BUTTON_PRESS: return handlePress(reinterpret_cast<const xcb_button_press_event_t&>(event));
    case XCB_BUTTON_RELEASE: {
      const auto& release = reinterpret_cast<const xcb_button_release_event_t&>(event);
      if (release.event != window_.get() || release.detail != mainButton) return;
      return tell([point = pointAt(release.event_x, release.event_y)](auto& contents) { contents.pointerUp(point); });
    }
    case XCB_KEY_PRESS: {
      const auto& key = reinterpret_cast<const xcb_key_press_event_t&>(event);
      if (key.event != window_.get()) return;
      return tell([press = services_.keyboard.read(key)](auto& contents) { contents.keyPressed(press); });
    }
    default: return;
  }
}

void X11Panel::handlePress(const xcb_button_press_event_t& event) {
  if (event.event != window_.get()) return;
  if (event.detail == mainButton)
    return tell([point = pointAt(event.event_x, event.event_y)](auto& contents) { contents.pointerDown(point); });
  if (event.detail != wheelUp && event.detail != wheelDown) return;
  tell([delta = event.detail == wheelUp ? -pointsPerNotch : pointsPerNotch](auto& contents) {
    contents.scrolled(delta);
  });
}

void X11Panel::tell(std::function<void(platform::PanelContents&)> input) {
  services_.queue.async(lifetime_.weak([this, input = std::move(input)] {
    if (isVisible()) input(contents());
  }));
}

}  // namespace hushpane::x11
