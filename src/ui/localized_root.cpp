#include "ui/localized_root.h"

#include "localization/language_manager.h"
#include "localization/supported_language.h"

namespace hushpane {

declarative::Element LocalizedRoot::body(declarative::Context& context) const {
  auto& languages = LanguageManager::shared();
  context.observe(languages);
  return content().environment([code = languages.resolvedCode(), isMirrored = isRightToLeft(languages.shownCode())](
                                   declarative::Environment& environment) {
    environment.locale = code;
    environment.direction =
        isMirrored ? platform::LayoutDirection::rightToLeft : platform::LayoutDirection::leftToRight;
  });
}

}  // namespace hushpane
