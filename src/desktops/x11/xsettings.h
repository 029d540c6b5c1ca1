#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "desktops/x11/connection.h"
#include "platform/handler_list.h"
#include "platform/token.h"

namespace hushpane::x11 {

using XsettingsValues = std::map<std::string, std::variant<std::int32_t, std::string>, std::less<>>;

// What a desktop tells all programs in the property of that name, without colours. Of bytes that break off or
// contradict themselves, what comes before that.
XsettingsValues xsettingsIn(std::span<const std::uint8_t> bytes);

// The settings of the screen, after the XSETTINGS protocol of freedesktop.org, whoever manages them. None while nobody
// does.
class Xsettings {
 public:
  explicit Xsettings(Connection& connection);

  // Nothing where there is no such setting, or one of another kind.
  std::optional<std::int32_t> number(std::string_view name) const;
  std::optional<std::string> text(std::string_view name) const;

  // Called, while events are being handled, after some setting changed.
  platform::Token addChangeHandler(std::function<void()> handler) { return changes_.add(std::move(handler)); }

 private:
  void handle(const xcb_generic_event_t& event);
  void findManager();
  void read();

  Connection& connection_;
  xcb_atom_t selection_;
  xcb_window_t manager_ = XCB_WINDOW_NONE;
  XsettingsValues values_;
  platform::HandlerList<void()> changes_;
  platform::Token events_;
};

}  // namespace hushpane::x11
