#pragma once

#include <giomm/settings.h>

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "platform/lifetime.h"
#include "platform/token.h"

namespace hushpane::session {

// Whether the theme of that name is a dark one: "dark" is a word of it.
bool isDarkTheme(std::string_view name);

// Where the windowing system knows the name of the theme in which other programs draw themselves.
struct ThemeSource {
  std::function<std::optional<std::string>()> name;
  std::function<platform::Token(std::function<void()>)> observe;
};

// The same name from the settings of the running desktop environment, for where nothing else tells it.
class ThemeSetting {
 public:
  // The handler is called after each change, on the main loop.
  explicit ThemeSetting(std::function<void()> changed);

  std::optional<std::string> name() const;

 private:
  Glib::RefPtr<Gio::Settings> settings_;  // null where there is no such setting
  platform::Lifetime lifetime_;
};

}  // namespace hushpane::session
