#include "platform/json.h"

namespace hushpane::platform {

// Out of the classes, where both types are complete.

bool Json::operator==(const Json& other) const {
  return storage == other.storage;
}

bool JsonMember::operator==(const JsonMember& other) const {
  return name == other.name && value == other.value;
}

}  // namespace hushpane::platform
