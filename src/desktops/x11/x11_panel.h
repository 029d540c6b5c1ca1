#pragma once

#include "platform/panel.h"

namespace hushpane::x11 {

class X11Panel : public platform::Panel {
 public:
  using platform::Panel::Panel;
  void setNeedsDisplay(const platform::Rect&) override {}

 protected:
  void frameChanged() override {}
  void outlineChanged() override {}
  void alphaChanged() override {}
  void orderChanged() override {}
};

}  // namespace hushpane::x11
