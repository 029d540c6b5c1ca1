#include "desktops/x11/client_facts.h"

#include <algorithm>
#include <array>
#include <limits>
#include <string_view>
#include <utility>

#include "desktops/x11/property.h"
#include "desktops/x11/xcb_handle.h"

namespace hushpane::x11 {

namespace {

constexpr std::uint32_t longestList = 32;
constexpr std::uint32_t allWorkspaces = 0xffffffff;

constexpr std::array<std::pair<std::string_view, WindowKind>, 14> kinds{{
    {"_NET_WM_WINDOW_TYPE_NORMAL", WindowKind::normal},
    {"_NET_WM_WINDOW_TYPE_DIALOG", WindowKind::dialog},
    {"_NET_WM_WINDOW_TYPE_UTILITY", WindowKind::utility},
    {"_NET_WM_WINDOW_TYPE_TOOLBAR", WindowKind::toolbar},
    {"_NET_WM_WINDOW_TYPE_SPLASH", WindowKind::splash},
    {"_NET_WM_WINDOW_TYPE_MENU", WindowKind::menu},
    {"_NET_WM_WINDOW_TYPE_DROPDOWN_MENU", WindowKind::menu},
    {"_NET_WM_WINDOW_TYPE_POPUP_MENU", WindowKind::menu},
    {"_NET_WM_WINDOW_TYPE_COMBO", WindowKind::menu},
    {"_NET_WM_WINDOW_TYPE_TOOLTIP", WindowKind::tooltip},
    {"_NET_WM_WINDOW_TYPE_NOTIFICATION", WindowKind::notification},
    {"_NET_WM_WINDOW_TYPE_DND", WindowKind::dragIcon},
    {"_NET_WM_WINDOW_TYPE_DOCK", WindowKind::dock},
    {"_NET_WM_WINDOW_TYPE_DESKTOP", WindowKind::desktop},
}};

constexpr std::string_view shadowProperty = "_GTK_FRAME_EXTENTS";
constexpr std::string_view frameProperty = "_NET_FRAME_EXTENTS";
constexpr std::uint32_t insetsLength = 4;
constexpr std::uint32_t largestInset = 0x3ff;  // pixels; more is nonsense

constexpr std::array<std::string_view, 8> relevantProperties{
    "_NET_WM_WINDOW_TYPE",    "WM_TRANSIENT_FOR", "_NET_WM_STATE", "_NET_WM_PID",
    "_NET_WM_WINDOW_OPACITY", "_NET_WM_DESKTOP",  shadowProperty,  frameProperty};

std::optional<std::int32_t> positivePid(std::uint32_t value) {
  if (value == 0 || value > static_cast<std::uint32_t>(std::numeric_limits<std::int32_t>::max())) return std::nullopt;
  return static_cast<std::int32_t>(value);
}

// Left, right, top, bottom, as both properties have them.
Insets insetsIn(const std::vector<std::uint32_t>& values) {
  const bool isSensible = values.size() >= insetsLength &&
                          std::ranges::all_of(values, [](std::uint32_t value) { return value <= largestInset; });
  if (!isSensible) return {};
  const auto pixels = [&values](std::size_t index) { return static_cast<int>(values[index]); };
  return {pixels(0), pixels(1), pixels(2), pixels(3)};
}

}  // namespace

bool ClientFactsReader::isRelevant(xcb_atom_t property) {
  return std::ranges::any_of(relevantProperties, [&](auto name) { return connection_.atom(name) == property; });
}

void ClientFactsReader::read(const std::vector<StackEntry*>& entries) {
  std::vector<Request> requests;
  requests.reserve(entries.size());
  for (auto* entry : entries) requests.push_back(ask(*entry));
  for (const auto& request : requests) answer(request);
}

ClientFactsReader::Request ClientFactsReader::ask(StackEntry& entry) {
  const auto client = entry.clientOrSelf();
  Request request{};
  request.entry = &entry;
  request.types = askProperty(connection_, client, "_NET_WM_WINDOW_TYPE", longestList);
  request.states = askProperty(connection_, client, "_NET_WM_STATE", longestList);
  request.pid = askProperty(connection_, client, "_NET_WM_PID", 1);
  request.opacity = askProperty(connection_, client, "_NET_WM_WINDOW_OPACITY", 1);
  request.frameOpacity = askProperty(connection_, entry.id, "_NET_WM_WINDOW_OPACITY", 1);
  request.workspace = askProperty(connection_, client, "_NET_WM_DESKTOP", 1);
  request.owner = askProperty(connection_, client, "WM_TRANSIENT_FOR", 1);
  request.shadow = askProperty(connection_, client, shadowProperty, insetsLength);
  request.frame = askProperty(connection_, client, frameProperty, insetsLength);
  request.hasProcess = connection_.extension(Extension::res).has_value();
  if (request.hasProcess) request.process = askOwner(client);
  return request;
}

void ClientFactsReader::answer(const Request& request) {
  ClientFacts facts;
  // Windows for others are dialogs where they say nothing else (EWMH, _NET_WM_WINDOW_TYPE).
  if (!propertyValues(connection_, request.owner).empty()) facts.kind = WindowKind::dialog;
  for (const auto type : propertyValues(connection_, request.types)) {
    if (const auto kind = kindOf(type)) {
      facts.kind = *kind;
      break;
    }
  }
  bool isShaded = false;
  for (const auto state : propertyValues(connection_, request.states)) {
    if (state == connection_.atom("_NET_WM_STATE_ABOVE")) facts.isAbove = true;
    if (state == connection_.atom("_NET_WM_STATE_BELOW")) facts.isBelow = true;
    if (state == connection_.atom("_NET_WM_STATE_HIDDEN")) facts.isHidden = true;
    if (state == connection_.atom("_NET_WM_STATE_SHADED")) isShaded = true;
  }
  // Some managers call a window hidden of which the title shows.
  if (isShaded) facts.isHidden = false;
  const auto named = propertyValues(connection_, request.pid);
  if (request.hasProcess) facts.pid = ownerPid(request.process);
  if (!facts.pid && !named.empty()) facts.pid = positivePid(named.front());
  for (const auto cookie : {request.opacity, request.frameOpacity})
    for (const auto opacity : propertyValues(connection_, cookie))
      facts.opacity = std::min(facts.opacity, opacity / double{0xffffffff});
  for (const auto workspace : propertyValues(connection_, request.workspace))
    if (workspace != allWorkspaces) facts.workspace = workspace;
  facts.shadow = insetsIn(propertyValues(connection_, request.shadow));
  facts.frame = insetsIn(propertyValues(connection_, request.frame));
  request.entry->facts = facts;
  request.entry->hasFacts = true;
}

std::optional<std::int32_t> ClientFactsReader::readPid(xcb_window_t window) {
  const auto named = askProperty(connection_, window, "_NET_WM_PID", 1);
  std::optional<std::int32_t> pid;
  if (connection_.extension(Extension::res)) pid = ownerPid(askOwner(window));
  const auto value = propertyValues(connection_, named);
  return pid || value.empty() ? pid : positivePid(value.front());
}

xcb_res_query_client_ids_cookie_t ClientFactsReader::askOwner(xcb_window_t window) {
  const xcb_res_client_id_spec_t wanted{window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
  return xcb_res_query_client_ids(connection_.get(), 1, &wanted);
}

std::optional<std::int32_t> ClientFactsReader::ownerPid(xcb_res_query_client_ids_cookie_t cookie) {
  const Reply<xcb_res_query_client_ids_reply_t> reply(
      xcb_res_query_client_ids_reply(connection_.get(), cookie, nullptr));
  if (!reply) return std::nullopt;
  auto ids = xcb_res_query_client_ids_ids_iterator(reply.get());
  for (; ids.rem; xcb_res_client_id_value_next(&ids)) {
    if ((ids.data->spec.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID) == 0) continue;
    if (xcb_res_client_id_value_value_length(ids.data) < 1) continue;
    return positivePid(*xcb_res_client_id_value_value(ids.data));
  }
  return std::nullopt;
}

std::optional<WindowKind> ClientFactsReader::kindOf(xcb_atom_t type) {
  for (const auto& [name, kind] : kinds)
    if (connection_.atom(name) == type) return kind;
  return std::nullopt;
}

}  // namespace hushpane::x11
