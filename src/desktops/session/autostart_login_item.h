#pragma once

#include <filesystem>
#include <string>

#include "platform/login_item.h"

namespace hushpane::session {

// The entry that desktops read at login, by the Desktop Application Autostart Specification: the user's own entry
// counts before one that was installed for everybody. An entry that is hidden, disabled, broken, meant for other
// desktops, or whose program is gone counts as none.
class AutostartLoginItem : public platform::LoginItem {
 public:
  // The entry starts that program; an empty path is none that can be started.
  explicit AutostartLoginItem(std::filesystem::path program) : program_(std::move(program)) {}

  bool isEnabled() const override;
  bool registerItem() override;
  // Where an entry for everybody exists, the user's one says from then on that it is hidden.
  bool unregisterItem() override;

 private:
  std::filesystem::path program_;
};

// The file of the running program; empty when it was removed since.
std::filesystem::path ownProgram();

}  // namespace hushpane::session
