#pragma once

#include <map>

#include "desktops/x11/connection.h"
#include "desktops/x11/render.h"
#include "platform/image.h"

namespace hushpane::x11 {

// The images of one overlay on the server, each scaled to fill it. They are sent once and freed when a round of drawing
// did without them.
class ImageStore {
 public:
  ImageStore(Connection& connection, Render& render) : connection_(connection), render_(render) {}

  xcb_render_picture_t picture(const platform::ImagePtr& image, int width, int height);
  void freeUnused();

 private:
  struct Stored {
    platform::ImagePtr image;
    Surface surface;
    bool isUsed = false;
  };

  Connection& connection_;
  Render& render_;
  std::map<const platform::Image*, Stored> images_;
};

}  // namespace hushpane::x11
