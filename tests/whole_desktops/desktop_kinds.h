#pragma once

#include "tests/x11/process.h"

namespace hushpane::x11_tests {

// How a desktop is started without a login, so that nothing moves by itself and no assistant asks. In words and files
// "%" stands for the home.
struct DesktopKind {
  std::string name;
  Environment environment;
  std::vector<std::string> command;
  std::map<std::filesystem::path, std::string> files = {};  // below the folder of settings
  // Who serves a name of the session bus, where several desktops offer a program.
  std::map<std::string, std::string> services = {{"org.cinnamon.ScreenSaver", "/bin/false"}};
  // What runs beside, where the session's own manager would start it.
  std::vector<std::vector<std::string>> helpers = {};
  // A shell's words that make "$1" the picture of the desktop, and bring it in sight; harmless when repeated.
  std::string choosePicture;
  std::vector<std::string> fileManager;
  std::vector<std::string> qtEditor = {"featherpad", "--standalone"};
  // The key that opens its start menu or overview.
  std::string menuKey = {};
  // A shell's words that make all programs dark where "$1" is "-dark", and light where it is empty; none where there is
  // no such switch.
  std::string theme = {};
};

const std::vector<DesktopKind>& desktopKinds();

// What every home holds beside: nothing that asks, indexes, locks or runs of another desktop.
std::map<std::filesystem::path, std::string> commonFiles();

}  // namespace hushpane::x11_tests
