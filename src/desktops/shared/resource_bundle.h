#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

#include "platform/bundle.h"

namespace hushpane::desktops {

// Where the resources of this program are: the folder that HUSHPANE_RESOURCES names, else `resources` beside the binary
// (a build tree), else share/hushpane below the prefix that the binary was installed under.
std::filesystem::path resourceFolder();
// The same for a binary elsewhere.
std::filesystem::path resourceFolder(const std::filesystem::path& binary);

// The version of the program is that of this build. The resources are in a folder; pictures are NAME.png, else
// NAME.svg; texts are CODE.lproj/Localizable.strings.
class ResourceBundle : public platform::Bundle {
 public:
  explicit ResourceBundle(std::filesystem::path folder);

  std::optional<std::filesystem::path> imageURL(std::string_view name) const override;
  std::string infoString(std::string_view key) const override;
  platform::LocalizedStringsPtr localizedStrings(std::string_view code) const override;

 private:
  std::filesystem::path folder_;
};

}  // namespace hushpane::desktops
