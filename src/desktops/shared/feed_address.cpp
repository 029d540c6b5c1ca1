#include "desktops/shared/feed_address.h"

#include <glib.h>

#include <algorithm>
#include <memory>
#include <string_view>

namespace hushpane::desktops {

namespace {

constexpr std::size_t longestAddress = 2048;

struct Unref {
  void operator()(GUri* uri) const { g_uri_unref(uri); }
};
using Uri = std::unique_ptr<GUri, Unref>;

// Null for what is no address with a host.
Uri parse(const std::string& address) {
  const auto isPrintable = [](char letter) { return letter > ' ' && letter < '\x7f'; };
  if (address.size() > longestAddress || !std::ranges::all_of(address, isPrintable)) return nullptr;
  Uri uri(g_uri_parse(address.c_str(), G_URI_FLAGS_HAS_PASSWORD, nullptr));
  const bool hasHost = uri && g_uri_get_host(uri.get()) && *g_uri_get_host(uri.get());
  return hasHost && !g_uri_get_userinfo(uri.get()) ? std::move(uri) : nullptr;
}

}  // namespace

bool isFeedAddress(const std::string& address) {
  const auto uri = parse(address);
  if (!uri) return false;
  const std::string_view scheme = g_uri_get_scheme(uri.get()), host = g_uri_get_host(uri.get());
  return scheme == "https" || (scheme == "http" && (host == "127.0.0.1" || host == "localhost"));
}

bool isUpdateLink(const std::string& address) {
  const auto uri = parse(address);
  return uri && g_uri_get_scheme(uri.get()) == std::string_view("https");
}

}  // namespace hushpane::desktops
