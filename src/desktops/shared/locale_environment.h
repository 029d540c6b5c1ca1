#pragma once

#include <string>
#include <vector>

#include "platform/locale.h"

namespace hushpane::desktops {

// The locale of the process's environment. LC_ALL, else LC_MESSAGES, else LANG names it; LANGUAGE, a list separated by
// colons, takes its place unless it is the one without translations (C or POSIX), which gives no languages. These are
// the rules of gettext. Its names (language_REGION.codeset@modifier) become tags, by these rules besides:
// - codeset and modifier are dropped; a name of another form is passed over;
// - Chinese goes by script: Hant for Taiwan, Hong Kong and Macau, else Hans;
// - Spanish of the Americas is es-419; Portuguese is pt-BR without a region, else pt-PT outside Brazil;
// - superseded codes are replaced (iw, in, no, mo), and readers of nn are offered nb next.
class LocaleEnvironment : public platform::Locale {
 public:
  std::vector<std::string> preferredLanguages() const override;
};

}  // namespace hushpane::desktops
