#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace hushpane::platform {

// Lets the user choose a file.
class OpenPanel {
 public:
  struct Options {
    std::string title;
    std::string prompt;               // on the button that confirms
    bool imagesOnly = false;          // else any file; never a folder
    std::filesystem::path directory;  // where the user starts; empty: the home folder
  };
  using Completion = std::function<void(std::optional<std::filesystem::path>)>;

  virtual ~OpenPanel() = default;

  // Shows the panel above ordinary windows and returns. The completion follows on the main queue, once, with the file
  // chosen; with nothing when the user thought better of it, when the panel cannot be shown, or when another one is
  // open, which then stays. When the desktop ends first, it is never called.
  virtual void run(Options options, Completion completion) = 0;
};

}  // namespace hushpane::platform
