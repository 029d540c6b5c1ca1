#pragma once

#include <glib.h>

namespace hushpane::session {

// GLib's main loop on its default context: what drives the main queue. Main thread only.
class RunLoop {
 public:
  RunLoop() : loop_(g_main_loop_new(nullptr, FALSE)) {}
  ~RunLoop() { g_main_loop_unref(loop_); }
  RunLoop(const RunLoop&) = delete;
  RunLoop& operator=(const RunLoop&) = delete;

  // Returns when the process is asked to end (SIGTERM, SIGINT, SIGHUP) or something in the loop calls end().
  void run();
  // Nothing happens unless the loop runs.
  void end() { g_main_loop_quit(loop_); }

 private:
  GMainLoop* loop_;
};

}  // namespace hushpane::session
