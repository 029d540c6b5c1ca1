#include "desktops/sim/sim_open_panel.h"

#include <utility>

namespace hushpane::sim {

void SimOpenPanel::run(Options options, Completion completion) {
  if (isOpen()) return queue_.async([completion = std::move(completion)] { completion(std::nullopt); });
  ++openings_;
  options_ = std::move(options);
  completion_ = std::move(completion);
}

void SimOpenPanel::close(std::optional<std::filesystem::path> file) {
  if (!isOpen()) return;
  queue_.async([completion = std::exchange(completion_, nullptr), file = std::move(file)] { completion(file); });
}

}  // namespace hushpane::sim
