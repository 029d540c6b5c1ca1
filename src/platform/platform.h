#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>
#include <typeindex>
#include <utility>
#include <vector>

#include "platform/application.h"
#include "platform/bookmarks.h"
#include "platform/bundle.h"
#include "platform/event_monitors.h"
#include "platform/frame_clock.h"
#include "platform/gpu_device.h"
#include "platform/hot_keys.h"
#include "platform/image.h"
#include "platform/image_loader.h"
#include "platform/json.h"
#include "platform/locale.h"
#include "platform/login_item.h"
#include "platform/main_queue.h"
#include "platform/notification_center.h"
#include "platform/open_panel.h"
#include "platform/panel.h"
#include "platform/property_list.h"
#include "platform/screen.h"
#include "platform/status_item.h"
#include "platform/system_appearance.h"
#include "platform/task_queue.h"
#include "platform/text.h"
#include "platform/update_service.h"
#include "platform/user_defaults.h"
#include "platform/user_notifications.h"
#include "platform/widget_center.h"
#include "platform/window.h"
#include "platform/window_list.h"
#include "platform/workspace.h"

namespace hushpane::platform {

// The desktop as the program sees it, and the owner of the program's process-wide objects: its life is the life of
// the process. Every failure below is a value; nothing throws, and nothing is shown to the user. Main thread only.
class Platform {
 public:
  Platform();
  virtual ~Platform();
  Platform(const Platform&) = delete;
  Platform& operator=(const Platform&) = delete;

  // The one that exists; there is at most one at a time.
  static Platform& current();

  virtual std::int32_t processIdentifier() const = 0;
  virtual Application& application() = 0;
  virtual MainQueue& mainQueue() = 0;
  virtual FrameClock& frameClock() = 0;
  virtual TaskQueue& taskQueue() = 0;
  virtual TextEngine& textEngine() = 0;
  virtual NotificationCenter& notificationCenter() = 0;             // within the process
  virtual NotificationCenter& distributedNotificationCenter() = 0;  // among the user's processes
  virtual UserDefaults& userDefaults() = 0;
  virtual UserDefaults* userDefaultsSuite(std::string_view name) = 0;  // null when it cannot be opened
  virtual PropertyLists& propertyLists() = 0;
  virtual JsonCoder& jsonCoder() = 0;
  virtual SharedContainer& sharedContainer() = 0;
  virtual Bookmarks& bookmarks() = 0;
  virtual Bundle& bundle() = 0;
  virtual Locale& locale() = 0;
  virtual ImageLoader& imageLoader() = 0;
  virtual Screens& screens() = 0;
  virtual Windows& windows() = 0;
  virtual Panels& panels() = 0;
  virtual StatusItem& statusItem() = 0;
  virtual SystemAppearance& appearance() = 0;
  virtual GpuDevice* gpuDevice() = 0;  // null when there is none
  virtual WindowList& windowList() = 0;
  virtual Workspace& workspace() = 0;
  virtual EventMonitors& eventMonitors() = 0;
  virtual HotKeys& hotKeys() = 0;
  virtual OpenPanel* openPanel() = 0;  // null when there is none
  virtual WidgetCenter& widgetCenter() = 0;
  virtual LoginItem& loginItem() = 0;
  virtual UserNotifications& userNotifications() = 0;
  virtual UpdateService& updateService() = 0;

  // The one object of that type in this process, made by `make(platform)` on first use.
  template <class Type, class Factory>
  Type& instance(Factory make) {
    if (void* found = find(typeid(Type))) return *static_cast<Type*>(found);
    std::shared_ptr<Type> made = make(*this);
    Type& reference = *made;
    instances_.emplace_back(typeid(Type), std::move(made));
    return reference;
  }
  template <class Type>
  Type& instance() {
    return instance<Type>([](Platform& platform) { return std::make_shared<Type>(platform); });
  }

 protected:
  // Ends the process-wide objects, the latest first. A desktop calls it first in its destructor, while its services
  // still stand.
  void releaseInstances();

 private:
  void* find(std::type_index type) const;

  std::vector<std::pair<std::type_index, std::shared_ptr<void>>> instances_;
};

}  // namespace hushpane::platform
