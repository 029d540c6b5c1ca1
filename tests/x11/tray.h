#pragma once

#include <fstream>
#include <optional>

#include "tests/x11/process.h"
#include "tests/x11/x_connection.h"

namespace hushpane::x11_tests {

// tint2 with nothing but a system tray, as wide as the screen along one of its edges. Goes with this object.
class Tray {
 public:
  enum class Edge { top, bottom };
  static constexpr int height = 30;  // pixels, mostly; the icons have 22
  struct Look {
    Pixel ground;
    Edge edge = Edge::bottom;
    int height = Tray::height;
  };

  Tray(const Environment& environment, const std::filesystem::path& folder, const XConnection& x, const Look& look)
      : x_(x), process_({"tint2", "-c", configuration(folder, look)}, environment, folder) {
    if (!waitUntil([&] { return isRunning(x); })) throw std::runtime_error("tint2 did not start: " + process_.errors());
  }
  ~Tray() {
    process_.terminate();
    waitUntil([&] { return !isRunning(x_); });
  }

  static bool isRunning(const XConnection& x) {
    const auto owner = own(xcb_get_selection_owner_reply(
        x.get(), xcb_get_selection_owner(x.get(), x.atom("_NET_SYSTEM_TRAY_S0")), nullptr));
    return owner && owner->owner != XCB_NONE;
  }

  // The program's icon, wherever in the tree it is; nothing when there is none on screen.
  static std::optional<xcb_window_t> icon(const XConnection& x) { return iconIn(x, x.root()); }
  static std::optional<Rect> iconFrame(const XConnection& x) {
    const auto window = icon(x);
    return window ? std::optional(x.bounds(*window)) : std::nullopt;
  }

 private:
  static std::optional<xcb_window_t> iconIn(const XConnection& x, xcb_window_t parent) {
    const auto tree = own(xcb_query_tree_reply(x.get(), xcb_query_tree(x.get(), parent), nullptr));
    if (!tree) return std::nullopt;
    const auto* const children = xcb_query_tree_children(tree.get());
    for (int index = 0; index < xcb_query_tree_children_length(tree.get()); ++index) {
      const auto child = children[index];
      const bool isIcon = !x.numbers(child, "_XEMBED_INFO").empty() && x.text(child, "_NET_WM_NAME") == "Hushpane";
      if (isIcon && x.isOnScreen(child)) return child;
      if (const auto found = iconIn(x, child)) return found;
    }
    return std::nullopt;
  }

  static std::string configuration(const std::filesystem::path& folder, const Look& look) {
    const std::filesystem::path file = folder / "tint2rc";
    std::ofstream text(file);
    text << "rounded = 0\nborder_width = 0\nbackground_color = #" << std::hex << std::setw(6) << std::setfill('0')
         << look.ground.value << std::dec << " 100\n"
         << "panel_items = S\npanel_background_id = 1\npanel_monitor = all\npanel_position = "
         << (look.edge == Edge::top ? "top" : "bottom") << " center horizontal\npanel_size = 100% " << look.height
         << "\npanel_padding = 4 0 0\nstrut_policy = follow_size\n"
         << "systray_background_id = 0\nsystray_padding = 0 0 4\nsystray_icon_size = 22\nsystray_icon_asb = 100 0 0\n";
    return file.string();
  }

  const XConnection& x_;
  Process process_;
};

}  // namespace hushpane::x11_tests
