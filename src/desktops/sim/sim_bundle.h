#pragma once

#include <map>
#include <string>

#include "desktops/shared/resource_bundle.h"
#include "platform/bundle.h"

namespace hushpane::sim {

// The program's resources, some of them replaced by script.
class SimBundle : public platform::Bundle {
 public:
  explicit SimBundle(std::filesystem::path folder) : resources_(std::move(folder)) {}

  std::optional<std::filesystem::path> imageURL(std::string_view name) const override;

  std::string infoString(std::string_view key) const override;
  platform::LocalizedStringsPtr localizedStrings(std::string_view code) const override {
    return resources_.localizedStrings(code);
  }

  // From here on the program says that of itself.
  void setInfoString(std::string key, std::string value) { info_[std::move(key)] = std::move(value); }
  // From here on the resource is in this file, or is missing.
  void setImageURL(std::string name, std::optional<std::filesystem::path> url) {
    replaced_[std::move(name)] = std::move(url);
  }

 private:
  desktops::ResourceBundle resources_;
  std::map<std::string, std::optional<std::filesystem::path>, std::less<>> replaced_;
  std::map<std::string, std::string, std::less<>> info_;
};

}  // namespace hushpane::sim
