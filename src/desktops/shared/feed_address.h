#pragma once

#include <string>

namespace hushpane::desktops {

// Whether a feed of updates may be read there: https:, or http: from a server on this machine, without a user name.
bool isFeedAddress(const std::string& address);

// Whether an address may be shown to the user as the place of an update: https: only.
bool isUpdateLink(const std::string& address);

}  // namespace hushpane::desktops
