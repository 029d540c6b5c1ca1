#pragma once

#include <memory>
#include <utility>

namespace hushpane::platform {

// Lets an object hand out closures that do nothing once the object is gone. Declare it as the last member, so that
// it ends first.
class Lifetime {
 public:
  Lifetime() = default;
  Lifetime(const Lifetime&) = delete;
  Lifetime& operator=(const Lifetime&) = delete;

  // Expired once the object is gone; for what goes on after a call that may end it.
  std::weak_ptr<const void> watch() const { return alive_; }

  template <class Function>
  auto weak(Function function) const {
    return [alive = std::weak_ptr<const char>(alive_), function = std::move(function)](auto&&... arguments) mutable {
      if (!alive.expired()) function(std::forward<decltype(arguments)>(arguments)...);
    };
  }

 private:
  std::shared_ptr<const char> alive_ = std::make_shared<const char>();
};

}  // namespace hushpane::platform
