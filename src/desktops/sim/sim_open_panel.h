#pragma once

#include <optional>

#include "desktops/sim/sim_main_queue.h"
#include "platform/open_panel.h"

namespace hushpane::sim {

// The user at the panel, by script. What is done there reaches the program with the next turn of the main queue.
class SimOpenPanel : public platform::OpenPanel {
 public:
  explicit SimOpenPanel(SimMainQueue& queue) : queue_(queue) {}

  void run(Options options, Completion completion) override;

  bool isOpen() const { return static_cast<bool>(completion_); }
  // Of the panel that was shown last.
  const Options& options() const { return options_; }
  // How often a panel was shown.
  int openings() const { return openings_; }

  // Both do nothing when no panel is open.
  void choose(std::filesystem::path file) { close(std::move(file)); }
  void cancel() { close(std::nullopt); }
  // For the end of a program.
  void forget() { completion_ = nullptr; }

 private:
  void close(std::optional<std::filesystem::path> file);

  SimMainQueue& queue_;
  Options options_;
  Completion completion_;
  int openings_ = 0;
};

}  // namespace hushpane::sim
