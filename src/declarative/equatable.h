#pragma once

#include <any>
#include <concepts>
#include <utility>

namespace hushpane::declarative {

// Any value that can be compared; values of different types are different.
class Equatable {
 public:
  template <class Type>
  requires(!std::same_as<Type, Equatable>)
      Equatable(Type value)  // NOLINT(google-explicit-constructor): whatever identifies something may stand for it
      : value_(std::move(value)), equal_([](const std::any& left, const std::any& right) {
          return *std::any_cast<Type>(&left) == *std::any_cast<Type>(&right);
        }) {}

  bool operator==(const Equatable& other) const {
    return value_.type() == other.value_.type() && equal_(value_, other.value_);
  }

 private:
  std::any value_;
  bool (*equal_)(const std::any& left, const std::any& right);
};

}  // namespace hushpane::declarative
