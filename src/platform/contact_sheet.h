#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/canvas.h"

namespace hushpane::platform {

class Platform;

// One picture of many views of the program, each in a state of its own, for people to look at.
class ContactSheet {
 public:
  virtual ~ContactSheet() = default;

  // Begins with the next view, which is in its state after so many seconds; nothing when all are there.
  virtual std::optional<double> next() = 0;
  // Once all are there.
  virtual Size size() const = 0;  // points
  virtual void paint(Canvas& canvas) const = 0;
};

struct ContactSheetRequest {
  std::string name;
  std::string language;  // a language code, or empty for the one in use
  bool isDark = false;
};

// Null when there is no sheet of that name.
using OpenContactSheet = std::function<std::unique_ptr<ContactSheet>(Platform&, const ContactSheetRequest&)>;

}  // namespace hushpane::platform
