#pragma once

#include <string>
#include <string_view>

namespace hushpane::update {

// Whether the text was signed with the key (both in base64). False for keys and signatures that are none.
bool isSignedBy(const std::string& publicKey, const std::string& signature, std::string_view text);

}  // namespace hushpane::update
