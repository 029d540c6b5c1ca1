#pragma once

#include "platform/platform.h"
#include "state/observable_object.h"

namespace hushpane {

// Which page the panel shows: the welcome page before anything else, else the preferences, else the menu. Every launch
// begins with the menu. Announces its changes.
class AppRouter : public ObservableObject {
 public:
  static AppRouter& shared();
  explicit AppRouter(platform::Platform& platform) : platform_(platform) {}

  bool showingSettings() const { return showingSettings_; }
  void setShowingSettings(bool showing);
  bool showingWelcome() const { return showingWelcome_; }
  void setShowingWelcome(bool showing);

  // What the pages' controls ask for.
  void openSettings() { setShowingSettings(true); }
  // The user has dismissed the welcome page, which never comes back.
  void continueFromWelcome();

 private:
  platform::Platform& platform_;
  bool showingSettings_ = false;
  bool showingWelcome_ = false;
};

}  // namespace hushpane
