#pragma once

#include <glib.h>

#include <functional>

#include "desktops/x11/connection.h"
#include "desktops/x11/turn_end.h"

namespace hushpane::x11 {

// Feeds the server's events into GLib's default main context and sends what the program has written before each wait.
class EventSource {
 public:
  // `onClosed` is called once when the server is gone.
  EventSource(Connection& connection, TurnEnd& turnEnd, std::function<void()> onClosed);
  ~EventSource();
  EventSource(const EventSource&) = delete;
  EventSource& operator=(const EventSource&) = delete;

 private:
  struct Source;
  static gboolean prepare(GSource* base, gint* timeout);
  static gboolean check(GSource* base);
  static gboolean dispatch(GSource* base, GSourceFunc, gpointer);
  gboolean handle();

  Connection& connection_;
  TurnEnd& turnEnd_;
  std::function<void()> onClosed_;
  GSource* source_;
  gpointer descriptor_;
};

}  // namespace hushpane::x11
