#pragma once

#include <string>

#include "desktops/session/bus_service.h"
#include "platform/lifetime.h"
#include "platform/main_queue.h"
#include "platform/open_panel.h"
#include "platform/token.h"

namespace hushpane::session {

// The file chooser of the desktop's portal; where it is missing or fails, a chooser program that is installed.
class PortalOpenPanel : public platform::OpenPanel {
 public:
  PortalOpenPanel(BusService& portal, platform::MainQueue& queue);

  // Whether there is one of the two at this moment. Costs a look into the folders of PATH.
  bool isAvailable() const;
  void run(Options options, Completion completion) override;

 private:
  void askPortal();
  void portalReplied(const std::optional<Glib::VariantContainerBase>& reply);
  void listenTo(const std::string& request);
  void responded(const Glib::VariantContainerBase& arguments);
  void askProgram();
  void finish(std::optional<std::filesystem::path> file);

  BusService& portal_;
  platform::MainQueue& queue_;
  Options options_;
  Completion completion_;  // empty: none is open
  unsigned requests_ = 0;
  std::string request_;  // the object of the portal that stands for the open panel
  platform::Token response_;
  platform::Token portalGone_;
  platform::Token busGone_;
  platform::Token program_;
  platform::Lifetime lifetime_;
};

}  // namespace hushpane::session
