#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "desktops/shared/update_configuration.h"
#include "platform/lifetime.h"
#include "platform/main_queue.h"
#include "platform/token.h"
#include "platform/update_service.h"

namespace hushpane::session {

// Asks the feed of updates through a small program of its own, hushpane-update-check, which reads and judges what the
// network sends: nothing of that reaches this process but one line, and none of the libraries for it are loaded here.
// What it sends is one request for the feed, with the program's name and version and nothing that tells users apart.
class UpdateCheck {
 public:
  UpdateCheck(std::filesystem::path program, desktops::UpdateConfiguration configuration, std::string version,
              platform::MainQueue& queue);

  // The answer follows once, from the main loop; `unreachable` when the program is missing, fails, or takes too long.
  // Dropping the token ends the check.
  platform::Token run(std::function<void(platform::UpdateAnswer)> answer) const;

 private:
  std::filesystem::path program_;
  desktops::UpdateConfiguration configuration_;
  std::string version_;
  platform::MainQueue& queue_;
};

// The program for the binary at that place: beside it (a build tree), else in libexec/hushpane below the prefix that
// the binary was installed under.
std::filesystem::path updateCheckProgram(const std::filesystem::path& binary);

}  // namespace hushpane::session
