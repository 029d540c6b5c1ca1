#include "desktops/x11/root_background.h"

#include <xcb/composite.h>

#include <array>
#include <string_view>
#include <utility>

#include "desktops/x11/root_bounds.h"
#include "desktops/x11/xcb_handle.h"
#include "platform/color.h"

namespace hushpane::x11 {

namespace {

// Programs that set a background publish its pixmap under these names.
constexpr std::array<std::string_view, 2> publishedNames{"_XROOTPMAP_ID", "ESETROOT_PMAP_ID"};

// What many compositors paint where no background is published and no settings describe one.
constexpr platform::Color unknownBackground{0.5, 0.5, 0.5, 1};

}  // namespace

struct RootBackground::Held {
  PixmapHandle pixmap;  // only where it is this program's own
  Picture picture;
  PaintedBackground::Painting painting;  // only where it was painted here
};

RootBackground::RootBackground(Connection& connection, Render& render, CompositorWatch& compositor,
                               PaintedBackground& painted)
    : connection_(connection), render_(render), compositor_(compositor), painted_(painted) {
  connection_.selectRootEvents(XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY);
  events_ = connection_.addEventHandler([this](const auto& event) { handle(event); });
  compositorChanges_ = compositor_.addChangeHandler([this] { changed(); });
  paintingChanges_ = painted_.addChangeHandler([this] { changed(); });
}

void RootBackground::handle(const xcb_generic_event_t& event) {
  const int type = event.response_type & 0x7f;
  bool isChanged = false;
  if (type == XCB_PROPERTY_NOTIFY) {
    const auto& property = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    for (const auto name : {publishedNames[0], publishedNames[1], std::string_view("_XSETROOT_ID")})
      isChanged |= property.window == connection_.root() && property.atom == connection_.atom(name);
  }
  if (type == XCB_CONFIGURE_NOTIFY)
    isChanged = reinterpret_cast<const xcb_configure_notify_event_t&>(event).window == connection_.root();
  if (isChanged) changed();
}

void RootBackground::changed() {
  held_.reset();
  handlers_.forEach([](const auto& handler) { handler(); });
}

std::shared_ptr<const Picture> RootBackground::picture() {
  auto held = held_.lock();
  if (!held) {
    if (const auto pixmap = publishedPixmap()) {
      held = std::make_shared<Held>();
      held->picture = render_.makeTiledPicture(pixmap, connection_.screen().root_visual);
    } else if (compositor_.isRunning()) {
      held = paint();
    } else {
      held = copyOfRoot();
    }
    held_ = held;
  }
  return {held, &held->picture};
}

xcb_pixmap_t RootBackground::publishedPixmap() {
  auto* const server = connection_.get();
  std::array<xcb_get_property_cookie_t, publishedNames.size()> cookies;
  for (std::size_t index = 0; index < cookies.size(); ++index)
    cookies[index] =
        xcb_get_property(server, 0, connection_.root(), connection_.atom(publishedNames[index]), XCB_ATOM_PIXMAP, 0, 1);
  xcb_pixmap_t found = XCB_PIXMAP_NONE;
  for (const auto cookie : cookies) {
    const Reply<xcb_get_property_reply_t> property(xcb_get_property_reply(server, cookie, nullptr));
    if (found || !property || property->format != 32 || property->value_len < 1) continue;
    const auto pixmap = *static_cast<const xcb_pixmap_t*>(xcb_get_property_value(property.get()));
    // The property may outlive the pixmap.
    const Reply<xcb_get_geometry_reply_t> geometry(
        xcb_get_geometry_reply(server, xcb_get_geometry(server, pixmap), nullptr));
    if (geometry && geometry->depth == connection_.screen().root_depth) found = pixmap;
  }
  return found;
}

// The root itself is the compositor's to paint on.
std::shared_ptr<RootBackground::Held> RootBackground::paint() {
  auto held = std::make_shared<Held>();
  if (auto painting = painted_.paint()) {
    held->painting = std::move(*painting);
    held->picture = std::move(held->painting.surface.picture);
  } else {
    held->picture = render_.makeSolid(unknownBackground);
  }
  return held;
}

// A window at the bottom that inherits the root's background and is drawn into a pixmap of its own, never to be seen:
// the server paints the background there, and the pixmap stays when the window goes.
std::shared_ptr<RootBackground::Held> RootBackground::copyOfRoot() {
  auto* const server = connection_.get();
  auto held = std::make_shared<Held>();
  const auto root = rootBounds(connection_);
  if (root.isEmpty()) return held;
  const WindowHandle window(server, connection_.newId());
  const std::array<std::uint32_t, 2> values{XCB_BACK_PIXMAP_PARENT_RELATIVE, 1};
  xcb_create_window(server, XCB_COPY_FROM_PARENT, window.get(), connection_.root(), 0, 0,
                    static_cast<std::uint16_t>(root.width), static_cast<std::uint16_t>(root.height), 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXMAP | XCB_CW_OVERRIDE_REDIRECT,
                    values.data());
  xcb_composite_redirect_window(server, window.get(), XCB_COMPOSITE_REDIRECT_MANUAL);
  const std::uint32_t below = XCB_STACK_MODE_BELOW;
  xcb_configure_window(server, window.get(), XCB_CONFIG_WINDOW_STACK_MODE, &below);
  xcb_map_window(server, window.get());
  held->pixmap = PixmapHandle(server, connection_.newId());
  xcb_composite_name_window_pixmap(server, window.get(), held->pixmap.get());
  held->picture = render_.makeTiledPicture(held->pixmap.get(), connection_.screen().root_visual);
  return held;
}

}  // namespace hushpane::x11
