#include "desktops/x11/work_area.h"

#include <algorithm>
#include <cstdint>
#include <string>

#include "desktops/x11/property.h"
#include "desktops/x11/root_bounds.h"

namespace hushpane::x11 {

namespace {

constexpr std::size_t valuesPerArea = 4;  // x, y, width, height
constexpr std::uint32_t longestList = 1024;

std::vector<PixelRect> areasIn(const std::vector<std::uint32_t>& values) {
  const auto number = [&](std::size_t index) {
    return std::clamp(static_cast<std::int32_t>(values[index]), -0x7fff, 0x7fff);
  };
  std::vector<PixelRect> areas;
  for (std::size_t first = 0; first + valuesPerArea <= values.size(); first += valuesPerArea)
    areas.push_back({number(first), number(first + 1), number(first + 2), number(first + 3)});
  return areas;
}

std::int64_t sizeOf(const PixelRect& area) {
  return std::int64_t{area.width} * area.height;
}

bool isEnough(const PixelRect& area, const PixelRect& screen) {
  return sizeOf(area) * 3 >= sizeOf(screen);
}

// The one of the areas that lies on the screen.
std::optional<PixelRect> areaOn(const PixelRect& screen, const std::vector<PixelRect>& areas) {
  const auto found = std::ranges::find_if(areas, [&](const PixelRect& area) {
    return !area.isEmpty() && area.intersection(screen) == area && isEnough(area, screen);
  });
  return found == areas.end() ? std::nullopt : std::optional(*found);
}

// Whether a bar that takes so much of an edge of the root window says so itself.
bool isTold(Strut::Edge edge, int depth, std::span<const Strut> struts) {
  const bool isUpright = edge == Strut::Edge::left || edge == Strut::Edge::right;
  return std::ranges::any_of(struts, [&](const Strut& strut) {
    return strut.edge == edge && (isUpright ? strut.area.width : strut.area.height) >= depth;
  });
}

PixelRect withinOuterEdges(const PixelRect& screen, std::span<const Strut> struts, const PixelRect& all,
                           const PixelRect& root) {
  int left = screen.x, top = screen.y, right = screen.right(), bottom = screen.bottom();
  using Edge = Strut::Edge;
  if (left == root.x && !isTold(Edge::left, all.x - root.x, struts)) left = std::max(left, all.x);
  if (top == root.y && !isTold(Edge::top, all.y - root.y, struts)) top = std::max(top, all.y);
  if (right == root.right() && !isTold(Edge::right, root.right() - all.right(), struts))
    right = std::min(right, all.right());
  if (bottom == root.bottom() && !isTold(Edge::bottom, root.bottom() - all.bottom(), struts))
    bottom = std::min(bottom, all.bottom());
  return {left, top, right - left, bottom - top};
}

}  // namespace

WorkAreas readWorkAreas(Connection& connection) {
  const auto root = connection.root();
  const auto allCookie = askProperty(connection, root, "_NET_WORKAREA", longestList);
  const auto current = propertyValue(connection, root, "_NET_CURRENT_DESKTOP").value_or(0);
  const auto all = areasIn(propertyValues(connection, allCookie));
  WorkAreas areas;
  areas.monitors = areasIn(propertyValues(connection, root, "_GTK_WORKAREAS_D" + std::to_string(current), longestList));
  if (!all.empty()) areas.all = all[current < all.size() ? current : 0];
  areas.root = rootBounds(connection);
  return areas;
}

PixelRect freeArea(const PixelRect& screen, std::span<const Strut> struts, const WorkAreas& areas) {
  const auto left = withoutStruts(screen, struts);
  auto allowed = areaOn(screen, areas.monitors);
  if (!allowed && areas.all) allowed = withinOuterEdges(screen, struts, *areas.all, areas.root);
  const auto free = allowed ? left.intersection(*allowed) : left;
  return isEnough(free, screen) ? free : left;
}

}  // namespace hushpane::x11
