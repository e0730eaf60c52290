// Drawing text: where each glyph's quad goes (pen, offsets, escapes, line breaks,
// crops), the order of its vertices, one draw call a string, and the pixels, in
// the current GL colour.
#include "TextFixture.h"

namespace {

using texttest::Quad;
using texttest::TextTest;

class TextDraw : public TextTest {
 protected:
  void SetUp() override {
    TextTest::SetUp();
    LoadFont(texttest::TestFont());
  }
  // The raw 16.16 vertices of the last vertex upload.
  std::vector<GLfixed> LastVertices() {
    for (auto it = zvtest::GLCalls().uploads.rbegin(); it != zvtest::GLCalls().uploads.rend(); ++it) {
      if (it->buffer != AnimatedModel2DRender::sInstance().mVertexVBO) continue;
      const GLfixed* v = reinterpret_cast<const GLfixed*>(it->bytes.data());
      return std::vector<GLfixed>(v, v + it->bytes.size() / sizeof(GLfixed));
    }
    return {};
  }
};

const GLfixed kOne = 1 << 16;

TEST_F(TextDraw, AnEmptyStringDrawsNothing) {
  EXPECT_TRUE(Drawn([&] { Fonts().drawString(0, 10, 10, "", false); }).empty());
  EXPECT_EQ(0, zvtest::GLCalls().drawElements);
  EXPECT_TRUE(Drawn([&] { Fonts().drawSingleLine(0, 10, 10, "", -1); }).empty());
  EXPECT_TRUE(Drawn([&] { Fonts().drawStringInBox(0, 10, 10, "", 100, 0); }).empty());
  EXPECT_TRUE(Drawn([&] { Fonts().drawString(0, 10, 10, nullptr, false); }).empty());
}

TEST_F(TextDraw, AStringIsOneDrawCallOfItsSheetWithAQuadPerGlyph) {
  const std::vector<Quad> quads = Drawn([&] { Fonts().drawString(0, 10, 20, "ab W", false); });
  const std::vector<Quad> expected = {{10, 22, 14, 28}, {17, 20, 22, 28}, {27, 20, 35, 28}};
  EXPECT_EQ(expected, quads) << "the space moves the pen 4";
  EXPECT_EQ(1, zvtest::GLCalls().drawElements);
  EXPECT_EQ((std::vector<int>{18}), zvtest::GLCalls().drawnIndices);
  EXPECT_EQ((std::vector<unsigned>{Fonts().mFontTextures[0]->mTextureID}), zvtest::GLCalls().boundTextures);
  EXPECT_EQ(GL_TRUE, glIsEnabled(GL_TEXTURE_2D));
  EXPECT_EQ(GLenum(GL_NO_ERROR), glGetError());
}

TEST_F(TextDraw, DrawStringVerticesGoAcrossThenDownWithTexelsOverTheSheetSize) {
  Drawn([&] { Fonts().drawString(0, 10, 20, "b", false); });
  // 'b': 5 x 8 from (4, 0) in the 32 x 16 sheet, at (11, 20).
  EXPECT_EQ((std::vector<GLfixed>{11 * kOne, 20 * kOne, 16 * kOne, 20 * kOne, 16 * kOne, 28 * kOne, 11 * kOne,
                                  28 * kOne}),
            LastVertices());
  const AnimatedModel2DRender::BatchBuffer& batch = AnimatedModel2DRender::sInstance().mBatches[0];
  EXPECT_EQ((std::vector<GLfixed>{kOne / 8, 0, kOne * 9 / 32, 0, kOne * 9 / 32, kOne / 2, kOne / 8, kOne / 2}),
            std::vector<GLfixed>(batch.mTexCoordBase, batch.mTexCoordPtr));
}

TEST_F(TextDraw, BackslashReturnsThePenAndTheCaretMovesItAndMissingGlyphsTakeNoRoom) {
  const std::vector<Quad> quads = Drawn([&] { Fonts().drawString(0, 10, 20, "a^7zb\\a", false); });
  const std::vector<Quad> expected = {{10, 22, 14, 28}, {24, 20, 29, 28}, {10, 32, 14, 38}};
  EXPECT_EQ(expected, quads);
}

TEST_F(TextDraw, WithoutASheetNothingIsDrawnAndMetricsStillWork) {
  Fonts().mFontTextures.clear();  // the manager still owns the texture
  EXPECT_TRUE(Drawn([&] { Fonts().drawString(0, 10, 20, "ab", false); }).empty());
  EXPECT_TRUE(Drawn([&] { Fonts().drawSingleLine(0, 10, 20, "ab", -1); }).empty());
  EXPECT_EQ(0, zvtest::GLCalls().drawElements);
  EXPECT_EQ(13, Fonts().getStringWidth(0, "ab"));
}

TEST_F(TextDraw, CropsCutSheetRowsFromTheTopAndTheBottom) {
  // Top 3: 'a' (2 down) loses 1 row and starts at the pen's line; 'b' loses 3.
  std::vector<Quad> quads = Drawn([&] { Fonts().drawString(0, 10, 20, "ab", 3, -1, false); });
  EXPECT_EQ((std::vector<Quad>{{10, 20, 14, 25}, {17, 20, 22, 25}}), quads);
  const AnimatedModel2DRender::BatchBuffer& batch = AnimatedModel2DRender::sInstance().mBatches[0];
  EXPECT_EQ(kOne * 9 / 16, batch.mTexCoordBase[1]) << "'a' from sheet row 8 + 1";
  // Bottom 5: 'a' keeps 3 rows, 'b' 5.
  quads = Drawn([&] { Fonts().drawString(0, 10, 20, "ab", 0, 5, false); });
  EXPECT_EQ((std::vector<Quad>{{10, 22, 14, 25}, {17, 20, 22, 25}}), quads);
  // A glyph above its line top (d is 1 up) is not cut at the top.
  quads = Drawn([&] { Fonts().drawString(0, 200, 20, "d", 3, -1, false); });
  EXPECT_EQ((std::vector<Quad>{{73, 16, 76, 20}}), quads);
  // Negative crops at the top count as 0.
  quads = Drawn([&] { Fonts().drawString(0, 10, 20, "a", -5, -1, false); });
  EXPECT_EQ((std::vector<Quad>{{10, 22, 14, 28}}), quads);
}

TEST_F(TextDraw, RightAndCentreAlignByTheStringLength) {
  EXPECT_EQ(100 - 17, Drawn([&] { Fonts().drawStringRight(0, 100, 0, "a b"); })[0].left);
  EXPECT_EQ(100 - 17 / 2, Drawn([&] { Fonts().drawStringCenter(0, 100, 0, "a b"); })[0].left);
}

TEST_F(TextDraw, DrawPlacesOneLineInTheRectangleByItsFlags) {
  EXPECT_EQ((Quad{187, 82, 191, 88}), Drawn([&] { Fonts().draw(0, "ab", 100, 50, 200, 90, 2 | 1); })[0]);
  EXPECT_EQ((Quad{144, 67, 148, 73}), Drawn([&] { Fonts().draw(0, "ab", 100, 50, 200, 90, 8 | 4); })[0]);
  EXPECT_EQ((Quad{100, 52, 104, 58}), Drawn([&] { Fonts().draw(0, "ab", 100, 50, 200, 90, 0); })[0]);
}

TEST_F(TextDraw, SingleLineVerticesGoDownThenAcrossAndBackslashAndCaretAreGlyphs) {
  Drawn([&] { Fonts().drawSingleLine(0, 10, 20, "b", -1); });
  EXPECT_EQ((std::vector<GLfixed>{11 * kOne, 20 * kOne, 11 * kOne, 28 * kOne, 16 * kOne, 28 * kOne, 16 * kOne,
                                  20 * kOne}),
            LastVertices());
  // The backslash and the caret have no glyph in the test font: no room, no break.
  const std::vector<Quad> quads = Drawn([&] { Fonts().drawSingleLine(0, 10, 20, "a\\^3\tb", -1); });
  EXPECT_EQ((std::vector<Quad>{{10, 22, 14, 28}, {30, 20, 35, 28}}), quads) << "the tab moves the pen 13";
  EXPECT_EQ(2u, Drawn([&] { Fonts().drawSingleLine(0, 10, 20, "abab", 2); }).size());
  EXPECT_EQ(4u, Drawn([&] { Fonts().drawSingleLine(0, 10, 20, "abab", 0); }).size());
}

TEST_F(TextDraw, MultiLineMovesDownAtEachLineBreakWithoutReturningThePen) {
  std::vector<Quad> quads = Drawn([&] { Fonts().drawMultiLine(0, 10, 20, "a\nb", -1); });
  EXPECT_EQ((std::vector<Quad>{{10, 22, 14, 28}, {17, 30, 22, 38}}), quads);
  quads = Drawn([&] { Fonts().drawMultiLine(0, 10, 20, "a\r\nb", -1); });
  EXPECT_EQ((std::vector<Quad>{{10, 22, 14, 28}, {17, 40, 22, 48}}), quads) << "a pair moves two lines";
}

TEST_F(TextDraw, TheGlyphsPixelsComeOutInTheCurrentColour) {
  glTexEnvx(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
  glColor4x(kOne, 0, kOne, kOne);
  Fonts().drawString(0, 2, 1, "ab", false);
  std::vector<uint32_t> expected(24 * 12, 0xFF000000u);
  for (const Quad& q : std::vector<Quad>{{2, 3, 6, 9}, {9, 1, 14, 9}}) {
    for (int y = q.top; y < q.bottom; ++y)
      for (int x = q.left; x < q.right; ++x) expected[size_t(y) * 24 + x] = 0xFFFF00FFu;
  }
  EXPECT_TRUE(zvtest::SamePixels("text-colour", expected, zvtest::ReadPixels(0, 0, 24, 12), 24, 12));
  glColor4x(kOne, kOne, kOne, kOne);
}

}  // namespace
