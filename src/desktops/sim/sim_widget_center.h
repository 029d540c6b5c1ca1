#pragma once

#include <cstddef>

#include "platform/widget_center.h"

namespace hushpane::sim {

class SimWidgetCenter : public platform::WidgetCenter {
 public:
  void reloadAllTimelines() override { ++reloadCount_; }
  std::size_t reloadCount() const { return reloadCount_; }

 private:
  std::size_t reloadCount_ = 0;
};

}  // namespace hushpane::sim
