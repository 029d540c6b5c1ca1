#pragma once

#include <functional>

namespace hushpane::session {

// Tells once when nobody reads standard output any more: the pipe's reader closed it, the terminal hung up. It costs
// nothing until then. On GLib's default main context. The handler may end the watch.
class OutputWatch {
 public:
  explicit OutputWatch(std::function<void()> gone);
  ~OutputWatch();
  OutputWatch(const OutputWatch&) = delete;
  OutputWatch& operator=(const OutputWatch&) = delete;

 private:
  void tell();

  std::function<void()> gone_;
  unsigned source_;
};

}  // namespace hushpane::session
