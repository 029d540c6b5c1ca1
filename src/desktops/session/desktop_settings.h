#pragma once

#include <giomm/settings.h>

namespace hushpane::session {

// The desktop's settings (GSettings) of that schema, when they have such a key, for a text; else null. To ask for what
// no schema describes would end the process, and so would the end of the session bus that the settings may come over,
// were they not told to do without.
Glib::RefPtr<Gio::Settings> textSettings(const char* schemaId, const char* key);

}  // namespace hushpane::session
