#include "tests/x11/window_manager.h"

#include <fstream>
#include <stdexcept>

#include "tests/x11/client_window.h"

namespace hushpane::x11_tests {

WindowManagerKind openbox() {
  return {.name = "openbox",
          .command = {"openbox", "--config-file", "%/openbox.xml"},
          .replacing = {"--replace"},
          .files = {{"openbox.xml", R"(<?xml version="1.0"?>
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
)"}}};
}

namespace {

std::string filled(std::string text, const std::filesystem::path& folder) {
  for (std::size_t at = 0; (at = text.find('%', at)) != std::string::npos; at += folder.string().size())
    text.replace(at, 1, folder.string());
  return text;
}

}  // namespace

WindowManager::WindowManager(const WindowManagerKind& kind, const Environment& environment,
                             const std::filesystem::path& folder, const XConnection& x)
    : kind_(kind),
      environment_(environment),
      folder_(folder),
      configuration_(environment.at("XDG_CONFIG_HOME")),
      x_(x) {
  writeFiles();
  for (const auto& [name, value] : kind.environment) environment_[name] = x11_tests::filled(value, configuration_);
  if (kind.needsBus) {
    bus_ = std::make_unique<SessionBus>(environment_, folder, SessionBus::Services::installed);
    environment_["DBUS_SESSION_BUS_ADDRESS"] = bus_->address();
  }
  process_ = std::make_unique<Process>(filled(kind.command), environment_, folder);
  waitUntilReady();
}

std::vector<std::string> WindowManager::filled(std::vector<std::string> words) const {
  for (std::string& word : words) word = x11_tests::filled(word, configuration_);
  return words;
}

void WindowManager::writeFiles() const {
  for (const auto& [name, text] : kind_.files) {
    std::filesystem::create_directories((configuration_ / name).parent_path());
    std::ofstream(configuration_ / name) << x11_tests::filled(text, configuration_);
  }
}

// A manager that has given a window its state (ICCCM 4.1.3.1) handles requests; earlier ones may be lost, and so may a
// window that appears while one manager follows another.
void WindowManager::waitUntilReady() {
  const auto manages = [this] {
    const ClientWindow probe(x_, {{0, 0, 50, 50}, {0}}, ClientWindow::Appearing::someTime);
    return waitUntil([&] { return x_.isOnScreen(probe.window()) && !x_.numbers(probe.window(), "WM_STATE").empty(); },
                     2s);
  };
  for (auto end = Clock::now() + patience; Clock::now() < end && process_->isRunning();)
    if (manages()) return;
  throw std::runtime_error(kind_.name + " did not start: " + process_->errors());
}

void WindowManager::replace() {
  if (kind_.replacing.empty()) process_.reset();
  auto command = kind_.command;
  command.insert(command.end(), kind_.replacing.begin(), kind_.replacing.end());
  auto successor = std::make_unique<Process>(filled(command), environment_, folder_);
  if (process_) process_->wait();
  process_ = std::move(successor);
  waitUntilReady();
}

void WindowManager::run(const std::vector<std::string>& command) const {
  x11_tests::run(filled(command), environment_, folder_);
}

}  // namespace hushpane::x11_tests
