// The font service and the system's font lookup.
#include <gtest/gtest.h>

#include <vector>

#include "CFontSvc.h"
#include "CSystemData.h"
#include "solva/Device.h"
#include "support/TestSupport.h"

namespace {

using namespace Vantrel::Solva;

const char kDejaVuSans[] = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

class FontSvc : public testing::Test {
 protected:
  void SetUp() override {
    solva::ResetDevice();
    mPixels.assign(64 * 32, 0);
    mSurf = {64, 32, 64 * 4, reinterpret_cast<U8*>(mPixels.data()), kPixelFormatARGB8888};
  }
  void TearDown() override { solva::ResetDevice(); }
  int Inked() const {
    int count = 0;
    for (uint32_t p : mPixels) count += p != 0 ? 1 : 0;
    return count;
  }
  std::vector<uint32_t> mPixels;
  tFontSurf mSurf;
  CFontSvc mFonts;
};

TEST_F(FontSvc, FindFontFallsBackToDejaVuSans) {
  EXPECT_EQ(kDejaVuSans, CSystemData::FindFont("VTCurry.ttf").raw());
  EXPECT_EQ(kDejaVuSans, CSystemData::FindFont("").raw());
}

TEST_F(FontSvc, FindFontFindsASystemFontByName) {
  EXPECT_EQ("/usr/share/fonts/truetype/dejavu/DejaVuSansMono.ttf", CSystemData::FindFont("DejaVuSansMono.ttf").raw());
}

TEST_F(FontSvc, FindFontPrefersTheTitlesOwnFonts) {
  zvtest::TempDir title;
  zvtest::WriteText(title.path() + "/placeholder", "");
  ASSERT_EQ(0, system(("mkdir -p '" + title.path() + "/res/Fonts'").c_str()));
  zvtest::WriteBytes(title.path() + "/res/Fonts/DejaVuSansMono.ttf", zvtest::ReadBytes(kDejaVuSans));
  solva::SetTitlePath(title.path() + "/");
  EXPECT_EQ(title.path() + "/res/Fonts/DejaVuSansMono.ttf", CSystemData::FindFont("DejaVuSansMono.ttf").raw());
}

TEST_F(FontSvc, LoadFontOfAMissingOrForeignFileGivesNoHandle) {
  testing::internal::CaptureStdout();
  EXPECT_EQ(kInvalidFontHndl, mFonts.LoadFont("/no/such/font.ttf", 18));
  zvtest::TempDir dir;
  zvtest::WriteText(dir.file("text.ttf"), "not a font");
  EXPECT_EQ(kInvalidFontHndl, mFonts.LoadFont(dir.file("text.ttf"), 18));
  const std::string out = testing::internal::GetCapturedStdout();
  EXPECT_NE(std::string::npos, out.find("[CFontSvc] cannot load the font /no/such/font.ttf"));
  EXPECT_FALSE(mFonts.SelectFont(kInvalidFontHndl));
}

TEST_F(FontSvc, DrawStringWithoutAFontDrawsNothing) {
  Glib::ustring text("Hello");
  EXPECT_FALSE(mFonts.DrawString(&text, 0, 0, &mSurf));
  EXPECT_EQ(0, Inked());
}

TEST_F(FontSvc, DrawStringDrawsInTheFontColour) {
  const tFontHndl font = mFonts.LoadFont(kDejaVuSans, 18);
  ASSERT_NE(kInvalidFontHndl, font);
  ASSERT_TRUE(mFonts.SelectFont(font));
  ASSERT_TRUE(mFonts.SetFontColor(0xFFFF0000u));
  EXPECT_EQ(0xFFFF0000u, mFonts.GetFontColor());
  Glib::ustring text("Hi");
  ASSERT_TRUE(mFonts.DrawString(&text, 1, 1, &mSurf));
  int solid = 0;
  for (uint32_t p : mPixels) {
    if (p == 0) continue;
    const uint32_t a = p >> 24;
    EXPECT_EQ(a, (p >> 16) & 0xFF);  // red equals the coverage
    EXPECT_EQ(0u, p & 0xFFFF);       // no green or blue
    solid += a == 255 ? 1 : 0;
  }
  EXPECT_GT(solid, 10);
  S32 width = 0, height = 0;
  ASSERT_TRUE(mFonts.GetStringSize(text, &width, &height));
  EXPECT_GT(width, 10);
  EXPECT_LT(width, 40);
  EXPECT_GE(height, 18);
}

TEST_F(FontSvc, TextOffTheSurfaceIsCutOff) {
  const tFontHndl font = mFonts.LoadFont(kDejaVuSans, 18);
  ASSERT_TRUE(mFonts.SelectFont(font));
  Glib::ustring text("WWWWWWWWWW");
  ASSERT_TRUE(mFonts.DrawString(&text, -30, -5, &mSurf));
  EXPECT_GT(Inked(), 0);
  std::fill(mPixels.begin(), mPixels.end(), 0);
  ASSERT_TRUE(mFonts.DrawString(&text, 64, 0, &mSurf));
  ASSERT_TRUE(mFonts.DrawString(&text, 0, 32, &mSurf));
  EXPECT_EQ(0, Inked());
}

TEST_F(FontSvc, OnlyARGBSurfacesAreDrawnInto) {
  const tFontHndl font = mFonts.LoadFont(kDejaVuSans, 18);
  ASSERT_TRUE(mFonts.SelectFont(font));
  mSurf.format = kPixelFormatRGB565;
  Glib::ustring text("Hi");
  EXPECT_FALSE(mFonts.DrawString(&text, 0, 0, &mSurf));
  EXPECT_EQ(0, Inked());
  EXPECT_TRUE(mFonts.UnloadFont(font));
  EXPECT_FALSE(mFonts.SelectFont(font));
}

}  // namespace
