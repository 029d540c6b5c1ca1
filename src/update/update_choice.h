#pragma once

#include <string>
#include <string_view>

namespace hushpane::update {

// What a feed means for a program of that version, as the line that is handed to it: "newer", the version as it is
// written for people and its link with tabs between them; "none"; or "unreachable" when nothing in the feed is to be
// trusted, be it unsigned, signed with another key, or broken. Ends with a line feed.
std::string chooseUpdate(std::string_view feed, const std::string& publicKey, std::string_view currentVersion);

inline constexpr const char* unreachableLine = "unreachable\n";

}  // namespace hushpane::update
