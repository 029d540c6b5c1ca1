#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "desktops/session/autostart_login_item.h"
#include "desktops/session/bus_service.h"
#include "desktops/session/dbus_application.h"
#include "desktops/session/dbus_notification_center.h"
#include "desktops/session/dbus_session.h"
#include "desktops/session/dbus_user_notifications.h"
#include "desktops/session/dbus_widget_center.h"
#include "desktops/session/main_queue.h"
#include "desktops/session/open_url.h"
#include "desktops/session/portal_appearance.h"
#include "desktops/session/portal_open_panel.h"
#include "desktops/session/run_loop.h"
#include "desktops/session/task_queue.h"
#include "desktops/session/wake_watch.h"
#include "desktops/shared/defaults_folder.h"
#include "desktops/shared/file_bookmarks.h"
#include "desktops/shared/fluid_gradient_renderer.h"
#include "desktops/shared/group_container.h"
#include "desktops/shared/image_file_loader.h"
#include "desktops/shared/json_text.h"
#include "desktops/shared/locale_environment.h"
#include "desktops/shared/pango_text.h"
#include "desktops/shared/property_list.h"
#include "desktops/shared/resource_bundle.h"
#include "desktops/x11/active_window.h"
#include "desktops/x11/compositor_watch.h"
#include "desktops/x11/connection.h"
#include "desktops/x11/covered_windows.h"
#include "desktops/x11/current_workspace.h"
#include "desktops/x11/event_monitors.h"
#include "desktops/x11/event_source.h"
#include "desktops/x11/frame_clock.h"
#include "desktops/x11/hot_keys.h"
#include "desktops/x11/keyboard_map.h"
#include "desktops/x11/manager_watch.h"
#include "desktops/x11/overlay_stage.h"
#include "desktops/x11/painted_background.h"
#include "desktops/x11/panels.h"
#include "desktops/x11/placement_choice.h"
#include "desktops/x11/render.h"
#include "desktops/x11/root_background.h"
#include "desktops/x11/screens.h"
#include "desktops/x11/status_item.h"
#include "desktops/x11/turn_end.h"
#include "desktops/x11/window_list.h"
#include "desktops/x11/window_tree.h"
#include "desktops/x11/workspace.h"
#include "desktops/x11/xsettings.h"
#include "platform/platform.h"

namespace hushpane::x11 {

// An X11 session as the program's desktop.
class X11Platform : public platform::Platform {
 public:
  // Another instance runs in this session and has taken the URLs.
  struct HandedOver {};
  // Why the program cannot run here, in one line.
  struct Failure {
    std::string message;
  };
  using Start = std::variant<std::unique_ptr<X11Platform>, HandedOver, Failure>;

  // To be called once in a process, with the URLs of the command line.
  static Start start(std::vector<std::string> urls);

  ~X11Platform() override;

  // Runs the main loop until the process is asked to end (SIGTERM, SIGINT, SIGHUP) or the X server is gone, which ends
  // the session. Returns the exit code of the process, 0 in both cases.
  int run();

  std::int32_t processIdentifier() const override;
  platform::Application& application() override { return base_->application; }
  platform::MainQueue& mainQueue() override { return base_->queue; }
  platform::FrameClock& frameClock() override { return frameClock_; }
  platform::TaskQueue& taskQueue() override { return taskQueue_; }
  platform::TextEngine& textEngine() override { return textEngine_; }
  platform::NotificationCenter& notificationCenter() override { return notificationCenter_; }
  platform::NotificationCenter& distributedNotificationCenter() override { return distributedCenter_; }
  platform::UserDefaults& userDefaults() override { return *standardDefaults_; }
  platform::UserDefaults* userDefaultsSuite(std::string_view name) override { return defaults_.open(name); }
  platform::PropertyLists& propertyLists() override { return propertyLists_; }
  platform::JsonCoder& jsonCoder() override { return jsonCoder_; }
  platform::SharedContainer& sharedContainer() override { return sharedContainer_; }
  platform::Bookmarks& bookmarks() override { return bookmarks_; }
  platform::Bundle& bundle() override { return bundle_; }
  platform::Locale& locale() override { return locale_; }
  platform::ImageLoader& imageLoader() override { return imageLoader_; }
  platform::Screens& screens() override { return screens_; }
  platform::Windows& windows() override { return stage_; }
  platform::Panels& panels() override { return panels_; }
  platform::StatusItem& statusItem() override { return statusItem_; }
  platform::SystemAppearance& appearance() override { return appearance_; }
  platform::GpuDevice* gpuDevice() override { return &gpu_; }
  platform::WindowList& windowList() override { return windowList_; }
  platform::Workspace& workspace() override { return workspace_; }
  platform::EventMonitors& eventMonitors() override { return eventMonitors_; }
  platform::HotKeys& hotKeys() override { return hotKeys_; }
  platform::OpenPanel* openPanel() override { return openPanel_.isAvailable() ? &openPanel_ : nullptr; }
  platform::WidgetCenter& widgetCenter() override { return widgetCenter_; }
  platform::LoginItem& loginItem() override { return loginItem_; }
  platform::UserNotifications& userNotifications() override { return userNotifications_; }
  platform::UpdateService& updateService() override { return *updateService_; }

 private:
  // What needs no display: it decides whether this process is the one that shows anything.
  struct Base {
    session::MainQueue queue;
    session::DbusSession session{queue};
    session::DbusApplication application{session, queue};
  };

  X11Platform(std::unique_ptr<Base> base, std::unique_ptr<Connection> connection);

  std::unique_ptr<Base> base_;
  session::RunLoop loop_;
  std::unique_ptr<Connection> connection_;
  TurnEnd turnEnd_;
  EventSource eventSource_;
  FrameClock frameClock_;
  platform::Animator animator_;
  platform::NotificationCenter notificationCenter_;
  session::DbusNotificationCenter distributedCenter_;
  session::DbusWidgetCenter widgetCenter_;
  desktops::DefaultsFolder defaults_;
  platform::UserDefaults* standardDefaults_;
  desktops::PropertyListFiles propertyLists_;
  desktops::PangoTextEngine textEngine_;
  desktops::JsonText jsonCoder_;
  desktops::FluidGradientRenderer gpu_;
  desktops::GroupContainer sharedContainer_;
  desktops::FileBookmarks bookmarks_;
  desktops::ResourceBundle bundle_;
  desktops::LocaleEnvironment locale_;
  desktops::ImageFileLoader imageLoader_;
  Screens screens_;
  ManagerWatch manager_;
  CompositorWatch compositor_;
  CurrentWorkspace currentWorkspace_;
  WindowTree tree_;
  ActiveWindow activeWindow_;
  session::BusService portal_;
  session::UrlOpener urls_{portal_};
  Workspace workspace_;
  session::WakeWatch wakeWatch_;
  WindowList windowList_;
  KeyboardMap keyboard_;
  EventMonitors eventMonitors_;
  HotKeys hotKeys_;
  Render render_;
  CoveredWindows coveredWindows_;
  PaintedBackground paintedBackground_;
  RootBackground rootBackground_;
  PlacementChoice placement_;
  OverlayStage stage_;
  Panels panels_{animator_, *connection_, base_->queue,   turnEnd_, render_,
                 screens_,  compositor_,  eventMonitors_, tree_};
  Xsettings xsettings_{*connection_};
  session::PortalAppearance appearance_{
      portal_,
      {.name = [this] { return xsettings_.text("Net/ThemeName"); },
       .observe = [this](std::function<void()> changed) { return xsettings_.addChangeHandler(std::move(changed)); }}};
  X11StatusItem statusItem_{
      {*connection_, render_, screens_, eventMonitors_, stage_, base_->queue}, base_->session, appearance_};
  session::PortalOpenPanel openPanel_{portal_, base_->queue};
  session::AutostartLoginItem loginItem_{session::ownProgram()};
  session::DbusUserNotifications userNotifications_{base_->session, urls_, base_->queue};
  std::unique_ptr<platform::UpdateService> updateService_;
  platform::Token activations_;
  session::TaskQueue taskQueue_;
};

}  // namespace hushpane::x11
