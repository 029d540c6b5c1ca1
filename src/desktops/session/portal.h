#pragma once

namespace hushpane::session {

// The desktop's portals (XDG Desktop Portal), all on one object of one service.
namespace portal {
inline constexpr const char* name = "org.freedesktop.portal.Desktop";
inline constexpr const char* path = "/org/freedesktop/portal/desktop";
}  // namespace portal

}  // namespace hushpane::session
