#include "desktops/session/run_loop.h"

#include <glib-unix.h>

#include <array>
#include <csignal>
#include <cstddef>

namespace hushpane::session {

namespace {

gboolean quit(gpointer loop) {
  g_main_loop_quit(static_cast<GMainLoop*>(loop));
  return G_SOURCE_CONTINUE;
}

}  // namespace

void RunLoop::run() {
  constexpr std::array signals{SIGTERM, SIGINT, SIGHUP};
  std::array<guint, signals.size()> sources{};
  for (std::size_t index = 0; index < signals.size(); ++index)
    sources[index] = g_unix_signal_add(signals[index], quit, loop_);
  g_main_loop_run(loop_);
  for (const auto source : sources) g_source_remove(source);
}

}  // namespace hushpane::session
