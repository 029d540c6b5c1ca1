#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace hushpane::session {

// Where the user's session bus and the system bus listen, by the rules of D-Bus; nothing when there is no
// session bus. No bus is ever started for it.
std::optional<std::string> sessionBusAddress();
std::string systemBusAddress();

// The socket file of an address; nothing when it has none.
std::optional<std::filesystem::path> socketOf(const std::string& address);

}  // namespace hushpane::session
