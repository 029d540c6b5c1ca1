#include "desktops/session/open_url.h"

#include <giomm/appinfo.h>

#include <algorithm>
#include <array>
#include <memory>
#include <optional>

#include "desktops/session/portal.h"
#include "desktops/shared/debug_log.h"

namespace hushpane::session {

namespace {

constexpr std::size_t longestUrl = 8192;

// The scheme, when the address may be opened.
std::optional<std::string> schemeOf(const std::string& url) {
  if (url.size() > longestUrl) return std::nullopt;
  const std::unique_ptr<GUri, void (*)(GUri*)> parsed(
      g_uri_parse(url.c_str(), static_cast<GUriFlags>(G_URI_FLAGS_ENCODED), nullptr), [](GUri* uri) {
        if (uri) g_uri_unref(uri);
      });
  if (!parsed || url.find('\0') != url.npos) return std::nullopt;
  const std::string scheme = g_uri_get_scheme(parsed.get());
  const bool isOpened = std::ranges::any_of(std::array{"https", "http", "mailto"},
                                            [&](const char* allowed) { return scheme == allowed; });
  return isOpened ? std::optional(scheme) : std::nullopt;
}

void launch(const std::string& url) {
  Gio::AppInfo::launch_default_for_uri_async(url, [](const Glib::RefPtr<Gio::AsyncResult>& result) {
    try {
      Gio::AppInfo::launch_default_for_uri_finish(result);
    } catch (const Glib::Error& error) {
      desktops::debugLog(std::string("cannot open an address: ") + error.what());
    }
  });
}

}  // namespace

bool UrlOpener::open(const std::string& url) {
  const auto scheme = schemeOf(url);
  if (!scheme) return false;
  if (Gio::AppInfo::get_default_for_uri_scheme(*scheme)) {
    launch(url);
    return true;
  }
  if (!portal_.isPresent()) return false;
  GVariantBuilder options;
  g_variant_builder_init(&options, G_VARIANT_TYPE_VARDICT);
  portal_.call(portal::path, "org.freedesktop.portal.OpenURI", "OpenURI",
               g_variant_new("(ssa{sv})", "", url.c_str(), &options), [](const auto&) {});
  return true;
}

}  // namespace hushpane::session
