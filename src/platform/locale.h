#pragma once

#include <string>
#include <vector>

namespace hushpane::platform {

// The user's languages and formats.
class Locale {
 public:
  virtual ~Locale() = default;

  // The languages that the user wants to read, the best one first, as tags such as de, pt-BR or zh-Hans. Empty when no
  // language was chosen.
  virtual std::vector<std::string> preferredLanguages() const = 0;
};

}  // namespace hushpane::platform
