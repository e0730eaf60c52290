// fontbake as a title developer runs it: DejaVu Sans baked into a glyph table and
// a sheet, read back by XFontManager and the texture manager, the sheet's glyphs
// where the table says, and a string drawn with it compared with a reference
// screenshot (tests/text/reference/; ZV_REGENERATE_SCREENS=1 writes it anew, look
// at it). Then the failures: bad usage, a missing font, a glyph too large.
#include <sys/wait.h>

#include <cstdlib>

#include "RenderSystem/BMPData.h"
#include "RenderSystem/UDImage.h"
#include "TextFixture.h"
#include "support/PngImage.h"

namespace {

using texttest::TextTest;

const char* const kSans = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

struct BakeRun {
  int status = -1;
  std::string err;
};

class FontBaker : public TextTest {
 protected:
  BakeRun Bake(const std::string& arguments) {
    const std::string errFile = dir.file("stderr.txt");
    const std::string command = std::string(ZV_FONTBAKE) + " " + arguments + " > /dev/null 2> " + errFile;
    BakeRun run;
    const int raw = system(command.c_str());
    run.status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
    run.err = zvtest::ReadText(errFile);
    return run;
  }
  int U16(const zvtest::Bytes& b, size_t at) { return b[at] | (b[at + 1] << 8); }
};

TEST_F(FontBaker, BakesATableAndAnL8A8SheetThatTheFontManagerReadsBack) {
  ASSERT_EQ(0, Bake("--size 18 " + std::string(kSans) + " " + dir.file("sans")).status);
  const zvtest::Bytes bin = zvtest::ReadBytes(dir.file("sans.bin"));
  ASSERT_EQ(2311u, bin.size());
  EXPECT_EQ(18, bin[0]) << "the em size";
  EXPECT_EQ(0, bin[1]) << "no spacing";
  const zvtest::Bytes udi = zvtest::ReadBytes(dir.file("sans.udi"));
  ASSERT_GE(udi.size(), 36u);
  EXPECT_EQ(0, memcmp("UDI", udi.data(), 4));
  EXPECT_EQ(udi.size(), size_t(U16(udi, 12) | (U16(udi, 14) << 16))) << "the stored length";
  EXPECT_EQ(U16(bin, 3), U16(udi, 16)) << "the table's sheet width is the picture's";
  EXPECT_EQ(U16(bin, 5), U16(udi, 18));
  EXPECT_EQ(1, udi[20]) << "zlib";
  EXPECT_EQ(5, udi[24]) << "L8A8";
  EXPECT_EQ(16, udi[25]);
  EXPECT_EQ(0, udi[27]) << "no palette";

  ASSERT_EQ(1, Fonts().createFont(0, dir.file("sans.bin").c_str()));
  GLTexture* sheet = gxGetTextureManager()->LoadTextureNoExpand(dir.file("sans").c_str(), nullptr);
  ASSERT_NE(nullptr, sheet);
  Fonts().mFontTextures.push_back(sheet);
  const XFontRecord& font = *Fonts().mFonts[0];
  EXPECT_EQ(unsigned(U16(bin, 3)), sheet->mWidth);
  EXPECT_EQ(0, sheet->mWidth & (sheet->mWidth - 1)) << "a power of two";
  EXPECT_EQ(0, sheet->mHeight & (sheet->mHeight - 1));
  EXPECT_GE(font.mFontHeight, 18);
  EXPECT_EQ(0, font.mGlyphs[' '].mExists);
  EXPECT_GT(font.mGlyphs[' '].mAdvance, 2);
  EXPECT_EQ(0, font.mGlyphs[31].mAdvance) << "codes outside 32 to 126 are empty";
  EXPECT_EQ(0, font.mGlyphs[127].mAdvance);

  // Every glyph inside the sheet, none over another, each with ink, and no ink
  // outside them.
  BMPData decoded;
  memset(&decoded, 0, sizeof decoded);
  ASSERT_EQ(0, LoadUDIFile(dir.file("sans.udi").c_str(), &decoded));
  std::vector<int> owner(size_t(decoded.width) * decoded.height, 0);
  for (int c = 33; c < 127; ++c) {
    const XFontGlyph& g = font.mGlyphs[c];
    ASSERT_EQ(1, g.mExists) << "character " << c;
    ASSERT_LE(g.mSheetX + g.mWidth, decoded.width);
    ASSERT_LE(g.mSheetY + g.mHeight, decoded.height);
    int ink = 0;
    for (int y = g.mSheetY; y < g.mSheetY + g.mHeight; ++y) {
      for (int x = g.mSheetX; x < g.mSheetX + g.mWidth; ++x) {
        EXPECT_EQ(0, owner[size_t(y) * decoded.width + x]) << "character " << c << " over " << owner[y * decoded.width + x];
        owner[size_t(y) * decoded.width + x] = c;
        ink += decoded.pixels[(size_t(y) * decoded.width + x) * 2 + 1];
      }
    }
    EXPECT_GT(ink, 0) << "character " << c;
    EXPECT_GT(g.mAdvance, 0);
  }
  for (size_t i = 0; i < owner.size(); ++i) {
    if (owner[i] == 0) {
      ASSERT_EQ(0, decoded.pixels[i * 2 + 1]) << "ink outside the glyphs at " << i;
    }
    ASSERT_EQ(255, decoded.pixels[i * 2]) << "the sheet is white";
  }
  UnloadBMPData(&decoded);

  // A string in the baked font, white on black, against the reference.
  glTexEnvx(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
  glEnable(GL_BLEND);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  zvtest::GLCalls().Reset();
  Fonts().drawString(0, 4, 4, "Baked: DejaVu Sans 18, {a^6b}\\jumps over |lazy| dogs.", false);
  EXPECT_EQ(1, zvtest::GLCalls().drawElements) << "a string is one draw call";
  const int w = 300, h = 52;
  const std::vector<uint32_t> drawn = zvtest::ReadPixels(0, 0, w, h);
  const std::string reference = std::string(ZV_SOURCE_DIR) + "/tests/text/reference/dejavu-sans-18.png";
  const char* regenerate = getenv("ZV_REGENERATE_SCREENS");
  if (regenerate != nullptr && std::string(regenerate) == "1") {
    ASSERT_TRUE(zvtest::WritePng(reference, w, h, drawn));
  }
  zvtest::PngImage expected;
  std::string error;
  ASSERT_TRUE(zvtest::ReadPng(reference, &expected, &error)) << error;
  EXPECT_TRUE(zvtest::SamePixels("dejavu-sans-18", expected.pixels, drawn, w, h));
}

TEST_F(FontBaker, SpacingRangesAndLatinOneCodesGoIntoTheTable) {
  ASSERT_EQ(0, Bake("--size 12 --spacing 3 --chars 65-67,233 " + std::string(kSans) + " " + dir.file("f")).status);
  ASSERT_EQ(1, Fonts().createFont(0, dir.file("f.bin").c_str()));
  const XFontRecord& font = *Fonts().mFonts[0];
  EXPECT_EQ(3, font.mCharSpacing);
  EXPECT_EQ(12, font.mEmSize);
  for (int c : {65, 66, 67, 233}) EXPECT_EQ(1, font.mGlyphs[c].mExists) << c;
  EXPECT_EQ(0, font.mGlyphs['D'].mExists);
  EXPECT_EQ(0, font.mGlyphs[' '].mAdvance) << "the space was not asked for";
  EXPECT_EQ(3 + font.mGlyphs['A'].mAdvance, Fonts().getStringWidth(0, "A"));
}

TEST_F(FontBaker, BadUsageIsStatusTwoAndWritesNothing) {
  EXPECT_EQ(2, Bake("").status);
  EXPECT_EQ(2, Bake("--size 0 " + std::string(kSans) + " " + dir.file("x")).status);
  EXPECT_EQ(2, Bake(std::string(kSans) + " " + dir.file("x")).status) << "the size is required";
  const BakeRun run = Bake("--size 10 --chars 9-3 " + std::string(kSans) + " " + dir.file("x"));
  EXPECT_EQ(2, run.status);
  EXPECT_NE(std::string::npos, run.err.find("fontbake: bad character range \"9-3\"")) << run.err;
  EXPECT_FALSE(zvtest::Exists(dir.file("x.bin")));
}

TEST_F(FontBaker, AFontThatCannotBeReadIsStatusOneAndLeavesEarlierFiles) {
  ASSERT_EQ(0, Bake("--size 10 " + std::string(kSans) + " " + dir.file("keep")).status);
  const zvtest::Bytes before = zvtest::ReadBytes(dir.file("keep.bin"));
  BakeRun run = Bake("--size 10 " + dir.file("none.ttf") + " " + dir.file("keep"));
  EXPECT_EQ(1, run.status);
  EXPECT_EQ("fontbake: cannot open the font " + dir.file("none.ttf") + ": No such file or directory\n", run.err);
  zvtest::WriteText(dir.file("text.ttf"), "not a font");
  run = Bake("--size 10 " + dir.file("text.ttf") + " " + dir.file("keep"));
  EXPECT_EQ(1, run.status);
  EXPECT_EQ("fontbake: " + dir.file("text.ttf") + " is no font FreeType reads\n", run.err);
  EXPECT_EQ(before, zvtest::ReadBytes(dir.file("keep.bin")));
}

TEST_F(FontBaker, AGlyphTooLargeForTheTableIsStatusOne) {
  const BakeRun run = Bake("--size 250 --chars 87 " + std::string(kSans) + " " + dir.file("big"));
  EXPECT_EQ(1, run.status);
  EXPECT_NE(std::string::npos, run.err.find("choose a smaller size")) << run.err;
  EXPECT_FALSE(zvtest::Exists(dir.file("big.bin")));
  EXPECT_FALSE(zvtest::Exists(dir.file("big.bin.part")));
}

}  // namespace
