#pragma once

#include <glib.h>

#include <memory>

#include "desktops/shared/plist_defaults.h"
#include "desktops/sim/sim_main_queue.h"
#include "support/temporary_folder.h"

namespace hushpane::desktops::tests {

// Settings in a file, in virtual time; counts the notifications.
struct DefaultsStage {
  TemporaryFolder folder;
  std::filesystem::path file = folder / "settings/com.corvane.Hushpane.plist";
  sim::SimMainQueue queue;
  platform::NotificationCenter center;
  int notifications = 0;
  platform::Token observer =
      center.addObserver(platform::notification::userDefaultsDidChange, [this] { ++notifications; });
  std::unique_ptr<PlistDefaults> defaults;

  DefaultsStage() { std::filesystem::create_directory(file.parent_path()); }

  PlistDefaults& open() {
    defaults.reset();
    defaults = std::make_unique<PlistDefaults>(file, queue, center);
    return *defaults;
  }

  // Runs what the kernel has told of so far, then lets `seconds` pass.
  void run(double seconds = 1) {
    while (g_main_context_iteration(nullptr, false)) {
    }
    queue.advance(seconds);
  }

  // The notifications since the last call, once all is quiet.
  int takeNotifications() {
    run();
    return std::exchange(notifications, 0);
  }
};

}  // namespace hushpane::desktops::tests
