#pragma once

#include <memory>

#include "platform/text.h"

namespace hushpane::desktops {

class TextSetter;

// Sets texts in the interface font, whatever scripts they hold. Keeps the layouts asked for last, because a page asks
// for the same text many times in a row. Used on one thread.
class PangoTextEngine : public platform::TextEngine {
 public:
  PangoTextEngine();
  ~PangoTextEngine() override;

  platform::TextLayoutPtr layout(const std::string& text, const platform::TextStyle& style, double width) override;

 private:
  class Cache;
  std::unique_ptr<TextSetter> setter_;  // made with the first text: fonts take memory
  std::unique_ptr<Cache> cache_;
};

}  // namespace hushpane::desktops
