#include "desktops/shared/pango_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <string>

#include "desktops/shared/painted.h"
#include "desktops/shared/pango_glyphs.h"
#include "desktops/shared/text_setter.h"
#include "support/temporary_folder.h"

namespace hushpane::desktops {
namespace {

using platform::LayoutDirection;
using platform::TextAlignment;
using platform::TextEngine;
using platform::TextStyle;

constexpr double unlimited = TextEngine::unlimited;
constexpr platform::Color black{0, 0, 0, 1};
const std::string sentence = "The quick brown fox jumps over the lazy dog";
const std::string arabic = "سطح المكتب الهادئ والمظلم";

TextStyle styleOf(double size, int lineLimit = 0) {
  TextStyle style;
  style.font.size = size;
  style.lineLimit = lineLimit;
  return style;
}

class PangoTextTest : public ::testing::Test {
 protected:
  platform::TextLayoutPtr lay(const std::string& text, const TextStyle& style = styleOf(13), double width = unlimited) {
    return engine_.layout(text, style, width);
  }
  Painted painted(const platform::TextLayout& layout, double scale = 1, platform::Point origin = {4, 4}) {
    return Painted(layout.size().width + 8, layout.size().height + 8, scale).draw([&](platform::Canvas& canvas) {
      canvas.drawText(layout, origin, 1, black);
    });
  }

  PangoTextEngine engine_;
};

// Fonts that hold every kind of Chinese draw each as they should once they are told, others only their own.
TEST_F(PangoTextTest, ChineseIsSetInTheFontOfItsScript) {
  const auto familyFor = [](const char* language) {
    auto style = styleOf(20);
    style.language = language;
    const auto setting = TextSetter().set("直骨", style, unlimited);
    std::string family;
    forEachRun(setting.lines.front().line, [&](const PangoGlyphItem& run, double) {
      PangoFontDescription* font = pango_font_describe(run.item->analysis.font);
      family = pango_font_description_get_family(font);
      pango_font_description_free(font);
    });
    return family;
  };
  EXPECT_EQ(familyFor("zh-Hans"), "Noto Sans CJK SC");
  EXPECT_EQ(familyFor("zh-Hant"), "Noto Sans CJK TC");
  EXPECT_EQ(familyFor("ja"), "Noto Sans CJK JP");
}

TEST_F(PangoTextTest, WidthsGrowWithSizeWeightTrackingAndText) {
  const double width = lay(sentence)->size().width;
  EXPECT_NEAR(lay(sentence, styleOf(26))->size().width, 2 * width, 0.01 * width) << "no rounding of letters";
  auto style = styleOf(13);
  style.font.weight = platform::FontWeight::bold;
  EXPECT_GT(lay(sentence, style)->size().width, width);
  style = styleOf(13);
  style.font.tracking = 0.5;
  EXPECT_NEAR(lay("abcde", style)->size().width - lay("abcde")->size().width, 4 * 0.5, 0.1) << "between letters";
  EXPECT_EQ(lay(arabic, style)->size(), lay(arabic)->size()) << "letters that join stay joined";
  EXPECT_LT(lay(sentence.substr(0, 20))->size().width, width);
}

TEST_F(PangoTextTest, ATextAskedForAtItsOwnWidthBreaksNoFurther) {
  for (const std::string& text : {sentence, arabic, std::string("デスクトップを静かにする"), std::string("AVATAR To")})
    for (double size = 9; size < 20; size += 0.7) {
      const auto tight = lay(text, styleOf(size));
      const auto again = lay(text, styleOf(size), tight->size().width);
      EXPECT_EQ(again->lineCount(), 1) << size;
      EXPECT_FALSE(lay(text, styleOf(size, 1), tight->size().width)->isTruncated()) << size;
    }
}

TEST_F(PangoTextTest, WrapsAtWordsElseWithinThem) {
  const auto layout = lay(sentence, styleOf(12), 100);
  EXPECT_GE(layout->lineCount(), 3);
  EXPECT_LE(layout->size().width, 100.1);
  EXPECT_NEAR(layout->size().height, layout->lineCount() * lay("x", styleOf(12))->size().height, 1e-6);
  const auto word = lay("Donaudampfschifffahrtsgesellschaft", styleOf(12), 60);
  EXPECT_GE(word->lineCount(), 3);
  EXPECT_LE(word->size().width, 60.1);
  auto spaced = styleOf(12);
  spaced.lineSpacing = 5;
  EXPECT_NEAR(lay(sentence, spaced, 100)->size().height, layout->size().height + 5 * (layout->lineCount() - 1), 1e-6);
}

TEST_F(PangoTextTest, TruncatesTheLastLineAtItsTail) {
  for (const int limit : {1, 2}) {
    const auto layout = lay(sentence + " " + sentence, styleOf(12, limit), 100);
    EXPECT_TRUE(layout->isTruncated());
    EXPECT_EQ(layout->lineCount(), limit);
    EXPECT_LE(layout->size().width, 100.1);
    EXPECT_GT(layout->size().width, 70);
  }
  for (const auto direction : {LayoutDirection::leftToRight, LayoutDirection::rightToLeft}) {
    auto style = styleOf(18, 1);
    style.direction = direction;
    const auto cut = lay("デスクトップを静かにする", style, 140);
    EXPECT_LT(cut->size().width, 135) << "no room that only another letter would have filled";
    EXPECT_NEAR(painted(*cut).ink().width, cut->size().width, 6);
  }
  const auto broken = lay("one\ntwo\nthree", styleOf(12, 2));
  EXPECT_TRUE(broken->isTruncated()) << "what a line break hides is missing, too";
  EXPECT_GT(broken->size().width, lay("two", styleOf(12))->size().width);
  EXPECT_FALSE(lay("one\ntwo", styleOf(12, 2))->isTruncated());
}

TEST_F(PangoTextTest, ShrinksAsFarAsItMayBeforeItTruncates) {
  const double natural = lay(sentence)->size().width;
  auto style = styleOf(13, 1);
  style.minimumScale = 0.7;
  EXPECT_EQ(lay(sentence, style, natural + 1)->fontScale(), 1);
  const auto shrunk = lay(sentence, style, 0.85 * natural);
  EXPECT_FALSE(shrunk->isTruncated());
  EXPECT_NEAR(shrunk->fontScale(), 0.85, 0.015) << "no further than it must";
  EXPECT_LE(shrunk->size().width, 0.85 * natural + 0.1);
  const auto truncated = lay(sentence, style, 0.4 * natural);
  EXPECT_TRUE(truncated->isTruncated());
  EXPECT_EQ(truncated->fontScale(), 0.7);
}

TEST_F(PangoTextTest, LinesAreAlignedWithinTheWidest) {
  const auto firstInk = [this](TextAlignment alignment, LayoutDirection direction) {
    auto style = styleOf(20);
    style.alignment = alignment;
    style.direction = direction;
    const auto layout = lay("ll\nmmmmmmmm", style);
    auto picture = painted(*layout);
    const int half = 4 + static_cast<int>(layout->size().height / 2);
    picture.image.height = half;
    const auto ink = picture.ink();
    return (ink.x + ink.width / 2 - 4) / layout->size().width;
  };
  for (const auto direction : {LayoutDirection::leftToRight, LayoutDirection::rightToLeft}) {
    const bool mirrored = direction == LayoutDirection::rightToLeft;
    EXPECT_NEAR(firstInk(TextAlignment::leading, direction), mirrored ? 0.97 : 0.03, 0.04);
    EXPECT_NEAR(firstInk(TextAlignment::center, direction), 0.5, 0.03);
    EXPECT_NEAR(firstInk(TextAlignment::trailing, direction), mirrored ? 0.03 : 0.97, 0.04);
  }
}

TEST_F(PangoTextTest, ParagraphsReadInTheirDirection) {
  auto style = styleOf(20);
  const std::string text =
      "lll "
      "שש";
  const auto widthOf = [&](const std::string& part) { return lay(part, style)->size().width; };
  const double latin = widthOf("lll");
  const auto darkest = [&](LayoutDirection direction) {
    style.direction = direction;
    const auto layout = lay(text, style);
    const auto picture = painted(*layout);
    // The Latin letters reach higher than the Hebrew ones.
    for (int x = 0; x < picture.image.width; ++x)
      if (picture.pixel(x, 4 + static_cast<int>(layout->firstBaseline() - 13.5)) >> 24 > 100) return x - 4.0;
    return -1.0;
  };
  EXPECT_LT(darkest(LayoutDirection::leftToRight), latin);
  EXPECT_GT(darkest(LayoutDirection::rightToLeft), widthOf("שש"));
}

TEST_F(PangoTextTest, RowsKeepTheirHeightAndBaselineInEveryLanguage) {
  const auto base = lay("Hushpane");
  const std::pair<const char*, std::string> texts[]{{"ja", "デスクトップ"},
                                                    {"ar", arabic},
                                                    {"he", "שולחן"},
                                                    {"th", "เดสก์ท็อป"},
                                                    {"ko", "바탕 화면"},
                                                    {"de", "🇩🇪 Deutsch"},
                                                    {"sv", "ÅÄÖ gjpq"},
                                                    {"zh-Hant", "日本語 العربية"},
                                                    {"", ""}};
  for (const auto& [language, text] : texts) {
    auto style = styleOf(13);
    style.language = language;
    EXPECT_EQ(lay(text, style)->size().height, base->size().height) << text;
    EXPECT_EQ(lay(text, style)->firstBaseline(), base->firstBaseline()) << text;
  }
  EXPECT_GT(lay("م\u0650\u0650\u0650\u0650")->size().height, base->size().height) << "stacked marks have room";
  EXPECT_EQ(lay("")->size().width, 0);
  EXPECT_EQ(lay("")->lineCount(), 1);
}

TEST_F(PangoTextTest, LettersStandOnTheBaselineOnAWholePixel) {
  const auto layout = lay("HHH", styleOf(24));
  for (const double scale : {1.0, 1.25, 1.5, 2.0})
    for (const double y : {4.0, 4.3, 4.75}) {
      const auto ink = painted(*layout, scale, {4, y}).ink();
      EXPECT_EQ(ink.y + ink.height, std::round((y + layout->firstBaseline()) * scale)) << scale;
      EXPECT_NEAR(ink.height, 24 * 0.727 * scale, 1) << scale << ": as high as capitals are";
      EXPECT_NEAR(ink.width, layout->size().width * scale, 0.2 * 24 * scale) << scale;
    }
}

TEST_F(PangoTextTest, DrawsEnlargedFromTheOriginAndInTheColor) {
  const auto layout = lay("MMM", styleOf(20));
  const auto plain = painted(*layout).ink();
  Painted large(2 * layout->size().width + 16, 2 * layout->size().height + 16);
  large.draw([&](platform::Canvas& canvas) { canvas.drawText(*layout, {4, 4}, 2, {1, 0, 0, 0.5}); });
  EXPECT_NEAR(large.ink().width, 2 * plain.width, 3);
  EXPECT_NEAR(large.ink().height, 2 * plain.height, 2);
  std::uint32_t most = 0;
  for (const auto pixel : large.image.pixels) most = std::max(most, pixel);
  EXPECT_EQ(most, 0x80800000u);
}

TEST_F(PangoTextTest, FlagsKeepTheirColorsAndFade) {
  const auto flag = lay("🇩🇪", styleOf(40));
  EXPECT_LT(flag->size().width, 70) << "one flag, not two letters";
  for (const double alpha : {1.0, 0.5}) {
    Painted picture(80, 60);
    picture.draw([&](platform::Canvas& canvas) { canvas.drawText(*flag, {0, 0}, 1, {0, 0, 1, alpha}); });
    int redPixels = 0, strongest = 0;
    for (const auto pixel : picture.image.pixels) {
      redPixels += (pixel >> 16 & 0xff) > (pixel & 0xff) + 60;
      strongest = std::max(strongest, static_cast<int>(pixel >> 24));
    }
    EXPECT_GT(redPixels, 100) << alpha;
    EXPECT_NEAR(strongest, 255 * alpha, 2);
  }
}

TEST_F(PangoTextTest, BadTextsAreReadable) {
  const auto width = [this](const std::string& text) { return lay(text)->size().width; };
  EXPECT_EQ(width("a\xff"
                  "b"),
            width("a\uFFFDb"));
  EXPECT_EQ(width("a\xe2\x82"), width("a\uFFFD\uFFFD")) << "cut in the middle of a letter";
  EXPECT_EQ(width(std::string("a\0b\x01\x7f\xc2\x9f", 7)), width("ab"));
  EXPECT_EQ(width("a\tb"), width("a b"));
  EXPECT_EQ(lay("a\r\nb\rc\u2028d\u0085"
                "e")
                ->lineCount(),
            5);
  EXPECT_EQ(lay("\n\n")->lineCount(), 3);
  for (const double number : {std::nan(""), -unlimited, -5.0, 0.0}) {
    EXPECT_GT(lay("some words", styleOf(12), number)->size().height, 0);
    EXPECT_GT(lay("some words", styleOf(number)).get()->lineCount(), 0);
    auto style = styleOf(12, 1);
    style.minimumScale = number;
    style.font.tracking = number;
    EXPECT_EQ(lay("some words", style, 30)->lineCount(), 1);
  }
}

TEST_F(PangoTextTest, VeryLongTextsAreCut) {
  const std::string text(10000, 'n');
  const auto wrapped = lay(text, styleOf(12), 240);
  EXPECT_TRUE(wrapped->isTruncated());
  EXPECT_LT(wrapped->lineCount(), 200);
  auto style = styleOf(12, 2);
  style.minimumScale = 0.5;
  const auto limited = lay(text, style, 240);
  EXPECT_TRUE(limited->isTruncated());
  EXPECT_EQ(limited->lineCount(), 2);
  EXPECT_GT(limited->size().width, 220) << "the cut is not seen";
  EXPECT_EQ(limited->text(), text);
}

TEST_F(PangoTextTest, TheSameTextIsSetOnce) {
  const auto first = lay(sentence, styleOf(12), 100);
  EXPECT_EQ(lay(sentence, styleOf(12), 100), first);
  EXPECT_NE(lay(sentence, styleOf(12), 101), first);
  EXPECT_NE(lay(sentence, styleOf(12, 1), 100), first);
  std::weak_ptr<const platform::TextLayout> kept = lay("only for now");
  EXPECT_FALSE(kept.expired());
  for (int index = 0; index < 300; ++index) lay("text " + std::to_string(index));
  EXPECT_TRUE(kept.expired()) << "what was not asked for lately is given up";
}

// Runs in a process of its own, which reads the fonts anew.
bool setsTextsWith(const std::string& fonts, bool drawsLetters) {
  const TemporaryFolder folder;
  const auto file = folder / "fonts.conf";
  std::ofstream(file) << "<fontconfig>" << fonts << "<cachedir>" << folder.path().string()
                      << "</cachedir></fontconfig>";
  setenv("FONTCONFIG_FILE", file.c_str(), 1);
  PangoTextEngine engine;
  const auto layout = engine.layout("Quiet desktop 日本", styleOf(20, 1), 300);
  Painted picture(300, 40);
  picture.draw([&](platform::Canvas& canvas) { canvas.drawText(*layout, {2, 2}, 1, black); });
  const bool isSet = layout->lineCount() == 1 && layout->size().height > 18 && layout->size().height < 40;
  return isSet && (picture.ink().width > 80 || !drawsLetters);
}

[[noreturn]] void exitWith(bool isGood) {
  std::_Exit(isGood ? 0 : 1);
}

TEST(PangoTextDeathTest, TextsAreSetWithOtherFontsAndWithNone) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(exitWith(setsTextsWith("<dir>/usr/share/fonts/truetype/dejavu</dir>", true)),
              ::testing::ExitedWithCode(0), "");
  EXPECT_EXIT(exitWith(setsTextsWith("", false)), ::testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace hushpane::desktops
