#include "desktops/x11/connection.h"

#include <xcb/composite.h>
#include <xcb/damage.h>
#include <xcb/randr.h>
#include <xcb/render.h>
#include <xcb/res.h>
#include <xcb/shape.h>
#include <xcb/xfixes.h>
#include <xcb/xinput.h>

// The header names a field with a word that C++ reserves.
#define explicit explicitComponents
#include <xcb/xkb.h>
#undef explicit

#include <array>
#include <utility>

#include "desktops/shared/debug_log.h"
#include "desktops/x11/xcb_handle.h"

namespace hushpane::x11 {

namespace {

constexpr std::array<std::string_view, 51> knownAtoms{
    "ESETROOT_PMAP_ID",
    "MANAGER",
    "UTF8_STRING",
    "WM_STATE",
    "_KDE_NET_WM_BLUR_BEHIND_REGION",
    "_NET_ACTIVE_WINDOW",
    "_NET_CLIENT_LIST",
    "_NET_CLIENT_LIST_STACKING",
    "_NET_CURRENT_DESKTOP",
    "_NET_SUPPORTED",
    "_NET_SUPPORTING_WM_CHECK",
    "_NET_SYSTEM_TRAY_COLORS",
    "_NET_SYSTEM_TRAY_OPCODE",
    "_NET_SYSTEM_TRAY_S0",
    "_NET_SYSTEM_TRAY_VISUAL",
    "_NET_WM_BYPASS_COMPOSITOR",
    "_NET_WM_CM_S0",
    "_NET_WM_DESKTOP",
    "_NET_WM_NAME",
    "_NET_WM_PID",
    "_NET_WM_STATE",
    "_NET_WM_STATE_ABOVE",
    "_NET_WM_STATE_BELOW",
    "_NET_WM_STATE_HIDDEN",
    "_NET_WM_STATE_SKIP_PAGER",
    "_NET_WM_STATE_SKIP_TASKBAR",
    "_NET_WM_STATE_STICKY",
    "_NET_WM_STRUT",
    "_NET_WM_STRUT_PARTIAL",
    "_NET_WM_USER_TIME",
    "_NET_WM_WINDOW_OPACITY",
    "_NET_WM_WINDOW_TYPE",
    "_NET_WM_WINDOW_TYPE_COMBO",
    "_NET_WM_WINDOW_TYPE_DESKTOP",
    "_NET_WM_WINDOW_TYPE_DIALOG",
    "_NET_WM_WINDOW_TYPE_DND",
    "_NET_WM_WINDOW_TYPE_DOCK",
    "_NET_WM_WINDOW_TYPE_DROPDOWN_MENU",
    "_NET_WM_WINDOW_TYPE_MENU",
    "_NET_WM_WINDOW_TYPE_NORMAL",
    "_NET_WM_WINDOW_TYPE_NOTIFICATION",
    "_NET_WM_WINDOW_TYPE_POPUP_MENU",
    "_NET_WM_WINDOW_TYPE_SPLASH",
    "_NET_WM_WINDOW_TYPE_TOOLBAR",
    "_NET_WM_WINDOW_TYPE_TOOLTIP",
    "_NET_WM_WINDOW_TYPE_UTILITY",
    "_XEMBED_INFO",
    "_XROOTPMAP_ID",
    "_XSETROOT_ID",
    "WM_TRANSIENT_FOR",
    "EDID",
};

xcb_extension_t* extensionRecord(Extension extension) {
  switch (extension) {
    case Extension::randr: return &xcb_randr_id;
    case Extension::composite: return &xcb_composite_id;
    case Extension::damage: return &xcb_damage_id;
    case Extension::render: return &xcb_render_id;
    case Extension::shape: return &xcb_shape_id;
    case Extension::xfixes: return &xcb_xfixes_id;
    case Extension::xinput: return &xcb_input_id;
    case Extension::res: return &xcb_res_id;
    case Extension::xkb: return &xcb_xkb_id;
  }
  return nullptr;
}

constexpr std::array allExtensions{Extension::randr,  Extension::composite, Extension::damage,
                                   Extension::render, Extension::shape,     Extension::xfixes,
                                   Extension::xinput, Extension::res,       Extension::xkb};

// Extensions demand to be told which version the client speaks before their first use.
void announceVersion(xcb_connection_t* connection, Extension extension) {
  switch (extension) {
    case Extension::randr: xcb_discard_reply(connection, xcb_randr_query_version(connection, 1, 5).sequence); break;
    case Extension::composite:
      xcb_discard_reply(connection, xcb_composite_query_version(connection, 0, 4).sequence);
      break;
    case Extension::damage: xcb_discard_reply(connection, xcb_damage_query_version(connection, 1, 1).sequence); break;
    case Extension::render: xcb_discard_reply(connection, xcb_render_query_version(connection, 0, 11).sequence); break;
    case Extension::xfixes: xcb_discard_reply(connection, xcb_xfixes_query_version(connection, 5, 0).sequence); break;
    case Extension::xinput: xcb_discard_reply(connection, xcb_input_xi_query_version(connection, 2, 2).sequence); break;
    case Extension::res: xcb_discard_reply(connection, xcb_res_query_version(connection, 1, 2).sequence); break;
    case Extension::xkb: xcb_discard_reply(connection, xcb_xkb_use_extension(connection, 1, 0).sequence); break;
    case Extension::shape: break;
  }
}

const xcb_screen_t* screenOf(xcb_connection_t* connection, int number) {
  auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
  for (; number > 0 && screens.rem > 1; --number) xcb_screen_next(&screens);
  return screens.data;
}

void logError(const xcb_generic_error_t& error) {
  desktops::debugLog("X error " + std::to_string(error.error_code) + " of request " + std::to_string(error.major_code) +
                     "." + std::to_string(error.minor_code) + ", resource " + std::to_string(error.resource_id));
}

}  // namespace

std::unique_ptr<Connection> Connection::open(const char* displayName) {
  int screenNumber = 0;
  auto* connection = xcb_connect(displayName, &screenNumber);
  if (xcb_connection_has_error(connection)) {
    xcb_disconnect(connection);
    return nullptr;
  }
  return std::make_unique<Connection>(connection, screenNumber);
}

Connection::Connection(xcb_connection_t* connection, int screenNumber)
    : connection_(connection), screenNumber_(screenNumber), screen_(screenOf(connection, screenNumber)) {
  for (const auto extension : allExtensions) xcb_prefetch_extension_data(connection, extensionRecord(extension));
  prefetchAtoms();
  loadExtensions();
}

Connection::~Connection() {
  std::free(queued_);
}

void Connection::prefetchAtoms() {
  std::array<xcb_intern_atom_cookie_t, knownAtoms.size()> cookies;
  for (std::size_t index = 0; index < knownAtoms.size(); ++index)
    cookies[index] = xcb_intern_atom(get(), 0, knownAtoms[index].size(), knownAtoms[index].data());
  for (std::size_t index = 0; index < knownAtoms.size(); ++index) {
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(get(), cookies[index], nullptr));
    if (reply) atoms_.emplace(knownAtoms[index], reply->atom);
  }
}

void Connection::loadExtensions() {
  for (const auto extension : allExtensions) {
    const auto* data = xcb_get_extension_data(get(), extensionRecord(extension));
    if (!data || !data->present) continue;
    extensions_[extension] = {data->major_opcode, data->first_event, data->first_error};
    announceVersion(get(), extension);
  }
}

xcb_atom_t Connection::atom(std::string_view name) {
  if (const auto found = atoms_.find(name); found != atoms_.end()) return found->second;
  const Reply<xcb_intern_atom_reply_t> reply(
      xcb_intern_atom_reply(get(), xcb_intern_atom(get(), 0, name.size(), name.data()), nullptr));
  if (!reply) return XCB_ATOM_NONE;
  atoms_.emplace(name, reply->atom);
  return reply->atom;
}

std::optional<ExtensionInfo> Connection::extension(Extension extension) const {
  const auto found = extensions_.find(extension);
  return found == extensions_.end() ? std::nullopt : std::optional(found->second);
}

void Connection::selectRootEvents(std::uint32_t mask) {
  rootEvents_ |= mask;
  xcb_change_window_attributes(get(), root(), XCB_CW_EVENT_MASK, &rootEvents_);
}

platform::Token Connection::addEventHandler(std::function<void(const xcb_generic_event_t&)> handler) {
  return handlers_.add(std::move(handler));
}

platform::Token Connection::addErrorHandler(std::function<void(const xcb_generic_error_t&)> handler) {
  return errorHandlers_.add(std::move(handler));
}

bool Connection::hasQueuedEvent() {
  if (!queued_) queued_ = xcb_poll_for_queued_event(get());
  return queued_ != nullptr;
}

bool Connection::dispatchPending() {
  bool any = false;
  while (Reply<xcb_generic_event_t> event{queued_ ? std::exchange(queued_, nullptr) : xcb_poll_for_event(get())}) {
    any = true;
    deliver(*event);
  }
  return any;
}

void Connection::deliver(const xcb_generic_event_t& event) {
  if (event.response_type == 0) {
    const auto& error = reinterpret_cast<const xcb_generic_error_t&>(event);
    logError(error);
    return errorHandlers_.forEach([&error](const auto& handler) { handler(error); });
  }
  handlers_.forEach([&event](const auto& handler) { handler(event); });
}

}  // namespace hushpane::x11
