#pragma once

#include <giomm/dbusinterfacevtable.h>
#include <giomm/dbusmethodinvocation.h>

#include <functional>
#include <string>
#include <vector>

#include "desktops/session/dbus_session.h"
#include "platform/application.h"

namespace hushpane::session {

// The program as the bus knows it: one instance in the session, which owns the program's name and serves
// org.freedesktop.Application. Without a bus every start is the only instance.
class DbusApplication : public platform::Application {
 public:
  enum class Claim {
    first,       // this process is the instance
    handedOver,  // another one is, and has taken the URLs
    unanswered,  // another one is, but it did not answer
  };

  DbusApplication(DbusSession& session, platform::MainQueue& queue);
  ~DbusApplication() override;

  // To be called once, before anything is shown, with the URLs of the command line; unless the answer is `first`, the
  // process is to end.
  Claim claim(std::vector<std::string> urls);

  // What terminate() does, on the main queue.
  void setTerminate(std::function<void()> terminate) { terminate_ = std::move(terminate); }

  // Nothing of this program is in a task list or comes to the front by itself, so there is nothing to set.
  void setActivationPolicy(platform::ActivationPolicy) override {}
  void activateIgnoringOtherApps(bool) override {}
  void terminate() override;
  void setReopenHandler(std::function<void()> handler) override;
  void setOpenUrlsHandler(std::function<void(std::vector<std::string>)> handler) override;

 private:
  using Invocation = Glib::RefPtr<Gio::DBus::MethodInvocation>;

  void serve();
  void reclaim();
  void handleCall(const Glib::ustring& method, const Glib::VariantContainerBase& arguments,
                  const Invocation& invocation);
  void handleOpen(const Glib::VariantContainerBase& arguments, const Invocation& invocation);
  void open(std::vector<std::string> urls);
  void reopen();
  void deliver();

  DbusSession& session_;
  platform::MainQueue& queue_;
  Gio::DBus::InterfaceVTable table_;
  unsigned registration_ = 0;
  std::function<void()> terminate_;
  std::function<void()> reopenHandler_;
  bool isReopenWaiting_ = false;
  std::function<void(std::vector<std::string>)> handler_;
  std::vector<std::vector<std::string>> waiting_;  // one list for each request to open
  platform::Token rejoined_;
  platform::Lifetime lifetime_;
};

}  // namespace hushpane::session
