#pragma once

#include <glib.h>

#include <functional>

namespace hushpane::session {

// A source on GLib's default main context that runs a block when a moment has come. While none is set it costs nothing.
// The block may end its source.
class ReadySource {
 public:
  ReadySource(int priority, std::function<void()> block);
  ~ReadySource();
  ReadySource(const ReadySource&) = delete;
  ReadySource& operator=(const ReadySource&) = delete;

  // The block runs once for each turn of the loop from that moment on, in microseconds of g_get_monotonic_time(), until
  // another is set: 0 means now, -1 never.
  void setReadyTime(gint64 moment) { g_source_set_ready_time(source_, moment); }

 private:
  GSource* source_;
};

}  // namespace hushpane::session
