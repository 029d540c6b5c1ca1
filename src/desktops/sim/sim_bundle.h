#pragma once

#include <map>
#include <string>

#include "desktops/shared/resource_bundle.h"
#include "platform/image.h"

namespace hushpane::sim {

// The program's resources, some of them replaced by script.
class SimBundle : public platform::Bundle {
 public:
  explicit SimBundle(std::filesystem::path folder) : resources_(std::move(folder)) {}

  platform::ImagePtr image(std::string_view name) override;

  // From here on the resource is this picture; null stands for one that is missing.
  void setImage(std::string name, platform::ImagePtr image) { replaced_[std::move(name)] = std::move(image); }

 private:
  desktops::ResourceBundle resources_;
  std::map<std::string, platform::ImagePtr, std::less<>> replaced_;
};

}  // namespace hushpane::sim
