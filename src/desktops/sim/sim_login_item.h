#pragma once

#include "desktops/sim/storage.h"
#include "platform/login_item.h"

namespace hushpane::sim {

class SimLoginItem : public platform::LoginItem {
 public:
  explicit SimLoginItem(Storage& storage) : storage_(storage) {}

  bool isEnabled() const override { return storage_.isLoginItem; }
  bool registerItem() override { return set(true); }
  bool unregisterItem() override { return set(false); }

  // From here on the desktop refuses changes, or takes them again.
  void setRefuses(bool refuses) { refuses_ = refuses; }

 private:
  bool set(bool isLoginItem) {
    if (refuses_) return false;
    storage_.isLoginItem = isLoginItem;
    return true;
  }

  Storage& storage_;
  bool refuses_ = false;
};

}  // namespace hushpane::sim
