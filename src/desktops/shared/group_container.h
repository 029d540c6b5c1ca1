#pragma once

#include <filesystem>
#include <optional>

#include "platform/property_list.h"

namespace hushpane::desktops {

// One folder for each group, named after it, in the user's data folder.
class GroupContainer : public platform::SharedContainer {
 public:
  // What becomes of a folder that is missing: those who only read leave no trace.
  enum class Missing { make, leave };

  // Without a data folder no group has one.
  explicit GroupContainer(std::optional<std::filesystem::path> dataHome, Missing missing = Missing::make);

  std::optional<std::filesystem::path> url(std::string_view groupIdentifier) override;

 private:
  std::optional<std::filesystem::path> dataHome_;
  Missing missing_;
};

}  // namespace hushpane::desktops
