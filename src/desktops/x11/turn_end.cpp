#include "desktops/x11/turn_end.h"

#include <glib.h>

#include <utility>

#include "platform/handler_list.h"

namespace hushpane::x11 {

namespace {

// After the events and the main queue, which have the default priority.
constexpr int priority = G_PRIORITY_DEFAULT + 10;
constexpr gint64 longestWait = 8000;  // microseconds

}  // namespace

struct TurnEnd::State : std::enable_shared_from_this<TurnEnd::State> {
  struct Source {
    GSource base;
    State* state;
  };

  platform::HandlerList<void()> handlers;
  GSource* source = nullptr;
  gint64 requestedAt = 0;
  bool isRequested = false;

  void attach() {
    static GSourceFuncs functions{nullptr,
                                  nullptr,
                                  [](GSource* base, GSourceFunc, gpointer) -> gboolean {
                                    const auto held = reinterpret_cast<Source*>(base)->state->shared_from_this();
                                    held->run();
                                    return G_SOURCE_CONTINUE;
                                  },
                                  nullptr,
                                  nullptr,
                                  nullptr};
    source = g_source_new(&functions, sizeof(Source));
    reinterpret_cast<Source*>(source)->state = this;
    g_source_set_priority(source, priority);
    g_source_set_ready_time(source, -1);
    g_source_attach(source, nullptr);
  }

  void run() {
    isRequested = false;
    if (source) g_source_set_ready_time(source, -1);
    handlers.forEach([](const auto& handler) { handler(); });
  }
};

TurnEnd::TurnEnd() : state_(std::make_shared<State>()) {
  state_->attach();
}

TurnEnd::~TurnEnd() {
  g_source_destroy(state_->source);
  g_source_unref(std::exchange(state_->source, nullptr));
}

platform::Token TurnEnd::add(std::function<void()> handler) {
  return state_->handlers.add(std::move(handler));
}

void TurnEnd::request() {
  if (std::exchange(state_->isRequested, true)) return;
  state_->requestedAt = g_get_monotonic_time();
  g_source_set_ready_time(state_->source, 0);
}

void TurnEnd::runIfOverdue() {
  if (!state_->isRequested || g_get_monotonic_time() - state_->requestedAt < longestWait) return;
  const auto held = state_;
  held->run();
}

}  // namespace hushpane::x11
