#pragma once

#include <functional>
#include <string>
#include <vector>

namespace hushpane::platform {

enum class ActivationPolicy {
  regular,
  accessory,  // in no task list, never in front by itself
};

// This program as the desktop knows it.
class Application {
 public:
  virtual ~Application() = default;

  virtual void setActivationPolicy(ActivationPolicy policy) = 0;

  // Asks for the front place, even while another program has it. A program without a window that takes input has
  // nothing to bring there, and stays where it is.
  virtual void activateIgnoringOtherApps(bool ignoresOthers) = 0;

  // Ends the program, soon.
  virtual void terminate() = 0;

  // Called on the main queue when the user starts the program a second time. A start that came before a handler was set
  // is told as soon as there is one.
  virtual void setReopenHandler(std::function<void()> handler) = 0;

  // Called on the main queue with the URLs that someone opened with this program, those of its own command line
  // included. URLs that came before a handler was set are delivered as soon as there is one.
  virtual void setOpenUrlsHandler(std::function<void(std::vector<std::string>)> handler) = 0;
};

}  // namespace hushpane::platform
