#pragma once

#include <optional>
#include <string>

#include "desktops/sim/sim_main_queue.h"
#include "desktops/sim/sim_screens.h"
#include "platform/status_item.h"

namespace hushpane::sim {

// A bar along an edge of the main screen in which the program's icon stands, by script. At first there is none.
class SimStatusItem : public platform::StatusItem {
 public:
  enum class Bar { none, top, bottom };
  static constexpr double barHeight = 30;  // points

  SimStatusItem(SimMainQueue& queue, const SimScreens& screens) : queue_(queue), screens_(screens) {}

  void setImage(platform::TemplateImage image) override { image_ = std::move(image); }
  void setToolTip(std::string text) override { toolTip_ = std::move(text); }
  void setClickHandler(ClickHandler handler) override { handler_ = std::move(handler); }
  void setHoverHandler(std::function<void(bool)> handler) override { hoverHandler_ = std::move(handler); }
  bool isShown() const override { return barFrame() && image_.draw; }
  std::optional<platform::Rect> frame() const override;

  void setBar(Bar bar) { bar_ = bar; }
  Bar bar() const { return bar_; }
  // Nothing when there is no bar.
  std::optional<platform::Rect> barFrame() const;
  // From here on frame() does not tell.
  void setFrameUntold(bool untold) { isFrameUntold_ = untold; }

  const platform::TemplateImage& image() const { return image_; }
  const std::string& toolTip() const { return toolTip_; }
  // Somebody clicks the icon; nothing happens while it is not shown.
  void click(std::optional<platform::Point> point = std::nullopt);
  // The pointer comes over the icon or leaves it.
  void setHovered(bool isHovered);
  // For the end of a program.
  void forget() {
    image_ = {};
    toolTip_.clear();
    handler_ = nullptr;
    hoverHandler_ = nullptr;
  }

 private:
  SimMainQueue& queue_;
  const SimScreens& screens_;
  Bar bar_ = Bar::none;
  bool isFrameUntold_ = false;
  platform::TemplateImage image_;
  std::string toolTip_;
  ClickHandler handler_;
  std::function<void(bool)> hoverHandler_;
  bool isHovered_ = false;
};

}  // namespace hushpane::sim
