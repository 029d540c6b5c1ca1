#include "desktops/session/ready_source.h"

#include <memory>
#include <utility>

namespace hushpane::session {

namespace {

using Block = std::function<void()>;

gboolean runBlock(gpointer block) {
  (*static_cast<Block*>(block))();
  return G_SOURCE_CONTINUE;
}

void endBlock(gpointer block) {
  const std::unique_ptr<Block> ended(static_cast<Block*>(block));
}

}  // namespace

ReadySource::ReadySource(int priority, Block block) {
  static GSourceFuncs functions{
      nullptr, nullptr, [](GSource*, GSourceFunc callback, gpointer data) -> gboolean { return callback(data); },
      nullptr, nullptr, nullptr};
  source_ = g_source_new(&functions, sizeof(GSource));
  g_source_set_callback(source_, runBlock, std::make_unique<Block>(std::move(block)).release(), endBlock);
  g_source_set_priority(source_, priority);
  g_source_set_ready_time(source_, -1);
  g_source_attach(source_, nullptr);
}

ReadySource::~ReadySource() {
  g_source_destroy(source_);
  g_source_unref(source_);
}

}  // namespace hushpane::session
