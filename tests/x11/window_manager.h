#pragma once

#include <fstream>

#include "tests/x11/process.h"
#include "tests/x11/x_connection.h"

namespace hushpane::x11_tests {

// openbox with two workspaces and nothing bound but a click that brings a window to the front.
class WindowManager {
 public:
  WindowManager(const Environment& environment, const std::filesystem::path& folder, const XConnection& x)
      : process_({"openbox", "--config-file", configuration(folder)}, environment, folder) {
    if (!waitUntil([&] { return !x.numbers(x.root(), "_NET_SUPPORTED").empty(); })) {
      throw std::runtime_error("openbox did not start: " + process_.errors());
    }
  }

 private:
  static std::string configuration(const std::filesystem::path& folder) {
    const std::filesystem::path file = folder / "openbox.xml";
    std::ofstream(file) << R"(<?xml version="1.0"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <focus><focusNew>yes</focusNew><followMouse>no</followMouse></focus>
  <theme><name>Clearlooks</name><animateIconify>no</animateIconify></theme>
  <desktops><number>2</number><popupTime>0</popupTime></desktops>
  <mouse>
    <context name="Client">
      <mousebind button="Left" action="Press"><action name="Focus"/><action name="Raise"/></mousebind>
    </context>
  </mouse>
</openbox_config>
)";
    return file.string();
  }

  Process process_;
};

}  // namespace hushpane::x11_tests
