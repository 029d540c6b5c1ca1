#pragma once

#include <optional>

#include "desktops/sim/sim_main_queue.h"
#include "platform/application.h"

namespace hushpane::sim {

class SimApplication : public platform::Application {
 public:
  explicit SimApplication(SimMainQueue& queue) : queue_(queue) {}

  void setActivationPolicy(platform::ActivationPolicy policy) override {
    activationPolicy_ = policy;
    isTerminated_ = false;
  }
  void activateIgnoringOtherApps(bool) override { ++activations_; }
  void terminate() override;
  void setReopenHandler(std::function<void()> handler) override { reopenHandler_ = std::move(handler); }
  void setOpenUrlsHandler(std::function<void(std::vector<std::string>)> handler) override;

  // Nothing until the program chose one.
  std::optional<platform::ActivationPolicy> activationPolicy() const { return activationPolicy_; }
  // How often the program asked to be in front.
  int activations() const { return activations_; }
  // Somebody opens URLs with this program.
  void openUrls(std::vector<std::string> urls);
  // Somebody starts the program a second time.
  void reopen();
  // Whether the program has ended itself since it was started.
  bool isTerminated() const { return isTerminated_; }
  // Ends the program for terminate(), with the next turn of the main queue.
  void setTerminate(std::function<void()> terminate) { terminate_ = std::move(terminate); }
  // For the end of a program.
  void forget();

 private:
  void deliver();

  SimMainQueue& queue_;
  std::optional<platform::ActivationPolicy> activationPolicy_;
  int activations_ = 0;
  bool isTerminated_ = false;
  std::function<void()> terminate_;
  std::function<void()> reopenHandler_;
  std::function<void(std::vector<std::string>)> handler_;
  std::vector<std::vector<std::string>> waiting_;
};

}  // namespace hushpane::sim
