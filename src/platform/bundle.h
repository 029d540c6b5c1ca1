#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace hushpane::platform {

// The texts of the interface in one language, by their keys.
using LocalizedStrings = std::map<std::string, std::string, std::less<>>;

using LocalizedStringsPtr = std::shared_ptr<const LocalizedStrings>;

namespace bundleKey {
inline constexpr std::string_view shortVersion = "CFBundleShortVersionString";  // as it is written for people
inline constexpr std::string_view version = "CFBundleVersion";
}  // namespace bundleKey

// The resources that come with the program.
class Bundle {
 public:
  virtual ~Bundle() = default;

  // The file of the picture of that name; nothing when it is missing.
  virtual std::optional<std::filesystem::path> imageURL(std::string_view name) const = 0;

  // What the program says of itself under that key, such as bundleKey::shortVersion; empty when it says nothing.
  virtual std::string infoString(std::string_view key) const = 0;

  // The texts in the folder of localised resources of that language, read anew; null when there is no such folder.
  // Empty when the texts are missing or broken.
  virtual LocalizedStringsPtr localizedStrings(std::string_view code) const = 0;
};

}  // namespace hushpane::platform
