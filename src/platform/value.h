#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "platform/date.h"

namespace hushpane::platform {

struct Value;

using Data = std::vector<std::uint8_t>;
using Array = std::vector<Value>;
using Dictionary = std::map<std::string, Value, std::less<>>;

// One value of a property list: a truth value, a whole number, a real number, a text (UTF-8), bytes, a date, an array
// or a dictionary.
struct Value {
  using Storage = std::variant<bool, std::int64_t, double, std::string, Data, Date, Array, Dictionary>;
  Storage storage;

  Value() : storage(false) {}
  Value(bool value) : storage(value) {}
  Value(std::int64_t value) : storage(value) {}
  Value(int value) : storage(std::int64_t{value}) {}
  Value(double value) : storage(value) {}
  Value(std::string value) : storage(std::move(value)) {}
  Value(const char* value) : storage(std::string(value)) {}
  Value(Data value) : storage(std::move(value)) {}
  Value(Date value) : storage(value) {}
  Value(Array value) : storage(std::move(value)) {}
  Value(Dictionary value) : storage(std::move(value)) {}

  bool operator==(const Value&) const = default;

  // The value when it is of exactly that type, else nothing: a number never passes for a truth value.
  template <class Type>
  std::optional<Type> as() const {
    if (const auto* held = std::get_if<Type>(&storage)) return *held;
    return std::nullopt;
  }
};

}  // namespace hushpane::platform
