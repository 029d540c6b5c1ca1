#pragma once

#include "desktops/sim/storage.h"
#include "platform/property_list.h"

namespace hushpane::sim {

class SimSharedContainer : public platform::SharedContainer {
 public:
  explicit SimSharedContainer(const Storage& storage) : storage_(storage) {}

  std::optional<std::filesystem::path> url(std::string_view groupIdentifier) override;

 private:
  const Storage& storage_;
};

}  // namespace hushpane::sim
