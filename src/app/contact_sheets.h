#pragma once

#include <memory>

#include "platform/contact_sheet.h"
#include "platform/platform.h"

namespace hushpane {

// The sheets "symbols", "controls", "pods", "card", "welcome" and "hint": every control and view in every state. Leaves
// the settings of the cover and the language as the last view had them.
std::unique_ptr<platform::ContactSheet> openContactSheet(platform::Platform& platform,
                                                         const platform::ContactSheetRequest& request);

}  // namespace hushpane
