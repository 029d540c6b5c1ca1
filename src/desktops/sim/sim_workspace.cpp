#include "desktops/sim/sim_workspace.h"

#include <utility>

#include "desktops/shared/image_file.h"

namespace hushpane::sim {

SimWorkspace::SimWorkspace(SimMainQueue& queue, SimWindowServer& server, std::int32_t ownPid)
    : center_(queue), server_(server), ownPid_(ownPid), lastPid_(ownPid) {
  applications_.emplace(ownPid, "Hushpane");
}

std::optional<platform::RunningApplication> SimWorkspace::frontmostApplication() {
  if (!frontmost_) return std::nullopt;
  const auto found = applications_.find(*frontmost_);
  return platform::RunningApplication{*frontmost_, found == applications_.end() ? std::string() : found->second};
}

bool SimWorkspace::openURL(const std::string& url) {
  if (opensURLs_) openedURLs_.push_back(url);
  return opensURLs_;
}

std::int32_t SimWorkspace::launch(std::string name) {
  applications_.emplace(++lastPid_, std::move(name));
  return lastPid_;
}

void SimWorkspace::quit(std::int32_t pid) {
  server_.closeAll(pid);
  applications_.erase(pid);
  if (frontmost_ == pid) frontmost_.reset();
}

void SimWorkspace::activate(std::int32_t pid) {
  server_.raiseAll(pid);
  bringToFront(pid);
}

bool SimWorkspace::activateWindow(platform::WindowNumber number) {
  const AppWindow* window = server_.find(number);
  if (!window) return false;
  server_.raise(number);
  bringToFront(window->ownerPid);
  return true;
}

void SimWorkspace::activateOwnProgram() {
  bringToFront(ownPid_);
}

void SimWorkspace::bringToFront(std::int32_t pid) {
  frontmost_ = pid;
  center_.postFromOutside(platform::notification::didActivateApplication);
}

void SimWorkspace::setDesktopImage(std::optional<std::filesystem::path> file) {
  constexpr int width = 2880, height = 1800;  // pixels of the largest screen that shows it as sharp as it is
  desktopImageFile_ = std::move(file);
  desktopImage_ = desktopImageFile_ ? desktops::loadImageFile(*desktopImageFile_, width, height) : nullptr;
}

void SimWorkspace::switchSpace(int space) {
  server_.showSpace(space);
  center_.postFromOutside(platform::notification::activeSpaceDidChange);
}

void SimWorkspace::wake() {
  center_.postFromOutside(platform::notification::didWake);
}

}  // namespace hushpane::sim
