#pragma once

#include <functional>
#include <optional>

#include "desktops/x11/connection.h"
#include "platform/color.h"
#include "platform/handler_list.h"

namespace hushpane::x11 {

// The tray of the screen, after the System Tray Protocol of freedesktop.org.
class SystemTray {
 public:
  explicit SystemTray(Connection& connection);

  // The window that manages the tray; none while there is no tray.
  xcb_window_t manager() const { return manager_; }

  // The visual in which the tray wants its icons. Waits for the server, as does the next.
  xcb_visualid_t iconVisual() const;
  // The colour that the tray gives to icons of one colour, where it tells.
  std::optional<platform::Color> foreground() const;

  // Asks the tray to take the window in, which carries its XEMBED description.
  void dock(xcb_window_t icon);

  // Called, while events are being handled, when a tray went, when one came, also in place of another, and when a tray
  // that is there began anew.
  platform::Token addChangeHandler(std::function<void()> handler) { return changes_.add(std::move(handler)); }
  // The same when the tray told other colours.
  platform::Token addColorHandler(std::function<void()> handler) { return colors_.add(std::move(handler)); }

 private:
  void handle(const xcb_generic_event_t& event);
  void readManager();
  void setManager(xcb_window_t manager);

  Connection& connection_;
  xcb_atom_t selection_;
  xcb_window_t manager_ = XCB_WINDOW_NONE;
  platform::HandlerList<void()> changes_;
  platform::HandlerList<void()> colors_;
  platform::Token events_;
};

}  // namespace hushpane::x11
