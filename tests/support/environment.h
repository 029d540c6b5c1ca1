#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace hushpane {

// Sets a variable of the environment, or removes it, for the life of this object.
class Environment {
 public:
  Environment(const char* name, const char* value) : name_(name) {
    if (const char* old = std::getenv(name)) old_ = old;
    value ? setenv(name, value, 1) : unsetenv(name);
  }
  ~Environment() { old_ ? setenv(name_, old_->c_str(), 1) : unsetenv(name_); }
  Environment(const Environment&) = delete;
  Environment& operator=(const Environment&) = delete;

 private:
  const char* name_;
  std::optional<std::string> old_;
};

}  // namespace hushpane
