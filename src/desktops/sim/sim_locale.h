#pragma once

#include <string>
#include <utility>
#include <vector>

#include "platform/locale.h"

namespace hushpane::sim {

class SimLocale : public platform::Locale {
 public:
  std::vector<std::string> preferredLanguages() const override { return languages_; }
  void setPreferredLanguages(std::vector<std::string> languages) { languages_ = std::move(languages); }

 private:
  std::vector<std::string> languages_{"en"};
};

}  // namespace hushpane::sim
