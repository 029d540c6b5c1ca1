#pragma once

#include <functional>
#include <optional>
#include <utility>

#include "desktops/sim/sim_main_queue.h"
#include "platform/handler_list.h"
#include "platform/system_appearance.h"

namespace hushpane::sim {

// The user's choice, by script. The program hears of a change with the next turn of the main queue.
class SimSystemAppearance : public platform::SystemAppearance {
 public:
  explicit SimSystemAppearance(SimMainQueue& queue) : queue_(queue) {}

  bool isDark() const override { return isDark_; }
  std::optional<platform::Color> accentColor() const override { return accent_; }
  platform::Token observe(std::function<void()> observer) override { return observers_.add(std::move(observer)); }

  void setDark(bool isDark) {
    isDark_ = isDark;
    tell();
  }
  void setAccentColor(std::optional<platform::Color> color) {
    accent_ = color;
    tell();
  }

 private:
  void tell() {
    queue_.async([this] { observers_.forEach([](const auto& observer) { observer(); }); });
  }

  SimMainQueue& queue_;
  bool isDark_ = false;
  std::optional<platform::Color> accent_;
  platform::HandlerList<void()> observers_;
};

}  // namespace hushpane::sim
