#include <unistd.h>

#include <cstdio>
#include <iostream>
#include <memory>
#include <vector>

#include "tests/x11/client_window.h"
#include "tests/x11/process.h"

// An application for tests: for every line "x y width height color" that it reads it opens a window, and reports the
// window's number.
int main() {
  using namespace hushpane::x11_tests;
  const XConnection application(std::getenv("DISPLAY"));
  std::vector<std::unique_ptr<ClientWindow>> windows;
  ClientWindow::Look look;
  while (std::cin >> look.bounds.x >> look.bounds.y >> look.bounds.width >> look.bounds.height >> look.color.value) {
    windows.push_back(std::make_unique<ClientWindow>(application, look));
    dprintf(Process::reportDescriptor, "%u\n", windows.back()->window());
  }
}
