#pragma once

#include <memory>

#include "overlay/overlay_content_view.h"
#include "platform/platform.h"

namespace hushpane {

// The borderless, click-through window that covers one display. Made invisible: alpha 0, ordered out.
class OverlayWindow {
 public:
  OverlayWindow(platform::DisplayId screenID, const platform::Rect& screenFrame, platform::Platform& platform,
                PreferencesStore& preferences);

  const platform::DisplayId screenID;

  platform::Window& window() { return *window_; }
  OverlayContentView& contentView() { return contentView_; }

  bool isVisible() const { return window_->isVisible(); }
  // Visible or, while ordered out, not yet faded out.
  bool isShown() const;
  // Alpha 0 and out, without a fade.
  void hideAtOnce();
  // Orders the window in at alpha 0 when it is out, then fades to alpha 1 shortly unless it is nearly there.
  void fadeInShortly();

 private:
  std::unique_ptr<platform::Window> window_;
  OverlayContentView contentView_;
};

}  // namespace hushpane
