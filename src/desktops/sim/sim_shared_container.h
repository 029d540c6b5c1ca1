#pragma once

#include "desktops/sim/storage.h"
#include "platform/property_list.h"

namespace hushpane::sim {

class SimSharedContainer : public platform::SharedContainer {
 public:
  explicit SimSharedContainer(const Storage& storage) : storage_(storage) {}

  std::optional<std::filesystem::path> url(std::string_view groupIdentifier) override;

  // From here on no group has a folder, or each has one again.
  void setAbsent(bool absent) { isAbsent_ = absent; }

 private:
  const Storage& storage_;
  bool isAbsent_ = false;
};

}  // namespace hushpane::sim
