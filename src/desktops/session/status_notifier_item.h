#pragma once

#include <giomm/dbusinterfacevtable.h>
#include <giomm/dbusmethodinvocation.h>
#include <glibmm/variant.h>

#include <functional>
#include <string>

#include "desktops/session/dbus_session.h"
#include "platform/lifetime.h"
#include "platform/status_item.h"
#include "platform/system_appearance.h"
#include "platform/token.h"

namespace hushpane::session {

// The program's icon as a StatusNotifierItem on the session bus, after the protocol of that name by freedesktop.org. A
// watcher on the bus hands it to a host, which shows it; it registers whenever a watcher comes, on whatever bus. Hosts
// show its pictures as they are, on bars that may be dark where programs are light, or the other way round: it is white
// or nearly black as the desktop is, with a rim of the other.
class StatusNotifierItem {
 public:
  // Whether a host shows the icon. Unknown while the bus is being asked.
  enum class Hosting { unknown, absent, present };

  // Called from the main loop.
  struct Handlers {
    std::function<void(int x, int y)> activated;  // pixels of the root; 0 and 0 where the host does not tell
    std::function<void()> hostingChanged;
  };

  StatusNotifierItem(DbusSession& session, platform::SystemAppearance& appearance, Handlers handlers);
  ~StatusNotifierItem();
  StatusNotifierItem(const StatusNotifierItem&) = delete;
  StatusNotifierItem& operator=(const StatusNotifierItem&) = delete;

  // Registers with the first image.
  void setImage(platform::TemplateImage image);
  void setToolTip(std::string text);

  Hosting hosting() const { return hosting_; }

 private:
  using Invocation = Glib::RefPtr<Gio::DBus::MethodInvocation>;

  void join();
  void leave();
  bool serve();
  void watcherAppeared();
  void watcherVanished();
  void registerWithWatcher();
  void askForHost();
  void setHosting(Hosting hosting);
  void handleCall(const Glib::ustring& method, const Glib::VariantContainerBase& arguments,
                  const Invocation& invocation);
  Glib::VariantBase property(const Glib::ustring& name);
  void emit(const char* signal);
  void pictureChanged();

  DbusSession& session_;
  platform::SystemAppearance& appearance_;
  Handlers handlers_;
  Gio::DBus::InterfaceVTable table_;
  platform::TemplateImage image_;
  std::string toolTip_;
  Glib::VariantBase pictures_;          // null until somebody asks
  DbusSession::Connection connection_;  // on which it is served; null before the first image
  unsigned registration_ = 0, watch_ = 0, hostSignals_ = 0;
  unsigned watcher_ = 0;  // counts the watchers that came and went
  bool isRegistered_ = false;
  Hosting hosting_ = Hosting::unknown;
  platform::Token rejoined_, appearanceChanges_;
  platform::Lifetime lifetime_;
};

}  // namespace hushpane::session
