// The width functions against widths computed by hand from the test font
// (spacing 1; space advance 3; 'a' 6, 'b' 7, 'W' 10 with the spacing; 'z'
// missing): each counts spaces, tabs, missing glyphs and "^" escapes its own way.
#include "TextFixture.h"

namespace {

using texttest::TextTest;

class FontMetrics : public TextTest {
 protected:
  void SetUp() override {
    TextTest::SetUp();
    LoadFont(texttest::TestFont());
  }
};

TEST_F(FontMetrics, AnEmptyStringMeasuresZeroEverywhere) {
  EXPECT_EQ(0, Fonts().getStringWidth(0, ""));
  EXPECT_EQ(0, Fonts().getStringLenght(0, ""));
  EXPECT_EQ(0, Fonts().getWordLenght(0, ""));
  EXPECT_EQ(0, Fonts().getMaxSectionLengthInString(0, "", 100));
}

TEST_F(FontMetrics, GetCharacterWidthCountsSpacesAndMissingGlyphsAsSpacesAndTabsAsFour) {
  EXPECT_EQ(6, Fonts().getCharacterWidth(0, 'a'));
  EXPECT_EQ(7, Fonts().getCharacterWidth(0, 'b'));
  EXPECT_EQ(4, Fonts().getCharacterWidth(0, ' '));
  EXPECT_EQ(13, Fonts().getCharacterWidth(0, '\t'));
  EXPECT_EQ(4, Fonts().getCharacterWidth(0, 'z')) << "a missing glyph is as wide as a space";
  EXPECT_EQ(4, Fonts().getCharacterWidth(0, '^')) << "the escape is no escape here";
}

TEST_F(FontMetrics, GetStringWidthCountsSpacesTabsAndEscapesButNoMissingGlyphs) {
  EXPECT_EQ(13, Fonts().getStringWidth(0, "ab"));
  EXPECT_EQ(17, Fonts().getStringWidth(0, "a b"));
  EXPECT_EQ(26, Fonts().getStringWidth(0, "a\tb"));
  EXPECT_EQ(13, Fonts().getStringWidth(0, "azb"));
  EXPECT_EQ(23, Fonts().getStringWidth(0, "Wab"));
}

TEST_F(FontMetrics, ACaretNumberAddsItsPixels) {
  EXPECT_EQ(13 + 12, Fonts().getStringWidth(0, "a^12b"));
  EXPECT_EQ(Fonts().getStringWidth(0, "ab") + 12, Fonts().getStringWidth(0, "a^12b"));
  EXPECT_EQ(13 + 12, Fonts().getStringLenght(0, "a^12b"));
  EXPECT_EQ(13 + 5, Fonts().getWordLenght(0, "a^5b c"));
  Fonts().mFonts[0]->mGlyphs['2'] = Fonts().mFonts[0]->mGlyphs['a'];
  EXPECT_EQ(6 + 12 + 6 + 7, Fonts().getStringWidth(0, "a^012b"))
      << "the digits are skipped by dividing the number, so a leading zero leaves the last digit as a glyph";
}

TEST_F(FontMetrics, GetStringLenghtTakesTheSpaceAdvanceAndTabsAsGlyphs) {
  EXPECT_EQ(17, Fonts().getStringLenght(0, "a b"));
  EXPECT_EQ(13, Fonts().getStringLenght(0, "a\tb")) << "the tab has no glyph: 0";
  EXPECT_EQ(13, Fonts().getStringLenght(0, "azb"));
}

TEST_F(FontMetrics, ASpaceWithoutAdvanceIsAThirdOfTheEmInGetStringLenghtAndZeroInGetStringWidth) {
  Fonts().mFonts[0]->mGlyphs[' '].mAdvance = 0;
  EXPECT_EQ(12 / 3 + 1, Fonts().getStringLenght(0, " "));
  EXPECT_EQ(6 + 5 + 7, Fonts().getStringLenght(0, "a b"));
  EXPECT_EQ(0 + 1, Fonts().getStringWidth(0, " ")) << "the spacing alone";
  EXPECT_EQ(6 + 1 + 7, Fonts().getStringWidth(0, "a b"));
  EXPECT_EQ(1, Fonts().getCharacterWidth(0, ' '));
  EXPECT_EQ(5 + 13, Fonts().getWordLenght(0, " ab"));
}

TEST_F(FontMetrics, GetWordLenghtEndsAtASpaceOrBackslashAndCountsOneLeadingSpace) {
  EXPECT_EQ(4 + 13, Fonts().getWordLenght(0, " ab cd"));
  EXPECT_EQ(13, Fonts().getWordLenght(0, "ab\\cd"));
  EXPECT_EQ(4, Fonts().getWordLenght(0, "  ab")) << "the second space ends the word";
  EXPECT_EQ(6 + 3 + 7, Fonts().getWordLenght(0, "a|b c")) << "the bar is a glyph when measuring";
}

TEST_F(FontMetrics, GetMaxSectionLengthKeepsTheWidestWrappedLineButForgetsTheFirstWordOfEachNewOne) {
  // "ab ab ab" in 30: "ab" 13, " ab" 17: 13 + 17 = 30 fits, the third overflows
  // and is dropped.
  EXPECT_EQ(30, Fonts().getMaxSectionLengthInString(0, "ab ab ab", 30));
  // In 29 every " ab" overflows: best stays 13 and each new line starts at 0.
  EXPECT_EQ(13, Fonts().getMaxSectionLengthInString(0, "ab ab ab", 29));
  // A backslash closes a section (13); the last section, never closed, is not
  // compared once a closed one has a width.
  EXPECT_EQ(13, Fonts().getMaxSectionLengthInString(0, "ab\\ ab ab", 100));
  EXPECT_EQ(34, Fonts().getMaxSectionLengthInString(0, " ab ab\\ab", 100));
  // No section closed: the running width.
  EXPECT_EQ(47, Fonts().getMaxSectionLengthInString(0, "ab ab ab", 100));
  // The first word is taken whatever its width.
  EXPECT_EQ(30, Fonts().getMaxSectionLengthInString(0, "WWW", 5));
}

TEST_F(FontMetrics, AFontIndexWithoutAFontMeasuresNothing) {
  EXPECT_EQ(0, Fonts().getStringWidth(5, "ab"));
  EXPECT_EQ(0, Fonts().getStringWidth(-1, "ab"));
  EXPECT_EQ(0, Fonts().getFontHeight(9));
}

// The C library's assertion, in the font manager's source.
TEST_F(FontMetrics, ACaretNumberBelowOneEndsInTheAssertion) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");  // the GL's own threads run beside the test
  EXPECT_DEATH(Fonts().getStringWidth(0, "a^0b"),
               "Src/RenderSystem/FontManager\\.cpp:[0-9]+: .*: Assertion `pixelNum > 0' failed\\.");
  EXPECT_DEATH(Fonts().getStringLenght(0, "a^b"), "Assertion `pixelNum > 0' failed\\.");
  EXPECT_DEATH(Fonts().drawString(0, 0, 0, "^-3", false), "Assertion `pixelNum > 0' failed\\.");
}

}  // namespace
