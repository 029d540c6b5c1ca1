#pragma once

#include <map>
#include <string>

#include "desktops/shared/file_bookmarks.h"
#include "desktops/shared/fluid_gradient_renderer.h"
#include "desktops/shared/json_text.h"
#include "desktops/shared/pango_text.h"
#include "desktops/shared/property_list.h"
#include "desktops/shared/resource_bundle.h"
#include "desktops/sim/compositor.h"
#include "desktops/sim/sim_application.h"
#include "desktops/sim/sim_bundle.h"
#include "desktops/sim/sim_event_monitors.h"
#include "desktops/sim/sim_frame_clock.h"
#include "desktops/sim/sim_hot_keys.h"
#include "desktops/sim/sim_image_loader.h"
#include "desktops/sim/sim_locale.h"
#include "desktops/sim/sim_login_item.h"
#include "desktops/sim/sim_main_queue.h"
#include "desktops/sim/sim_notification_center.h"
#include "desktops/sim/sim_open_panel.h"
#include "desktops/sim/sim_panels.h"
#include "desktops/sim/sim_pointer.h"
#include "desktops/sim/sim_screens.h"
#include "desktops/sim/sim_shared_container.h"
#include "desktops/sim/sim_status_item.h"
#include "desktops/sim/sim_system_appearance.h"
#include "desktops/sim/sim_task_queue.h"
#include "desktops/sim/sim_update_service.h"
#include "desktops/sim/sim_user_defaults.h"
#include "desktops/sim/sim_user_notifications.h"
#include "desktops/sim/sim_widget_center.h"
#include "desktops/sim/sim_window_list.h"
#include "desktops/sim/sim_window_server.h"
#include "desktops/sim/sim_workspace.h"
#include "desktops/sim/storage.h"
#include "platform/platform.h"

namespace hushpane::sim {

// The desktop in memory. Each service is the program's service and, with further operations, what a script does to it
// from outside. Time passes, and what comes from outside arrives, only in advance() and drain().
class SimPlatform : public platform::Platform {
 public:
  static inline const platform::Screen defaultScreen{{0, 0, 1440, 900}, 1, "Built-in Display", 1};

  explicit SimPlatform(Storage& storage, std::vector<platform::Screen> screens = {defaultScreen},
                       const std::filesystem::path& resources = desktops::resourceFolder());
  ~SimPlatform() override;

  std::int32_t processIdentifier() const override;
  SimApplication& application() override { return application_; }
  SimMainQueue& mainQueue() override { return queue_; }
  SimFrameClock& frameClock() override { return frameClock_; }
  SimTaskQueue& taskQueue() override { return taskQueue_; }
  platform::TextEngine& textEngine() override { return textEngine_; }
  SimNotificationCenter& notificationCenter() override { return notificationCenter_; }
  SimNotificationCenter& distributedNotificationCenter() override { return distributedCenter_; }
  SimUserDefaults& userDefaults() override { return standardDefaults_; }
  SimUserDefaults* userDefaultsSuite(std::string_view name) override;
  platform::PropertyLists& propertyLists() override { return propertyLists_; }
  platform::JsonCoder& jsonCoder() override { return jsonCoder_; }
  SimSharedContainer& sharedContainer() override { return sharedContainer_; }
  platform::Bookmarks& bookmarks() override { return bookmarks_; }
  SimBundle& bundle() override { return bundle_; }
  SimLocale& locale() override { return locale_; }
  SimImageLoader& imageLoader() override { return imageLoader_; }
  SimScreens& screens() override { return screens_; }
  SimWindowServer& windows() override { return windows_; }
  SimPanels& panels() override { return panels_; }
  SimStatusItem& statusItem() override { return statusItem_; }
  SimSystemAppearance& appearance() override { return appearance_; }
  platform::GpuDevice* gpuDevice() override { return gpu_; }
  SimWindowList& windowList() override { return windowList_; }
  SimWorkspace& workspace() override { return workspace_; }
  SimEventMonitors& eventMonitors() override { return eventMonitors_; }
  SimHotKeys& hotKeys() override { return hotKeys_; }
  SimOpenPanel* openPanel() override { return openPanelAbsent_ ? nullptr : &openPanel_; }
  SimWidgetCenter& widgetCenter() override { return widgetCenter_; }
  SimLoginItem& loginItem() override { return loginItem_; }
  SimUserNotifications& userNotifications() override { return userNotifications_; }
  SimUpdateService& updateService() override { return updateService_; }

  SimPointer& pointer() { return pointer_; }
  // The bar in which the program's icon stands.
  void setStatusBar(SimStatusItem::Bar bar);
  // A key goes down with the modifiers in force. Monitors see it whoever has it; false when it is somebody's hot key,
  // else it goes to the program's panel that takes keys, else to the window in front.
  bool typeKey(std::uint16_t keyCode);

  void drain() { queue_.drain(); }
  void advance(double seconds) { queue_.advance(seconds); }
  double now() const { return queue_.now(); }

  // From here on the gradient is drawn by this device, which outlives the desktop; null stands for none.
  void setGpuDevice(platform::GpuDevice* device) { gpu_ = device; }
  // From here on there is no panel to choose files in, or there is one again.
  void setOpenPanelAbsent(bool absent) { openPanelAbsent_ = absent; }

  // Ends the program as if its process had ended: its process-wide objects, what it queued, its handlers. The desktop
  // goes on, and the program can be started on it again.
  void endProgram();

  // What the screen shows at this moment, in its pixels.
  platform::Image render(const platform::Screen& screen);
  // The same of the main screen; nothing (0 by 0) when there is no screen.
  platform::Image render();
  // All screens in one picture, with the main screen's scale; transparent where there is no screen.
  platform::Image renderAll();
  // What is shown at a point of the desktop (0xAARRGGBB); nothing when no screen is there.
  std::optional<std::uint32_t> pixel(platform::Point point);

 private:
  std::function<void()> announceDefaults();
  Scene scene();

  Storage& storage_;
  SimMainQueue queue_;
  SimFrameClock frameClock_{queue_};
  platform::Animator animator_{queue_, frameClock_};
  SimNotificationCenter notificationCenter_{queue_};
  SimNotificationCenter distributedCenter_{queue_};
  SimApplication application_{queue_};
  SimScreens screens_;
  SimUserDefaults standardDefaults_;
  std::map<std::string, SimUserDefaults, std::less<>> suites_;
  bool defaultsAnnounced_ = false;
  desktops::FluidGradientRenderer gradientRenderer_;
  platform::GpuDevice* gpu_ = &gradientRenderer_;
  SimSharedContainer sharedContainer_;
  SimWindowServer windows_{queue_, animator_};
  SimWindowList windowList_;
  SimWorkspace workspace_;
  SimEventMonitors eventMonitors_{queue_};
  SimHotKeys hotKeys_{queue_};
  SimOpenPanel openPanel_{queue_};
  bool openPanelAbsent_ = false;
  SimWidgetCenter widgetCenter_;
  SimPanels panels_{animator_};
  SimStatusItem statusItem_{queue_, screens_};
  SimPointer pointer_{queue_, panels_, statusItem_, eventMonitors_};
  SimSystemAppearance appearance_{queue_};
  SimLoginItem loginItem_{storage_};
  SimUserNotifications userNotifications_{queue_};
  SimUpdateService updateService_{queue_, storage_};
  desktops::PangoTextEngine textEngine_;
  desktops::JsonText jsonCoder_;
  desktops::PropertyListFiles propertyLists_;
  desktops::FileBookmarks bookmarks_;
  SimBundle bundle_;
  SimLocale locale_;
  SimImageLoader imageLoader_;
  SimTaskQueue taskQueue_{queue_};
};

}  // namespace hushpane::sim
