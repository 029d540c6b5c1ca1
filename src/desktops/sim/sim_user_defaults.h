#pragma once

#include <functional>

#include "platform/user_defaults.h"

namespace hushpane::sim {

// Settings in a dictionary of the storage.
class SimUserDefaults : public platform::UserDefaults {
 public:
  // `changed` is called after every change, also of another program.
  SimUserDefaults(platform::Dictionary& store, std::function<void()> changed);

  std::optional<platform::Value> value(std::string_view key) const override;
  void set(std::string_view key, platform::Value value) override;
  void remove(std::string_view key) override;

  const platform::Dictionary& all() const { return store_; }

 private:
  platform::Dictionary& store_;
  std::function<void()> changed_;
};

}  // namespace hushpane::sim
