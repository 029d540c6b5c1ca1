#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <utility>

#include "platform/main_queue.h"
#include "state/veil_mode.h"

namespace hushpane::widget {

// The mode that the program and its widgets share, as it is stored at the moment of each call. The program may run or
// not.
class SharedMode {
 public:
  // Where users keep what programs store, without the program's own part; they need not exist.
  struct Homes {
    std::optional<std::filesystem::path> data;
    std::optional<std::filesystem::path> settings;
  };

  SharedMode(Homes homes, platform::MainQueue& queue) : homes_(std::move(homes)), queue_(queue) {}

  // The file that is read first; nothing when there can be none.
  std::optional<std::filesystem::path> file() const;

  // The mode that is stored, standard when it is none that users can choose. Makes no file and no folder.
  VeilMode read() const;
  // Stores the mode and keeps what else is stored there; false when it could not be stored anywhere.
  bool write(VeilMode mode) const;

 private:
  class Access;

  std::optional<std::string> storedText() const;

  Homes homes_;
  platform::MainQueue& queue_;
};

}  // namespace hushpane::widget
