#include "desktops/sim/sim_application.h"

#include <utility>

namespace hushpane::sim {

void SimApplication::setOpenUrlsHandler(std::function<void(std::vector<std::string>)> handler) {
  handler_ = std::move(handler);
  queue_.async([this] { deliver(); });
}

void SimApplication::terminate() {
  isTerminated_ = true;
  queue_.async([this] {
    if (const auto terminate = terminate_) terminate();
  });
}

void SimApplication::reopen() {
  queue_.async([this] {
    if (const auto handler = reopenHandler_) handler();
  });
}

void SimApplication::openUrls(std::vector<std::string> urls) {
  waiting_.push_back(std::move(urls));
  queue_.async([this] { deliver(); });
}

void SimApplication::forget() {
  handler_ = nullptr;
  reopenHandler_ = nullptr;
  activationPolicy_.reset();
  waiting_.clear();
}

void SimApplication::deliver() {
  while (handler_ && !waiting_.empty()) {
    const auto handler = handler_;
    auto urls = std::move(waiting_.front());
    waiting_.erase(waiting_.begin());
    handler(std::move(urls));
  }
}

}  // namespace hushpane::sim
