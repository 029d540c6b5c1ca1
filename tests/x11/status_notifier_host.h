#pragma once

#include <giomm/dbusconnection.h>
#include <giomm/dbusinterfacevtable.h>
#include <giomm/dbusmethodinvocation.h>
#include <glibmm/variant.h>

#include <map>
#include <string>
#include <vector>

#include "tests/x11/wait.h"

namespace hushpane::x11_tests {

// What desktops run to show status notifiers: a watcher and, at will, a host on a session bus. It answers while
// waitUntil() runs, which also runs everything else on GLib's default main context.
class StatusNotifierHost {
 public:
  explicit StatusNotifierHost(const std::string& busAddress, bool hasHost = true);
  ~StatusNotifierHost();
  StatusNotifierHost(const StatusNotifierHost&) = delete;
  StatusNotifierHost& operator=(const StatusNotifierHost&) = delete;

  static bool waitUntil(const std::function<bool()>& condition, milliseconds limit = patience);

  // The host comes or goes; the watcher stays.
  void setHost(bool hasHost);
  bool hasItem() const { return !item_.empty(); }
  // How often the item has sent that signal.
  int signals(const std::string& name) const;

  // A property of the item; null when it does not answer.
  Glib::VariantBase property(const std::string& name);
  std::string toolTip();
  // Its picture of that side, 0xAARRGGBB row by row; empty when there is none.
  std::vector<std::uint32_t> picture(int side);
  // One of the clicks of the protocol, at a place in pixels. False when the item does not answer.
  bool click(int x, int y, const std::string& method = "Activate");

 private:
  Glib::VariantContainerBase call(const std::string& interface, const std::string& method,
                                  const Glib::VariantContainerBase& arguments);
  void serve();

  Glib::RefPtr<Gio::DBus::Connection> connection_;
  Gio::DBus::InterfaceVTable table_;
  bool hasHost_;
  std::string item_;  // the name of its connection
  std::string path_;
  std::map<std::string, int> signals_;
};

}  // namespace hushpane::x11_tests
