#include "widget/mode_follower.h"

#include <string_view>
#include <utility>

namespace hushpane::widget {

namespace {

constexpr std::string_view reloadAllTimelines = "com.corvane.Hushpane.reloadAllTimelines";
constexpr double patience = 0.2;  // seconds from a change of the file to the program's word about it

}  // namespace

ModeFollower::Bus::Bus(platform::MainQueue& queue, std::function<void()> reload)
    : session(queue), center(session, queue), reloads(center.addObserver(reloadAllTimelines, std::move(reload))) {}

// Joining a bus may take a while, so the mode is shown before.
ModeFollower::ModeFollower(const SharedMode& mode, platform::MainQueue& queue, Show show)
    : mode_(mode), queue_(queue), show_(std::move(show)) {
  if (const auto file = mode_.file()) watch_.emplace(*file, [this] { fileChanged(); });
  this->show();
  bus_.emplace(queue, [this] { this->show(); });
}

void ModeFollower::show() {
  unasked_.reset();
  shown_ = mode_.read();
  show_(shown_);
}

// The program stores its mode before it asks: one change, one line.
void ModeFollower::fileChanged() {
  unasked_ = queue_.after(patience, [this] {
    if (mode_.read() != shown_) show();
  });
}

}  // namespace hushpane::widget
