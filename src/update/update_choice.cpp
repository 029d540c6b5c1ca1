#include "update/update_choice.h"

#include <optional>

#include "desktops/shared/feed_address.h"
#include "update/appcast.h"
#include "update/ed25519.h"
#include "update/semantic_version.h"

namespace hushpane::update {

namespace {

bool canReplace(const AppcastEntry& entry, const SemanticVersion& current) {
  if (entry.minimumVersion.empty()) return true;
  const auto minimum = SemanticVersion::parse(entry.minimumVersion);
  return minimum && *minimum <= current;
}

}  // namespace

std::string chooseUpdate(std::string_view feed, const std::string& publicKey, std::string_view currentVersion) {
  const auto entries = parseAppcast(feed);
  auto newest = SemanticVersion::parse(currentVersion);
  if (!entries || !newest) return unreachableLine;
  const auto current = *newest;
  bool isTrusted = false;
  std::optional<AppcastEntry> chosen;
  for (const auto& entry : *entries) {
    const auto version = SemanticVersion::parse(entry.version);
    if (!version || !desktops::isUpdateLink(entry.link)) continue;
    if (!isSignedBy(publicKey, entry.signature, signedText(entry))) continue;
    isTrusted = true;
    if (*version <= *newest || !canReplace(entry, current)) continue;
    newest = version;
    chosen = entry;
  }
  if (!isTrusted) return unreachableLine;
  if (!chosen) return "none\n";
  return "newer\t" + (chosen->shortVersion.empty() ? chosen->version : chosen->shortVersion) + '\t' + chosen->link +
         '\n';
}

}  // namespace hushpane::update
