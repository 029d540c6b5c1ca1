#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "platform/main_queue.h"
#include "platform/notification_center.h"
#include "platform/update_service.h"
#include "platform/user_defaults.h"

namespace hushpane::session {

// The service of updates as the file update.conf in the folder of resources configures it, for a program of that
// version.
std::unique_ptr<platform::UpdateService> makeInstalledUpdateFeed(platform::MainQueue& queue,
                                                                 platform::UserDefaults& defaults,
                                                                 platform::NotificationCenter& center,
                                                                 const std::filesystem::path& resources,
                                                                 const std::string& version);

}  // namespace hushpane::session
