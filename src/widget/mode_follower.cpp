#include "widget/mode_follower.h"

#include <string_view>
#include <utility>

namespace hushpane::widget {

namespace {

constexpr std::string_view reloadAllTimelines = "com.corvane.Hushpane.reloadAllTimelines";

}  // namespace

ModeFollower::Bus::Bus(platform::MainQueue& queue, std::function<void()> reload)
    : session(queue), center(session, queue), reloads(center.addObserver(reloadAllTimelines, std::move(reload))) {}

// Joining a bus may take a while, so the mode is shown before.
ModeFollower::ModeFollower(const SharedMode& mode, platform::MainQueue& queue, Show show)
    : mode_(mode), show_(std::move(show)) {
  if (const auto file = mode_.file()) watch_.emplace(*file, [this] { fileChanged(); });
  this->show();
  bus_.emplace(queue, [this] { this->show(); });
}

void ModeFollower::show() {
  shown_ = mode_.read();
  show_(shown_);
}

void ModeFollower::fileChanged() {
  if (mode_.read() != shown_) show();
}

}  // namespace hushpane::widget
