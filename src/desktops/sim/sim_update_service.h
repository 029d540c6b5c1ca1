#pragma once

#include <utility>

#include "desktops/sim/sim_main_queue.h"
#include "desktops/sim/storage.h"
#include "platform/update_service.h"

namespace hushpane::sim {

// A feed that says by script what it says.
class SimUpdateService : public platform::UpdateService {
 public:
  SimUpdateService(SimMainQueue& queue, Storage& storage) : queue_(queue), storage_(storage) {}

  void start(AnswerHandler handler) override {
    handler_ = std::move(handler);
    ++starts_;
  }
  bool automaticallyChecksForUpdates() const override { return storage_.checksForUpdates; }
  void setAutomaticallyChecksForUpdates(bool checks) override { storage_.checksForUpdates = checks; }
  void checkForUpdates() override { answer(true); }

  // What the checks find from here on.
  void setAnswer(platform::UpdateAnswer answer) { answer_ = std::move(answer); }
  // A scheduled check finds a newer version.
  void remind() { answer(false); }
  int starts() const { return starts_; }
  // For the end of a program.
  void forget() { handler_ = nullptr; }

 private:
  void answer(bool isUserInitiated) {
    queue_.async([this, isUserInitiated] {
      if (const auto handler = handler_) handler(answer_, isUserInitiated);
    });
  }

  SimMainQueue& queue_;
  Storage& storage_;
  platform::UpdateAnswer answer_;
  AnswerHandler handler_;
  int starts_ = 0;
};

}  // namespace hushpane::sim
