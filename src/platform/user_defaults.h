#pragma once

#include <optional>
#include <string_view>

#include "platform/value.h"

namespace hushpane::platform {

// A set of stored settings, kept across launches and shared with other writers of the same store. A write takes effect
// at once for every later read; a store that cannot be written keeps the value until the process ends. After a change
// by any writer notification::userDefaultsDidChange is posted on the default notification centre, from the main queue,
// once for each batch of changes.
class UserDefaults {
 public:
  virtual ~UserDefaults() = default;

  virtual std::optional<Value> value(std::string_view key) const = 0;
  virtual void set(std::string_view key, Value value) = 0;
  virtual void remove(std::string_view key) = 0;

  // The stored value when it has exactly the type asked for; absent and mistyped values give nothing.
  template <class Type>
  std::optional<Type> get(std::string_view key) const {
    const std::optional<Value> stored = value(key);
    return stored ? stored->as<Type>() : std::nullopt;
  }
};

}  // namespace hushpane::platform
