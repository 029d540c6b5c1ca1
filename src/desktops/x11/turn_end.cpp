#include "desktops/x11/turn_end.h"

#include <optional>
#include <utility>

#include "desktops/session/ready_source.h"
#include "platform/handler_list.h"

namespace hushpane::x11 {

namespace {

// After the events and the main queue, which have the default priority.
constexpr int priority = G_PRIORITY_DEFAULT + 10;
constexpr gint64 longestWait = 8000;  // microseconds

}  // namespace

struct TurnEnd::State : std::enable_shared_from_this<TurnEnd::State> {
  platform::HandlerList<void()> handlers;
  std::optional<session::ReadySource> source;
  gint64 requestedAt = 0;
  bool isRequested = false;

  void attach() {
    source.emplace(priority, [this] {
      const auto held = shared_from_this();
      held->run();
    });
  }

  void run() {
    isRequested = false;
    if (source) source->setReadyTime(-1);
    handlers.forEach([](const auto& handler) { handler(); });
  }
};

TurnEnd::TurnEnd() : state_(std::make_shared<State>()) {
  state_->attach();
}

TurnEnd::~TurnEnd() {
  state_->source.reset();
}

platform::Token TurnEnd::add(std::function<void()> handler) {
  return state_->handlers.add(std::move(handler));
}

void TurnEnd::request() {
  if (std::exchange(state_->isRequested, true)) return;
  state_->requestedAt = g_get_monotonic_time();
  state_->source->setReadyTime(0);
}

void TurnEnd::runIfOverdue() {
  if (!state_->isRequested || g_get_monotonic_time() - state_->requestedAt < longestWait) return;
  const auto held = state_;
  held->run();
}

}  // namespace hushpane::x11
