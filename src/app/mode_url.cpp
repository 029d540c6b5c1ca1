#include "app/mode_url.h"

#include <algorithm>
#include <charconv>
#include <string>

namespace hushpane {

namespace {

constexpr std::string_view acceptedScheme = "hushpane";
constexpr std::string_view acceptedHost = "mode";

struct UrlParts {
  std::string_view scheme;
  std::string_view host;
  std::string_view path;
};

bool isPortOrNone(std::string_view port) {
  return std::all_of(port.begin(), port.end(), [](char c) { return c >= '0' && c <= '9'; });
}

// Splits scheme "://" [user "@"] host [":" port] path ["?" query] ["#" fragment].
std::optional<UrlParts> split(std::string_view url) {
  UrlParts parts;
  const auto colon = url.find("://");
  if (colon == std::string_view::npos) return std::nullopt;
  parts.scheme = url.substr(0, colon);
  url.remove_prefix(colon + 3);
  url = url.substr(0, url.find_first_of("?#"));
  const auto slash = std::min(url.find('/'), url.size());
  std::string_view authority = url.substr(0, slash);
  parts.path = url.substr(slash);
  if (const auto at = authority.rfind('@'); at != std::string_view::npos) authority.remove_prefix(at + 1);
  const auto port = std::min(authority.find(':'), authority.size());
  if (!isPortOrNone(authority.substr(std::min(port + 1, authority.size())))) return std::nullopt;
  parts.host = authority.substr(0, port);
  return parts;
}

std::string_view lastComponent(std::string_view path) {
  const auto end = path.find_last_not_of('/');
  if (end == std::string_view::npos) return {};
  path = path.substr(0, end + 1);
  return path.substr(path.rfind('/') + 1);
}

// Nothing when a "%" is not followed by two hexadecimal digits.
std::optional<std::string> percentDecoded(std::string_view text) {
  std::string decoded;
  for (std::size_t index = 0; index < text.size(); ++index) {
    if (text[index] != '%') {
      decoded += text[index];
      continue;
    }
    if (text.size() - index < 3) return std::nullopt;
    unsigned char byte = 0;
    const char* end = text.data() + index + 3;
    if (std::from_chars(text.data() + index + 1, end, byte, 16).ptr != end) return std::nullopt;
    decoded += static_cast<char>(byte);
    index += 2;
  }
  return decoded;
}

}  // namespace

std::optional<VeilMode> requestedMode(std::string_view url) {
  const auto parts = split(url);
  if (!parts || parts->scheme != acceptedScheme || parts->host != acceptedHost) return std::nullopt;
  const auto text = percentDecoded(lastComponent(parts->path));
  const auto mode = text ? fromRawValue<VeilMode>(*text) : std::nullopt;
  return mode && isUserMode(*mode) ? mode : std::nullopt;
}

}  // namespace hushpane
