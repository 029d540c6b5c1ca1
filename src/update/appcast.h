#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace hushpane::update {

// A version that a feed offers.
struct AppcastEntry {
  std::string version;
  std::string shortVersion;    // as it is written for people; empty: as above
  std::string link;            // where it is to be had
  std::string minimumVersion;  // the oldest version that it can replace; empty: any
  std::string signature;       // Ed25519 of signedText(), in base64
  bool operator==(const AppcastEntry&) const = default;
};

// What the signature of an entry is over: its version, short version, link and minimum version as the feed has them, in
// UTF-8, each followed by a line feed. One that the feed leaves out is an empty line.
std::string signedText(const AppcastEntry& entry);

// Reads an RSS feed:
//
//   <rss version="2.0"><channel>
//     <item>
//       <link>https://example.org/hushpane/1.4.0</link>
//       <minimumVersion>1.0.0</minimumVersion>
//       <enclosure version="1.4.0" shortVersionString="1.4" edSignature="..." url="..." length="..."/>
//     </item>
//   </channel></rss>
//
// Prefixes of names do not count, nor does what is not named above: url and length are for readers that download, which
// this one never does. Nothing for what is not well-formed, declares a document type, or exceeds the limits of
// size, depth, and entries. Entries that lack a version, link or signature, or tell one twice, are left out.
std::optional<std::vector<AppcastEntry>> parseAppcast(std::string_view feed);

inline constexpr std::size_t largestFeed = 1 << 20;  // bytes

}  // namespace hushpane::update
