#pragma once

// Where the links of the program lead; whoever packages it puts in what is theirs.
namespace hushpane::outboundLinks {

// The page on which the program is rated; the query asks it for its form.
inline constexpr const char* reviewPage = "https://hushpane.example/review?action=write-review";
inline constexpr const char* supportMailbox = "mailto:support@hushpane.example";

}  // namespace hushpane::outboundLinks
