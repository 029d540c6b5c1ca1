#pragma once

#include "platform/platform.h"

namespace hushpane {

// The bookkeeping that decides when someone has used the program enough to be asked for a review: at most once a week.
class ReviewPolicy {
 public:
  explicit ReviewPolicy(platform::Platform& platform);

  // Counts a launch; the first one fixes the date of first use.
  void recordSession();
  // Counts a mode switch by the user. True when a review is to be asked for now, which starts the next quiet interval.
  bool recordModeSwitch();

 private:
  platform::UserDefaults& defaults_;
  platform::MainQueue& clock_;
};

}  // namespace hushpane
