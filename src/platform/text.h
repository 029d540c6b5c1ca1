#pragma once

#include <limits>
#include <memory>
#include <string>

#include "platform/geometry.h"

namespace hushpane::platform {

// By the weights of OpenType's OS/2 table (usWeightClass), hundreds from 100 to 900.
enum class FontWeight { ultraLight = 200, light = 300, regular = 400, medium = 500, semibold = 600, bold = 700 };

// The interface font of the desktop at a size in points.
struct Font {
  double size = 13;
  FontWeight weight = FontWeight::regular;
  bool italic = false;
  double tracking = 0;  // points added between letters, but not where they join
  bool operator==(const Font&) const = default;
};

enum class TextAlignment { leading, center, trailing };
enum class LayoutDirection { leftToRight, rightToLeft };

struct TextStyle {
  Font font;
  TextAlignment alignment = TextAlignment::leading;  // of lines that are shorter than the widest
  int lineLimit = 0;                                 // 0: as many lines as it takes
  double lineSpacing = 0;                            // points between two lines
  // Of the font size, down to which a text shrinks before its last line is truncated at the tail.
  double minimumScale = 1;
  LayoutDirection direction = LayoutDirection::leftToRight;  // of the paragraph; "leading" is meant by it
  // A tag such as ja: letters that languages share are drawn as this one draws them. Empty: as the user's does.
  std::string language = {};
  bool operator==(const TextStyle&) const = default;
};

// A text broken into lines and measured. Its size is that of the lines themselves, tight in width; the height holds
// full lines of the font, ascent and descent. Immutable; drawn by a canvas of the desktop that made it.
class TextLayout {
 public:
  virtual ~TextLayout() = default;
  virtual const std::string& text() const = 0;
  virtual Size size() const = 0;
  // From the top to the base of the first line.
  virtual double firstBaseline() const = 0;
  virtual int lineCount() const = 0;
  virtual bool isTruncated() const = 0;
  virtual double fontScale() const = 0;  // below 1 where the text had to shrink
};

using TextLayoutPtr = std::shared_ptr<const TextLayout>;

// Sets texts. Answers for the same arguments are the same, whatever the scale of the screen.
class TextEngine {
 public:
  static constexpr double unlimited = std::numeric_limits<double>::infinity();

  virtual ~TextEngine() = default;
  // Breaks `text` (UTF-8; bad bytes show as replacement characters) at no more than `width` points, at words where that
  // goes, else within them. Never null; a text of many thousand letters may be cut where nobody could see it.
  virtual TextLayoutPtr layout(const std::string& text, const TextStyle& style, double width) = 0;
};

}  // namespace hushpane::platform
