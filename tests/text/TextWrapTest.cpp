// Cutting text into lines: the box functions (at spaces, narrower than the box,
// backslash breaks, bars that do not wrap), the scroll box's crops, words, and
// the two line lists, against the test font's hand-computed widths ("ab" 13,
// " ab" 17, "W" 10).
#include "TextFixture.h"

namespace {

using texttest::Quad;
using texttest::TextTest;

class TextWrap : public TextTest {
 protected:
  void SetUp() override {
    TextTest::SetUp();
    LoadFont(texttest::TestFont());
  }
  std::vector<std::string> Words(const char* s) {
    std::vector<std::string> words;
    Fonts().breakToWordListA(s, words);
    return words;
  }
};

TEST_F(TextWrap, BoxLinesTakeWordsWhileTheyStayNarrowerThanTheBox) {
  // "ab" + " ab" is 30: not narrower than 30, so one "ab" a line.
  EXPECT_EQ(30, Fonts().getTextHeight(0, "ab ab ab", 30));
  EXPECT_EQ(20, Fonts().getTextHeight(0, "ab ab ab", 31));
  EXPECT_EQ(10, Fonts().getTextHeight(0, "ab ab ab", 48));
  const std::vector<Quad> quads = Drawn([&] { Fonts().drawStringInBox(0, 10, 20, "ab ab ab", 31, 3); });
  const std::vector<Quad> expected = {{10, 22, 14, 28}, {17, 20, 22, 28}, {27, 22, 31, 28}, {34, 20, 39, 28},
                                      {10, 35, 14, 41}, {17, 33, 22, 41}};
  EXPECT_EQ(expected, quads) << "the second line 10 + 3 lower, its leading space skipped";
}

TEST_F(TextWrap, AWordWiderThanTheBoxComesAloneOnALineUnbrokenAndUnhyphenated) {
  EXPECT_EQ(30, Fonts().getTextHeight(0, "ab WWWW ab", 30));
  const std::vector<Quad> quads = Drawn([&] { Fonts().drawStringInBox(0, 10, 20, "ab WWWW ab", 30, 0); });
  ASSERT_EQ(8u, quads.size()) << "a, b, four W, a, b: no hyphen";
  for (int i = 0; i < 4; ++i) EXPECT_EQ((Quad{10 + i * 10, 30, 18 + i * 10, 38}), quads[2 + i]);
  EXPECT_EQ((Quad{10, 42, 14, 48}), quads[6]);
}

TEST_F(TextWrap, TheSameWideWordThroughTheLineListByWordsIsHyphenated) {
  std::vector<std::string> words = Words("ab WWWW ab");
  std::vector<std::string> lines;
  EXPECT_EQ(4, Fonts().makeTextLineList(0, 30, words, lines, false)) << "words and pieces placed";
  // The space keeps its width (4) in the pieces; the pieces before the last are
  // pushed as they are.
  EXPECT_EQ((std::vector<std::string>{"ab", " WW-", "WW", "ab"}), lines);
}

TEST_F(TextWrap, OneBackslashTwoGivesTwoLinesWhateverTheBoxWidth) {
  for (int box : {1, 30, 1000}) {
    EXPECT_EQ(20, Fonts().getTextHeight(0, "one\\two", box)) << "box " << box;
    const std::vector<Quad> quads = Drawn([&] { Fonts().drawStringInBox(0, 0, 0, "one\\two", box, 0); });
    ASSERT_EQ(6u, quads.size());
    EXPECT_EQ(2, quads[2].top);
    EXPECT_EQ(12, quads[3].top);
    EXPECT_EQ(0, quads[3].left) << "the second line starts at x";
  }
}

TEST_F(TextWrap, WordsJoinedByABarNeverSeparateAndDrawWithASpace) {
  // "ab|ab" measures 29 (the bar's glyph): alone on a line in a box of 20, and
  // with no other word in 30.
  EXPECT_EQ(20, Fonts().getTextHeight(0, "ab|ab ab", 30));
  EXPECT_EQ(20, Fonts().getTextHeight(0, "ab|ab ab", 20));
  const std::vector<Quad> quads = Drawn([&] { Fonts().drawStringInBox(0, 10, 20, "ab|ab ab", 20, 0); });
  const std::vector<Quad> expected = {{10, 22, 14, 28}, {17, 20, 22, 28}, {27, 22, 31, 28}, {34, 20, 39, 28},
                                      {10, 32, 14, 38}, {17, 30, 22, 38}};
  EXPECT_EQ(expected, quads) << "the bar drawn as a space (4), not as its glyph";
}

TEST_F(TextWrap, CenteredBoxLinesAreMeasuredOneByOne) {
  const std::vector<Quad> quads = Drawn([&] { Fonts().drawStringCenterInBox(0, 100, 0, "ab WWW", 20, 2); });
  ASSERT_EQ(5u, quads.size());
  EXPECT_EQ(100 - 13 / 2, quads[0].left);
  EXPECT_EQ(100 - 30 / 2, quads[2].left);
  EXPECT_EQ(12, quads[2].top);
}

TEST_F(TextWrap, TheScrollBoxSkipsLinesAboveCutsTheFirstAtTheTopAndTheLastAtTheBottom) {
  // Lines of 10 scrolled by 4 through a view 22 high at y 20.
  const std::vector<Quad> quads =
      Drawn([&] { Fonts().drawStringInScrollBox(0, 10, 20, "ab\\ab\\ab\\ab", 100, 22, 4); });
  const std::vector<Quad> expected = {
      {10, 20, 14, 24}, {17, 20, 22, 24},  // 4 rows cut from the top of both
      {10, 28, 14, 34}, {17, 26, 22, 34},  // whole, 6 lower
      {10, 38, 14, 42}, {17, 36, 22, 42},  // cut at the view's bottom, 42
  };
  EXPECT_EQ(expected, quads);
  EXPECT_EQ(3, zvtest::GLCalls().drawElements) << "the fourth line is below the view: not drawn";
  // Scrolled past the first line, it costs nothing.
  const std::vector<Quad> scrolled = Drawn([&] { Fonts().drawStringInScrollBox(0, 10, 20, "ab\\ab", 100, 22, 10); });
  ASSERT_EQ(2u, scrolled.size());
  EXPECT_EQ(22, scrolled[0].top);
  EXPECT_EQ(1, zvtest::GLCalls().drawElements);
}

TEST_F(TextWrap, WordsAreLeadingSpacesThenTextUpToASpaceOrTabAndALineBreakEndsTheirWord) {
  EXPECT_EQ((std::vector<std::string>{"  one", " two", "\tthree\r", "\n", "four"}),
            Words("  one two\tthree\r\nfour  "));
  char out[64];
  EXPECT_EQ(5, Fonts().breakToWordListA("  one two\tthree\r\nfour  ", out, sizeof out));
  EXPECT_EQ(0, memcmp("  one\0 two\0\tthree\r\0\n\0four\0", out, 26));
  EXPECT_EQ(2, Fonts().breakToWordListA("  one two three", out, 11)) << "two words fill 11 bytes exactly";
  EXPECT_EQ(1, Fonts().breakToWordListA("  one two three", out, 10));
  EXPECT_EQ(0, Fonts().breakToWordListA(nullptr, out, 10));
  EXPECT_EQ(0, Fonts().breakToWordListA("one", out, 0));
  EXPECT_EQ(0, Fonts().breakToWordListA("   ", out, 10)) << "spaces at the end make no word";
}

TEST_F(TextWrap, TheLineListByCharactersOnALineFeedPairPushesAnEmptyLineBetween) {
  std::vector<std::string> lines;
  EXPECT_EQ(2, Fonts().makeTextLineList(0, 100, "a\n\nb", lines)) << "the empty line is not counted";
  EXPECT_EQ((std::vector<std::string>{"a", "", "b"}), lines);
}

TEST_F(TextWrap, TheLineListByCharactersBreaksAtTheFirstSpacePastTheWidthAndDropsItsSpaceAfterTheFirstLine) {
  std::vector<std::string> lines;
  EXPECT_EQ(2, Fonts().makeTextLineList(0, 12, " ab ab", lines));
  EXPECT_EQ((std::vector<std::string>{" ab", "ab"}), lines) << "the first line keeps its space";
  lines.clear();
  // "abab" runs to 26 past 12: a word is never split.
  EXPECT_EQ(2, Fonts().makeTextLineList(0, 12, "abab ab", lines));
  EXPECT_EQ((std::vector<std::string>{"abab", "ab"}), lines);
}

TEST_F(TextWrap, TheLineListByWordsDropsTheLeadingSpaceOfASecondLineButNotOfTheFirst) {
  std::vector<std::string> words = Words(" ab ab ab");
  std::vector<std::string> lines;
  EXPECT_EQ(3, Fonts().makeTextLineList(0, 34, words, lines, false));
  EXPECT_EQ((std::vector<std::string>{" ab ab", "ab"}), lines);
}

TEST_F(TextWrap, TheLineListByWordsStartsANewLineAfterAWordEndingInALineFeed) {
  std::vector<std::string> words = Words("ab\n ab ab");
  std::vector<std::string> lines;
  EXPECT_EQ(3, Fonts().makeTextLineList(0, 100, words, lines, false));
  EXPECT_EQ((std::vector<std::string>{"ab\n", "ab ab"}), lines);
  // Appended to a line, a word ending in a line feed does not break it.
  words = {"ab", " ab\n", " ab"};
  lines.clear();
  EXPECT_EQ(3, Fonts().makeTextLineList(0, 100, words, lines, false));
  EXPECT_EQ((std::vector<std::string>{"ab ab\n ab"}), lines);
  words.clear();
  EXPECT_EQ(0, Fonts().makeTextLineList(0, 100, words, lines, false));
}

TEST_F(TextWrap, HyphenatingSplitsEveryFirstWordThatOverflowsEvenWhenItWouldFit) {
  std::vector<std::string> words = {"abab", "WWW"};
  std::vector<std::string> lines;
  // "abab" (26) fits 26 whole; "WWW" (30) does not: "WW-", "W".
  EXPECT_EQ(3, Fonts().makeTextLineList(0, 26, words, lines, true));
  EXPECT_EQ((std::vector<std::string>{"abab", "WW-", "W"}), lines);
}

}  // namespace
