#pragma once

#include <memory>

#include "platform/contact_sheet.h"
#include "platform/platform.h"

namespace hushpane {

// The sheets "symbols", "controls", "pods", "card", "menu", "preferences", "welcome" and "hint": every control, view
// and page in every state. Leaves the mode, the settings and the language as the last view had them.
std::unique_ptr<platform::ContactSheet> openContactSheet(platform::Platform& platform,
                                                         const platform::ContactSheetRequest& request);

}  // namespace hushpane
