#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>

#include "desktops/session/desktop_background.h"
#include "desktops/session/task_queue.h"
#include "desktops/shared/files.h"
#include "desktops/shared/pixel_size.h"
#include "desktops/x11/connection.h"
#include "desktops/x11/render.h"
#include "desktops/x11/screens.h"
#include "platform/handler_list.h"
#include "platform/image.h"
#include "platform/lifetime.h"
#include "platform/main_queue.h"
#include "platform/notification_center.h"

namespace hushpane::x11 {

// The desktop's background where a compositor paints it and publishes no pixmap: painted once more, from what the
// settings of the desktop say. It is only ever shown blurred, so its picture is decoded with few pixels; these stay in
// memory, that the next painting need not wait for them.
class PaintedBackground {
 public:
  PaintedBackground(Connection& connection, Render& render, const Screens& screens, platform::MainQueue& queue,
                    platform::NotificationCenter& center, session::TaskQueue& tasks);

  struct Painting {
    Surface surface;  // as large as the root window
    // What tells of changes for as long as somebody wants to know.
    std::unique_ptr<session::DesktopBackgroundWatch> settings;
    platform::Token arrangement;
  };
  // Nothing when the desktop is not known. A picture that is still to be decoded is left out until then.
  std::optional<Painting> paint();

  // Called when what was painted last is out of date.
  platform::Token addChangeHandler(std::function<void()> handler) { return handlers_.add(std::move(handler)); }

 private:
  // What the pixels of a picture come from.
  struct Source {
    std::filesystem::path file;
    std::optional<desktops::FileStamp> stamp;
    desktops::PixelSize shown;  // the largest that it is shown in; nothing: as large as it is
    bool operator==(const Source&) const = default;
  };
  struct Decoded {
    platform::ImagePtr image;     // null when there is none
    desktops::PixelSize natural;  // in the file
  };
  static Decoded decode(const Source& source);

  bool prepare(const session::DesktopBackground& background, const PixelRect& root);
  void start(const Source& source);
  void settingsChanged();
  void changed();
  Surface upload(const platform::Image& image);
  void paintColors(const Surface& target, const session::DesktopBackground& background, const PixelRect& screen);
  void paintPicture(const Surface& target, const Surface& picture, const platform::Rect& place, const PixelRect& area);

  Connection& connection_;
  Render& render_;
  const Screens& screens_;
  platform::MainQueue& queue_;
  platform::NotificationCenter& center_;
  session::TaskQueue& tasks_;
  std::optional<session::DesktopBackground> painted_;
  std::optional<Source> source_;  // of what is decoded
  Decoded decoded_;
  bool isDecoding_ = false;
  platform::WorkItem pending_;
  platform::HandlerList<void()> handlers_;
  platform::Lifetime lifetime_;
};

}  // namespace hushpane::x11
