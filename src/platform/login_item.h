#pragma once

namespace hushpane::platform {

// Whether the desktop starts the program when the user logs in.
class LoginItem {
 public:
  virtual ~LoginItem() = default;

  // Read anew at each call.
  virtual bool isEnabled() const = 0;
  // Each returns false, and leaves everything as it is, when the desktop refuses.
  virtual bool registerItem() = 0;
  virtual bool unregisterItem() = 0;
};

}  // namespace hushpane::platform
