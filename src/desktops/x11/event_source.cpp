#include "desktops/x11/event_source.h"

#include <utility>

namespace hushpane::x11 {

struct EventSource::Source {
  GSource base;
  EventSource* owner;
};

EventSource::EventSource(Connection& connection, TurnEnd& turnEnd, std::function<void()> onClosed)
    : connection_(connection), turnEnd_(turnEnd), onClosed_(std::move(onClosed)) {
  static GSourceFuncs functions{
      &EventSource::prepare, &EventSource::check, &EventSource::dispatch, nullptr, nullptr, nullptr};
  source_ = g_source_new(&functions, sizeof(Source));
  reinterpret_cast<Source*>(source_)->owner = this;
  descriptor_ = g_source_add_unix_fd(source_, xcb_get_file_descriptor(connection.get()),
                                     static_cast<GIOCondition>(G_IO_IN | G_IO_HUP | G_IO_ERR));
  g_source_attach(source_, nullptr);
}

EventSource::~EventSource() {
  g_source_destroy(source_);
  g_source_unref(source_);
}

gboolean EventSource::prepare(GSource* base, gint* timeout) {
  *timeout = -1;
  auto& owner = *reinterpret_cast<Source*>(base)->owner;
  owner.connection_.flush();
  return owner.connection_.hasQueuedEvent() || owner.connection_.isBroken();
}

gboolean EventSource::check(GSource* base) {
  auto& owner = *reinterpret_cast<Source*>(base)->owner;
  return g_source_query_unix_fd(base, owner.descriptor_) != 0 || owner.connection_.hasQueuedEvent();
}

gboolean EventSource::dispatch(GSource* base, GSourceFunc, gpointer) {
  return reinterpret_cast<Source*>(base)->owner->handle();
}

gboolean EventSource::handle() {
  connection_.dispatchPending();
  turnEnd_.runIfOverdue();
  if (!connection_.isBroken()) return G_SOURCE_CONTINUE;
  if (const auto closed = std::exchange(onClosed_, nullptr)) closed();
  return G_SOURCE_REMOVE;
}

}  // namespace hushpane::x11
