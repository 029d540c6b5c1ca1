#pragma once

#include "platform/json.h"

namespace hushpane::desktops {

class JsonText : public platform::JsonCoder {
 public:
  std::optional<platform::Json> decode(const platform::Data& text) const override;
  std::optional<platform::Data> encode(const platform::Json& value) const override;
};

}  // namespace hushpane::desktops
