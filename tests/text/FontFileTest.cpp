// Reading a font's .bin file: the header and the 256 glyph records byte by byte,
// offsets of one unsigned byte, missing and short files; loading the system's
// fonts and letting them go.
#include <sys/stat.h>
#include <unistd.h>

#include "TextFixture.h"
#include "support/UdiFile.h"

namespace {

using texttest::FontTable;
using texttest::TextTest;

using FontFile = TextTest;

TEST_F(FontFile, TheHeaderAndEveryGlyphRecordAreReadLittleEndian) {
  FontTable table(30, 2, 21, 0x1234, 0x0280);
  table.glyph('A', 0x0102, 0x0304, 17, 19, 3, 250, 200);
  table.glyph(255, 7, 9, 0, 5, 0, 0, 11);  // no width: no picture
  LoadFont(table, false);
  const XFontRecord& font = *Fonts().mFonts[0];
  EXPECT_EQ(30, font.mEmSize);
  EXPECT_EQ(2, font.mCharSpacing);
  EXPECT_EQ(21, font.mFontHeight);
  EXPECT_EQ(0x1234, font.mSheetWidth);
  EXPECT_EQ(0x0280, font.mSheetHeight);
  const XFontGlyph& a = font.mGlyphs['A'];
  EXPECT_EQ(0x0102, a.mSheetX);
  EXPECT_EQ(0x0304, a.mSheetY);
  EXPECT_EQ(17, a.mWidth);
  EXPECT_EQ(19, a.mHeight);
  EXPECT_EQ(3, a.mOffsetX);
  EXPECT_EQ(-6, a.mOffsetY);
  EXPECT_EQ(200, a.mAdvance) << "advances are unsigned bytes";
  EXPECT_EQ(1, a.mExists);
  EXPECT_EQ(0, font.mGlyphs[255].mExists) << "a glyph exists when its width is nonzero";
  EXPECT_EQ(11, font.mGlyphs[255].mAdvance);
  EXPECT_EQ(0, font.mGlyphs['B'].mExists);
  EXPECT_EQ(21, Fonts().getFontHeight(0));
  EXPECT_EQ(1, Fonts().doesCharExistInFont(0, 'A'));
  EXPECT_EQ(0, Fonts().doesCharExistInFont(0, char(255)));
}

TEST_F(FontFile, AnOffsetByteOf128MovesTheGlyph128PixelsRightAnd129MovesIt127Left) {
  LoadFont(texttest::TestFont());
  EXPECT_EQ(128, Fonts().mFonts[0]->mGlyphs['c'].mOffsetX);
  EXPECT_EQ(-127, Fonts().mFonts[0]->mGlyphs['d'].mOffsetX);
  EXPECT_EQ(-1, Fonts().mFonts[0]->mGlyphs['d'].mOffsetY);
  const std::vector<texttest::Quad> c = Drawn([&] { Fonts().drawString(0, 200, 50, "c", false); });
  ASSERT_EQ(1u, c.size());
  EXPECT_EQ((texttest::Quad{328, 53, 331, 57}), c[0]);
  const std::vector<texttest::Quad> d = Drawn([&] { Fonts().drawString(0, 200, 50, "d", false); });
  ASSERT_EQ(1u, d.size());
  EXPECT_EQ((texttest::Quad{73, 49, 76, 53}), d[0]);
}

TEST_F(FontFile, AMissingFileGivesAFontWithoutGlyphsThatMeasuresNothing) {
  EXPECT_EQ(0, Fonts().createFont(2, dir.file("none.bin").c_str()));
  ASSERT_NE(nullptr, Fonts().mFonts[2]) << "the slot keeps an empty record";
  EXPECT_EQ(0, Fonts().getFontHeight(2));
  EXPECT_EQ(0, Fonts().getStringWidth(2, "abc"));
  EXPECT_EQ(0, Fonts().doesCharExistInFont(2, 'a'));
}

TEST_F(FontFile, AFileThatEndsEarlyReadsZerosFromThere) {
  FontTable table = texttest::TestFont();
  table.bytes.resize(7 + 'a' * 9 + 5);  // 'a' cut after its width
  const std::string path = dir.file("short.bin");
  zvtest::WriteBytes(path, table.bytes);
  EXPECT_EQ(1, Fonts().createFont(0, path.c_str())) << "nothing checks the length";
  EXPECT_EQ(4, Fonts().mFonts[0]->mGlyphs['a'].mWidth);
  EXPECT_EQ(0, Fonts().mFonts[0]->mGlyphs['a'].mHeight);
  EXPECT_EQ(0, Fonts().mFonts[0]->mGlyphs['e'].mExists);
  EXPECT_EQ(3, Fonts().mFonts[0]->mGlyphs[' '].mAdvance);
}

TEST_F(FontFile, ANewManagerHasNoFontsAndTheCaretAsItsEscape) {
  for (XFontRecord* font : Fonts().mFonts) EXPECT_EQ(nullptr, font);
  EXPECT_EQ(0, Fonts().mFontCount);
  EXPECT_EQ('^', Fonts().mPixelEscapeChar);
  EXPECT_TRUE(Fonts().mFontTextures.empty());
}

// The system's fonts from res/Font/ of the working folder: two of the four with
// their sheets, one without, one missing altogether.
TEST_F(FontFile, InitializeLoadsTheFourSystemFontsAndGoesOnPastMissingFiles) {
  ASSERT_EQ(0, mkdir(dir.file("res").c_str(), 0755));
  ASSERT_EQ(0, mkdir(dir.file("res/Font").c_str(), 0755));
  zvtest::WriteBytes(dir.file("res/Font/VTCurry_18.bin"), FontTable(18, 0, 21).bytes);
  zvtest::WriteBytes(dir.file("res/Font/Pippin_18.bin"), FontTable(18, 0, 22).bytes);
  zvtest::WriteBytes(dir.file("res/Font/VTAndaleSans_19.bin"), FontTable(19, 0, 23).bytes);
  zvtest::WriteUdi(dir.file("res/Font/VTCurry_18.udi"), 4, 2, 5, 16, 0, zvtest::Bytes(16, 200));
  zvtest::WriteUdi(dir.file("res/Font/VTAndaleSans_19.udi"), 8, 2, 5, 16, 0, zvtest::Bytes(32, 200));
  char here[1000] = {0};
  ASSERT_NE(nullptr, getcwd(here, sizeof here));
  ASSERT_EQ(0, chdir(dir.path().c_str()));
  Fonts().initialize();
  ASSERT_EQ(0, chdir(here));
  EXPECT_EQ(4, Fonts().mFontCount);
  ASSERT_EQ(4, Fonts().mFontTextures.size());
  EXPECT_EQ(21, Fonts().getFontHeight(0));
  EXPECT_EQ(22, Fonts().getFontHeight(1));
  EXPECT_EQ(0, Fonts().getFontHeight(2));
  EXPECT_EQ(23, Fonts().getFontHeight(3));
  ASSERT_NE(nullptr, Fonts().mFontTextures[0]);
  EXPECT_EQ(4u, Fonts().mFontTextures[0]->mWidth);
  EXPECT_EQ(nullptr, Fonts().mFontTextures[1]);
  EXPECT_EQ(nullptr, Fonts().mFontTextures[2]);
  ASSERT_NE(nullptr, Fonts().mFontTextures[3]);
  EXPECT_EQ(2u, gxGetTextureManager()->mIDToTexture.size());

  Fonts().unloadAll();
  for (XFontRecord* font : Fonts().mFonts) EXPECT_EQ(nullptr, font);
  EXPECT_TRUE(Fonts().mFontTextures.empty());
  EXPECT_TRUE(gxGetTextureManager()->mIDToTexture.empty()) << "the sheets were let go";
}

}  // namespace
