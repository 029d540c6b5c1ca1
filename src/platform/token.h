#pragma once

#include <functional>
#include <utility>

namespace hushpane::platform {

// Keeps something alive that another object holds for the caller: a monitor, an observer, a timer, delayed work.
// Dropping or resetting the token removes it, and no callback follows from then on, also when the token goes inside
// that callback. An empty token means that nothing was installed. A token may outlive the desktop that gave it.
class [[nodiscard]] Token {
 public:
  Token() = default;
  explicit Token(std::function<void()> release) : release_(std::move(release)) {}
  Token(Token&& other) noexcept : release_(std::exchange(other.release_, nullptr)) {}
  Token& operator=(Token&& other) noexcept {
    if (this != &other) {
      reset();
      release_ = std::exchange(other.release_, nullptr);
    }
    return *this;
  }
  ~Token() { reset(); }

  // True while the token is held, even after one-time work that it stands for has run.
  explicit operator bool() const { return static_cast<bool>(release_); }

  void reset() {
    if (auto release = std::exchange(release_, nullptr)) release();
  }

 private:
  std::function<void()> release_;
};

}  // namespace hushpane::platform
