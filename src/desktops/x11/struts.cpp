#include "desktops/x11/struts.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "desktops/x11/property.h"
#include "desktops/x11/xcb_handle.h"

namespace hushpane::x11 {

namespace {

constexpr std::uint32_t longestClientList = 4096;
constexpr std::size_t edgeCount = 4;  // in the order of Strut::Edge
constexpr std::array edges{Strut::Edge::left, Strut::Edge::right, Strut::Edge::top, Strut::Edge::bottom};

// _NET_WM_STRUT_PARTIAL: the four widths, then where each begins and ends. _NET_WM_STRUT: the widths alone.
constexpr std::uint32_t partialLength = 12;

struct Root {
  PixelRect bounds;
  std::vector<xcb_window_t> windows;  // its children, and the applications' windows inside them
};

Root readRoot(Connection& connection) {
  auto* const server = connection.get();
  const auto geometryCookie = xcb_get_geometry(server, connection.root());
  const auto treeCookie = xcb_query_tree(server, connection.root());
  const auto clientsCookie = askProperty(connection, connection.root(), "_NET_CLIENT_LIST", longestClientList);
  const Reply<xcb_get_geometry_reply_t> geometry(xcb_get_geometry_reply(server, geometryCookie, nullptr));
  const Reply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(server, treeCookie, nullptr));
  Root root;
  root.windows = propertyValues(connection, clientsCookie);
  if (geometry) root.bounds = {0, 0, geometry->width, geometry->height};
  if (tree) {
    const auto* first = xcb_query_tree_children(tree.get());
    root.windows.insert(root.windows.end(), first, first + xcb_query_tree_children_length(tree.get()));
  }
  return root;
}

PixelRect areaOf(Strut::Edge edge, int width, int begin, int length, const PixelRect& root) {
  switch (edge) {
    case Strut::Edge::left: return {0, begin, width, length};
    case Strut::Edge::right: return {root.width - width, begin, width, length};
    case Strut::Edge::top: return {begin, 0, length, width};
    case Strut::Edge::bottom: return {begin, root.height - width, length, width};
  }
  return {};
}

void addStruts(std::vector<Strut>& struts, const std::vector<std::uint32_t>& values, const PixelRect& root) {
  const auto pixels = [](std::uint32_t value) { return static_cast<int>(std::min<std::uint32_t>(value, 0x7fff)); };
  for (std::size_t index = 0; index < edgeCount; ++index) {
    if (pixels(values[index]) == 0) continue;
    const bool isPartial = values.size() >= partialLength;
    const int begin = isPartial ? pixels(values[edgeCount + 2 * index]) : 0;
    const int end = isPartial ? pixels(values[edgeCount + 2 * index + 1]) : 0;
    const int last = end > 0 ? end : 0x7fff;  // bars that say nothing mean the whole edge
    struts.push_back({edges[index], areaOf(edges[index], pixels(values[index]), begin, last - begin + 1, root)});
  }
}

}  // namespace

std::vector<Strut> readStruts(Connection& connection) {
  struct Question {
    xcb_get_window_attributes_cookie_t attributes;
    xcb_get_property_cookie_t partial, whole;
  };
  const auto root = readRoot(connection);
  std::vector<Question> questions;
  for (const auto window : root.windows)
    questions.push_back({xcb_get_window_attributes(connection.get(), window),
                         askProperty(connection, window, "_NET_WM_STRUT_PARTIAL", partialLength),
                         askProperty(connection, window, "_NET_WM_STRUT", partialLength)});
  std::vector<Strut> struts;
  for (const auto& question : questions) {
    const Reply<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(connection.get(), question.attributes, nullptr));
    const auto partial = propertyValues(connection, question.partial);
    const auto whole = propertyValues(connection, question.whole);
    if (!attributes || attributes->map_state != XCB_MAP_STATE_VIEWABLE) continue;
    if (partial.size() >= partialLength)
      addStruts(struts, partial, root.bounds);
    else if (whole.size() >= edgeCount)
      addStruts(struts, {whole.begin(), whole.begin() + edgeCount}, root.bounds);
  }
  return struts;
}

PixelRect withoutStruts(const PixelRect& screen, std::span<const Strut> struts) {
  int left = screen.x, top = screen.y, right = screen.right(), bottom = screen.bottom();
  for (const auto& [edge, area] : struts) {
    const auto taken = area.intersection(screen);
    const bool isUpright = edge == Strut::Edge::left || edge == Strut::Edge::right;
    const bool isTooMuch = isUpright ? taken.width * 3 > screen.width : taken.height * 3 > screen.height;
    if (taken.isEmpty() || isTooMuch) continue;
    switch (edge) {
      case Strut::Edge::left: left = std::max(left, taken.right()); break;
      case Strut::Edge::right: right = std::min(right, taken.x); break;
      case Strut::Edge::top: top = std::max(top, taken.bottom()); break;
      case Strut::Edge::bottom: bottom = std::min(bottom, taken.y); break;
    }
  }
  return {left, top, right - left, bottom - top};
}

}  // namespace hushpane::x11
