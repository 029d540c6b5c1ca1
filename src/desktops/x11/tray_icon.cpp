#include "desktops/x11/tray_icon.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "desktops/shared/template_picture.h"
#include "desktops/x11/ground_sample.h"
#include "desktops/x11/pixel_upload.h"

namespace hushpane::x11 {

namespace {

constexpr std::string_view windowName = "Hushpane";
constexpr std::string_view windowClass{"hushpane\0Hushpane\0", 18};
constexpr std::uint16_t firstSide = 24, leastSide = 16;  // pixels; the tray decides
constexpr double secondsToPaint = 1;                     // what a tray may take to paint its ground
constexpr double brightGround = 0.5;
constexpr std::uint8_t lastButton = 3;  // those after it are the wheel's
constexpr std::uint8_t alphaDepth = 32;

// _XEMBED_INFO
constexpr std::uint32_t embedVersion = 0;
constexpr std::uint32_t embedMapped = 1;

// 0 for a visual that the screen does not have.
std::uint8_t depthOf(const xcb_screen_t& screen, xcb_visualid_t visual) {
  auto depths = xcb_screen_allowed_depths_iterator(&screen);
  for (; depths.rem > 0; xcb_depth_next(&depths)) {
    auto visuals = xcb_depth_visuals_iterator(depths.data);
    for (; visuals.rem > 0; xcb_visualtype_next(&visuals))
      if (visuals.data->visual_id == visual) return depths.data->depth;
  }
  return 0;
}

// Nothing for a child of the root.
std::optional<xcb_window_t> parentOf(Connection& connection, xcb_window_t window) {
  const Reply<xcb_query_tree_reply_t> tree(
      xcb_query_tree_reply(connection.get(), xcb_query_tree(connection.get(), window), nullptr));
  if (!tree || tree->parent == connection.root() || tree->parent == XCB_WINDOW_NONE) return std::nullopt;
  return tree->parent;
}

}  // namespace

TrayIcon::TrayIcon(const IconServices& services, Handlers handlers)
    : connection_(services.connection),
      services_(services),
      handlers_(std::move(handlers)),
      tray_(connection_),
      trayChanges_(tray_.addChangeHandler([this] { dock(); })),
      colorChanges_(tray_.addColorHandler([this] { groundChanged(); })),
      coversRest_(services.stage.addRestHandler([this] { groundChanged(); })),
      events_(connection_.addEventHandler([this](const auto& event) { handle(event); })) {}

TrayIcon::~TrayIcon() = default;

void TrayIcon::setImage(platform::TemplateImage image) {
  const bool wasThere = static_cast<bool>(image_.draw);
  image_ = std::move(image);
  if (wasThere != static_cast<bool>(image_.draw)) return dock();
  draw();
}

std::optional<platform::Rect> TrayIcon::frame() const {
  if (!isEmbedded_) return std::nullopt;
  auto* const server = connection_.get();
  const Reply<xcb_translate_coordinates_reply_t> reply(xcb_translate_coordinates_reply(
      server, xcb_translate_coordinates(server, window_.get(), connection_.root(), 0, 0), nullptr));
  // A tray that is still to put it somewhere may keep it in the corner of the root, where no bar leaves its place.
  const bool isPlaced = reply && (reply->dst_x != 0 || reply->dst_y != 0);
  if (!isPlaced) return std::nullopt;
  return services_.screens.toPoints({reply->dst_x, reply->dst_y, width_, height_});
}

void TrayIcon::dock() {
  undock();
  if (!image_.draw || tray_.manager() == XCB_WINDOW_NONE) return;
  const auto& screen = connection_.screen();
  const auto wanted = tray_.iconVisual();
  const auto depth = depthOf(screen, wanted);
  createWindow(depth != 0 ? WindowVisual{wanted, depth} : WindowVisual{screen.root_visual, screen.root_depth});
  tray_.dock(window_.get());
}

void TrayIcon::undock() {
  secondLook_.reset();
  ownWindow_.reset();
  isEmbedded_ = false;
  color_.reset();
  picture_.reset();
  window_.reset();
  colormap_.reset();
  setHovered(false);
}

void TrayIcon::createWindow(WindowVisual visual) {
  auto* const server = connection_.get();
  visual_ = visual;
  width_ = height_ = firstSide;
  colormap_ = ColormapHandle(server, connection_.newId());
  xcb_create_colormap(server, XCB_COLORMAP_ALLOC_NONE, colormap_.get(), connection_.root(), visual.id);
  window_ = WindowHandle(server, connection_.newId());
  constexpr std::uint32_t events = XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_STRUCTURE_NOTIFY |
                                   XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE |
                                   XCB_EVENT_MASK_ENTER_WINDOW | XCB_EVENT_MASK_LEAVE_WINDOW;
  const std::array<std::uint32_t, 4> values{0, 0, events, colormap_.get()};
  xcb_create_window(server, visual.depth, window_.get(), connection_.root(), 0, 0, firstSide, firstSide, 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, visual.id,
                    XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_EVENT_MASK | XCB_CW_COLORMAP, values.data());
  picture_ = services_.render.makePicture(window_.get(), visual.id);
  ownWindow_ = services_.monitors.addOwnWindow(window_.get());

  const auto setNumbers = [&](xcb_atom_t property, xcb_atom_t type, const auto& numbers) {
    xcb_change_property(server, XCB_PROP_MODE_REPLACE, window_.get(), property, type, 32,
                        static_cast<std::uint32_t>(numbers.size()), numbers.data());
  };
  const auto setText = [&](xcb_atom_t property, xcb_atom_t type, std::string_view text) {
    xcb_change_property(server, XCB_PROP_MODE_REPLACE, window_.get(), property, type, 8,
                        static_cast<std::uint32_t>(text.size()), text.data());
  };
  const auto embedInfo = connection_.atom("_XEMBED_INFO");
  setNumbers(embedInfo, embedInfo, std::array{embedVersion, embedMapped});
  // Trays that go by size hints make an icon without them a pixel wide.
  constexpr std::uint32_t hasLeastSize = 1u << 4;
  std::array<std::uint32_t, 18> sizeHints{hasLeastSize};
  sizeHints[5] = sizeHints[6] = leastSide;
  setNumbers(XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS, sizeHints);
  setNumbers(connection_.atom("_NET_WM_PID"), XCB_ATOM_CARDINAL, std::array{static_cast<std::uint32_t>(getpid())});
  setText(XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, windowClass);
  setText(XCB_ATOM_WM_NAME, XCB_ATOM_STRING, windowName);
  setText(connection_.atom("_NET_WM_NAME"), connection_.atom("UTF8_STRING"), windowName);
}

void TrayIcon::handle(const xcb_generic_event_t& event) {
  if (!window_) return;
  switch (event.response_type & 0x7f) {
    case XCB_REPARENT_NOTIFY: {
      const auto& reparent = reinterpret_cast<const xcb_reparent_notify_event_t&>(event);
      if (reparent.event == window_.get()) handleReparent(reparent.parent);
      return;
    }
    case XCB_DESTROY_NOTIFY: {
      if (reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window != window_.get()) return;
      window_.release();
      picture_.release();
      return undock();
    }
    case XCB_CONFIGURE_NOTIFY: {
      const auto& configure = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
      if (configure.event == window_.get()) handleResize(configure.width, configure.height);
      return;
    }
    case XCB_EXPOSE: {
      const auto& expose = reinterpret_cast<const xcb_expose_event_t&>(event);
      if (expose.window != window_.get() || expose.count > 0) return;
      chooseColor();
      return draw();
    }
    case XCB_BUTTON_RELEASE: {
      const auto& release = reinterpret_cast<const xcb_button_release_event_t&>(event);
      if (release.event == window_.get()) handleRelease(release);
      return;
    }
    case XCB_ENTER_NOTIFY:
    case XCB_LEAVE_NOTIFY: {
      const auto& crossing = reinterpret_cast<const xcb_enter_notify_event_t&>(event);
      if (crossing.event == window_.get()) setHovered((event.response_type & 0x7f) == XCB_ENTER_NOTIFY);
      return;
    }
    default: return;
  }
}

// A tray that goes hands its icons back to the root.
void TrayIcon::handleReparent(xcb_window_t parent) {
  if (parent == connection_.root()) return undock();
  isEmbedded_ = true;
  const Reply<xcb_get_geometry_reply_t> geometry(
      xcb_get_geometry_reply(connection_.get(), xcb_get_geometry(connection_.get(), parent), nullptr));
  const std::uint32_t ground = XCB_BACK_PIXMAP_PARENT_RELATIVE;
  if (!hasAlpha() && geometry && geometry->depth == visual_.depth)
    xcb_change_window_attributes(connection_.get(), window_.get(), XCB_CW_BACK_PIXMAP, &ground);
  groundChanged();
}

void TrayIcon::handleResize(int width, int height) {
  if (std::exchange(width_, width) == width && height_ == height) return;
  height_ = height;
  draw();
}

void TrayIcon::handleRelease(const xcb_button_release_event_t& release) {
  const bool isOnIcon =
      release.event_x >= 0 && release.event_y >= 0 && release.event_x < width_ && release.event_y < height_;
  if (!isOnIcon || release.detail > lastButton) return;
  const auto place = services_.screens.toPoints({release.root_x, release.root_y, 0, 0});
  if (handlers_.clicked) handlers_.clicked({place.x, place.y});
}

void TrayIcon::setHovered(bool isHovered) {
  if (std::exchange(isHovered_, isHovered) != isHovered && handlers_.hovered) handlers_.hovered(isHovered);
}

bool TrayIcon::hasAlpha() const {
  return visual_.depth == alphaDepth;
}

// Whoever paints it may take a while.
void TrayIcon::groundChanged() {
  if (!isEmbedded_) return;
  const auto look = [this] {
    chooseColor();
    draw();
  };
  look();
  secondLook_ = services_.queue.after(secondsToPaint, look);
}

// Beneath a cover, icon and ground are seen through the same veil: what suits the ground alone goes on to suit.
void TrayIcon::chooseColor() {
  if (!isEmbedded_) return;
  if (const auto foreground = tray_.foreground())
    color_ = *foreground;
  else if (const auto brightness = color_ && isCovered() ? std::nullopt : groundBrightness())
    color_ = *brightness > brightGround ? desktops::inkOnLight : desktops::inkOnDark;
}

bool TrayIcon::isCovered() const {
  const auto place = frame();
  if (!place) return false;
  auto topLevel = window_.get();
  while (const auto parent = parentOf(connection_, topLevel)) topLevel = *parent;
  return services_.stage.isCovered(topLevel, services_.screens.toPixels(*place));
}

// Seen in the rows that icons leave free; on the screen where it shows through the window.
std::optional<double> TrayIcon::groundBrightness() {
  const auto place = hasAlpha() ? frame() : std::nullopt;
  if (hasAlpha() && !place) return std::nullopt;
  const auto seen = hasAlpha() ? connection_.root() : window_.get();
  const auto area = place ? services_.screens.toPixels(*place) : PixelRect{0, 0, width_, height_};
  double sum = 0;
  for (const int row : {area.y, area.bottom() - 1}) {
    if (!hasAlpha()) xcb_clear_area(connection_.get(), 0, seen, 0, static_cast<std::int16_t>(row), 0, 1);
    const auto brightness = brightnessOf(connection_, seen, {area.x, row, area.width, 1});
    if (!brightness) return std::nullopt;
    sum += *brightness / 2;
  }
  return sum;
}

void TrayIcon::draw() {
  auto* const server = connection_.get();
  auto icon = desktops::templatePicture(image_, std::min(width_, height_), color_.value_or(desktops::inkOnDark));
  if (!isEmbedded_ || icon.width == 0) return;
  const auto surface = services_.render.makeSurface(SurfaceFormat::argb, icon.width, icon.height);
  uploadPixels(server, surface.pixmap.get(), {0, 0, icon.width, icon.height}, icon.pixels);
  const PixelRect place{(width_ - icon.width) / 2, (height_ - icon.height) / 2, icon.width, icon.height};
  const xcb_point_t corner{static_cast<std::int16_t>(place.x), static_cast<std::int16_t>(place.y)};
  xcb_clear_area(server, 0, window_.get(), 0, 0, 0, 0);
  services_.render.composite(XCB_RENDER_PICT_OP_OVER, surface.picture.get(), XCB_NONE, picture_.get(), corner, place);
}

}  // namespace hushpane::x11
