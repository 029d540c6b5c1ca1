#pragma once

#include <string_view>
#include <utility>

#include "platform/user_defaults.h"

namespace hushpane {

// One setting: reads its key on every access and writes it on every assignment. While the key is absent or holds a
// value of another type, it is the fallback.
template <class Type>
class StoredValue {
 public:
  StoredValue(platform::UserDefaults& defaults, std::string_view key, Type fallback)
      : defaults_(defaults), key_(key), fallback_(std::move(fallback)) {}

  Type get() const { return defaults_.get<Type>(key_).value_or(fallback_); }
  StoredValue& operator=(Type value) {
    defaults_.set(key_, std::move(value));
    return *this;
  }

 private:
  platform::UserDefaults& defaults_;
  std::string_view key_;
  Type fallback_;
};

}  // namespace hushpane
