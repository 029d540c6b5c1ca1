#include "desktops/session/output_watch.h"

#include <glib-unix.h>
#include <unistd.h>

#include <utility>

namespace hushpane::session {

OutputWatch::OutputWatch(std::function<void()> gone) : gone_(std::move(gone)) {
  const auto told = [](gint, GIOCondition, gpointer watch) -> gboolean {
    static_cast<OutputWatch*>(watch)->tell();
    return G_SOURCE_REMOVE;
  };
  source_ = g_unix_fd_add(STDOUT_FILENO, static_cast<GIOCondition>(G_IO_ERR | G_IO_HUP | G_IO_NVAL), told, this);
}

OutputWatch::~OutputWatch() {
  if (source_ != 0) g_source_remove(source_);
}

void OutputWatch::tell() {
  source_ = 0;
  const auto gone = std::move(gone_);
  gone();
}

}  // namespace hushpane::session
