#pragma once

#include <optional>
#include <string>

namespace hushpane::update {

// Reads the feed at that address, and waits for it. Redirections are followed a few times, to places that a feed may be
// read from, and never away from https:. The request carries `agent` as User-Agent and nothing else of the user: no
// cookies, no language, no password. Nothing when the feed cannot be had or is too large.
std::optional<std::string> fetchFeed(const std::string& address, const std::string& agent);

}  // namespace hushpane::update
