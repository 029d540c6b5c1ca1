#pragma once

#include <functional>
#include <optional>

#include "platform/color.h"
#include "platform/token.h"

namespace hushpane::platform {

// The looks that the user has chosen for the desktop.
class SystemAppearance {
 public:
  virtual ~SystemAppearance() = default;

  virtual bool isDark() const = 0;
  // Nothing when the user chose none.
  virtual std::optional<Color> accentColor() const = 0;
  // Called after each change.
  virtual Token observe(std::function<void()> observer) = 0;
};

}  // namespace hushpane::platform
