#include "desktops/session/child_program.h"

#include <gio/gio.h>

#include <memory>
#include <utility>

#include "desktops/shared/debug_log.h"

namespace hushpane::session {

namespace {

// Kept by the token, and by each operation under way.
struct Child {
  GSubprocess* process = nullptr;
  std::string output;
  std::size_t limit = 0;
  ChildCompletion completion;

  ~Child() { g_clear_object(&process); }

  void finish(std::optional<std::string> answer) {
    if (const auto taken = std::exchange(completion, nullptr)) taken(std::move(answer));
  }
};

using ChildPtr = std::shared_ptr<Child>;

gpointer keep(const ChildPtr& child) {
  return std::make_unique<ChildPtr>(child).release();
}

ChildPtr release(gpointer data) {
  const std::unique_ptr<ChildPtr> held(static_cast<ChildPtr*>(data));
  return *held;
}

void ended(GObject* process, GAsyncResult* result, gpointer data) {
  const auto child = release(data);
  auto* subprocess = G_SUBPROCESS(process);
  const bool isWell = g_subprocess_wait_finish(subprocess, result, nullptr) && g_subprocess_get_if_exited(subprocess) &&
                      g_subprocess_get_exit_status(subprocess) == 0;
  child->finish(isWell ? std::optional(child->output) : std::nullopt);
}

void read(GObject* stream, GAsyncResult* result, gpointer data) {
  const auto child = release(data);
  gsize count = 0;
  const bool isRead = g_input_stream_read_all_finish(G_INPUT_STREAM(stream), result, &count, nullptr);
  if (!child->completion) return;
  if (!isRead || count > child->limit) {
    g_subprocess_force_exit(child->process);
    return child->finish(std::nullopt);
  }
  child->output.resize(count);
  g_subprocess_wait_async(child->process, nullptr, ended, keep(child));
}

}  // namespace

platform::Token startChild(const std::vector<std::string>& words, std::size_t limit, ChildCompletion completion) {
  std::vector<const char*> arguments;
  for (const auto& word : words) arguments.push_back(word.c_str());
  arguments.push_back(nullptr);
  const auto child = std::make_shared<Child>();
  GError* error = nullptr;
  child->process = g_subprocess_newv(arguments.data(), G_SUBPROCESS_FLAGS_STDOUT_PIPE, &error);
  if (!child->process) {
    desktops::debugLog(std::string("cannot start a program: ") + error->message);
    g_error_free(error);
    return {};
  }
  child->limit = limit;
  child->completion = std::move(completion);
  child->output.resize(limit + 1);
  g_input_stream_read_all_async(g_subprocess_get_stdout_pipe(child->process), child->output.data(), limit + 1,
                                G_PRIORITY_DEFAULT, nullptr, read, keep(child));
  return platform::Token([child] {
    child->completion = nullptr;
    g_subprocess_force_exit(child->process);
  });
}

}  // namespace hushpane::session
