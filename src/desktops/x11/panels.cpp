#include "desktops/x11/panels.h"

#include "desktops/x11/x11_panel.h"

namespace hushpane::x11 {

std::unique_ptr<platform::Panel> Panels::makePanel(const platform::PanelConfiguration& configuration,
                                                   platform::PanelContents& contents) {
  return std::make_unique<X11Panel>(animator_, configuration, contents);
}

}  // namespace hushpane::x11
