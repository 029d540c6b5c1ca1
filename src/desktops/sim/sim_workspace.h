#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "desktops/sim/sim_notification_center.h"
#include "desktops/sim/sim_window_server.h"
#include "platform/image.h"
#include "platform/workspace.h"

namespace hushpane::sim {

// Who is in front, by script. The program hears of each change with the next turn of the main queue.
class SimWorkspace : public platform::Workspace {
 public:
  SimWorkspace(SimMainQueue& queue, SimWindowServer& server, std::int32_t ownPid);

  std::optional<platform::RunningApplication> frontmostApplication() override;
  std::optional<std::filesystem::path> desktopImageURL(const platform::Screen&) override { return desktopImageFile_; }
  bool openURL(const std::string& url) override;
  SimNotificationCenter& notificationCenter() override { return center_; }

  // The addresses that the program opened, the oldest first.
  const std::vector<std::string>& openedURLs() const { return openedURLs_; }
  // From here on there is no program for any address, or there is one again.
  void setOpensURLs(bool opens) { opensURLs_ = opens; }

  // Another program starts, without windows; returns its process id.
  std::int32_t launch(std::string name);
  // It ends, and its windows with it. When it was in front, nobody is.
  void quit(std::int32_t pid);
  // Brings all windows of an application to the front. Posts didActivateApplication.
  void activate(std::int32_t pid);
  // Brings one window to the front, and with it its application. Posts didActivateApplication. False when there is no
  // such window.
  bool activateWindow(platform::WindowNumber number);
  // The program itself comes to the front. Posts didActivateApplication.
  void activateOwnProgram();
  // From here on no application is in front.
  void deactivateAll() { frontmost_.reset(); }

  // From here on the desktop of every screen shows that picture, or its own drawing.
  void setDesktopImage(std::optional<std::filesystem::path> file);
  // Null when the desktop draws its own, also for a file that is no picture.
  const platform::ImagePtr& desktopImage() const { return desktopImage_; }

  // Posts activeSpaceDidChange.
  void switchSpace(int space);
  // Posts didWake.
  void wake();

 private:
  void bringToFront(std::int32_t pid);

  SimNotificationCenter center_;
  SimWindowServer& server_;
  std::map<std::int32_t, std::string> applications_;
  std::int32_t ownPid_;
  std::int32_t lastPid_;
  std::optional<std::int32_t> frontmost_;
  std::optional<std::filesystem::path> desktopImageFile_;
  platform::ImagePtr desktopImage_;
  std::vector<std::string> openedURLs_;
  bool opensURLs_ = true;
};

}  // namespace hushpane::sim
