#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace hushpane::update {

// A version as Semantic Versioning 2.0 writes it: 1.4.0, 2.0.0-beta.2, 1.0.0+build.
class SemanticVersion {
 public:
  // Nothing for any other text.
  static std::optional<SemanticVersion> parse(std::string_view text);

  // A pre-release comes before its release; builds do not count.
  std::strong_ordering operator<=>(const SemanticVersion& other) const;
  bool operator==(const SemanticVersion& other) const { return *this <=> other == 0; }

 private:
  std::vector<std::uint64_t> numbers_;
  std::vector<std::string> preRelease_;  // its parts; none: a release
};

}  // namespace hushpane::update
