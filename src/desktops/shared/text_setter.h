#pragma once

#include <memory>
#include <string>

#include "desktops/shared/pango_text_layout.h"

namespace hushpane::desktops {

// Sets texts with Pango. Its lengths are those of unhinted outlines, the same at every scale.
class TextSetter {
 public:
  TextSetter();

  PangoTextLayout::Setting set(const std::string& text, const platform::TextStyle& style, double width);

 private:
  // From the baseline, in points.
  struct LineMetrics {
    double ascent = 0;
    double descent = 0;
  };

  PangoLayoutPtr lay(const std::string& text, const platform::TextStyle& style, double fontScale);
  PangoLayoutPtr broken(const std::string& text, const platform::TextStyle& style, double width, double fontScale);
  // The largest scale, in hundredths, at which the text needs no more lines than it may have, else the least allowed.
  double fittingScale(const std::string& text, const platform::TextStyle& style, double width);
  PangoLayoutPtr truncatedTail(const PangoLayoutPtr& layout, int line, const platform::TextStyle& style, double width,
                               double fontScale);
  LineMetrics metricsOf(const platform::Font& font, double fontScale);
  void place(PangoTextLayout::Setting& setting, const platform::TextStyle& style);

  std::shared_ptr<PangoContext> context_;
};

}  // namespace hushpane::desktops
