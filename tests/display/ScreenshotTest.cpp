// The composed screen written as PNG and read back with libpng.
#include <gtest/gtest.h>

#include "CDisplaySvc.h"
#include "solva/Device.h"
#include "solva/Display.h"
#include "support/PngImage.h"
#include "support/TestSupport.h"

namespace {

using namespace Vantrel::Solva;

class DisplayScreenshot : public testing::Test {
 protected:
  void SetUp() override { solva::ResetDevice(); }
  void TearDown() override { solva::ResetDevice(); }
  zvtest::TempDir mDir;
  CDisplaySvc mDisplay;
};

TEST_F(DisplayScreenshot, WritesTheComposedScreenAsRGBPng) {
  tDisplayHandle low = mDisplay.CreateHandle(100, 200, kPixelFormatARGB8888, nullptr);
  tDisplayHandle high = mDisplay.CreateHandle(50, 50, kPixelFormatARGB8888, nullptr);
  tDisplayHandle hidden = mDisplay.CreateHandle(272, 480, kPixelFormatARGB8888, nullptr);
  for (auto [handle, colour] : {std::make_pair(low, 0xFF3366CCu), std::make_pair(high, 0xFFFFCC00u),
                                std::make_pair(hidden, 0xFFFFFFFFu)}) {
    uint32_t* pixels = reinterpret_cast<uint32_t*>(mDisplay.GetBuffer(handle));
    for (int i = 0; i < mDisplay.GetWidth(handle) * mDisplay.GetHeight(handle); ++i) pixels[i] = colour;
    mDisplay.SwapBuffers(handle, 0);
  }
  mDisplay.Register(high, 180, 80, 2, kDisplayScreenAllScreens);
  mDisplay.Register(low, 10, 20, 1, kDisplayScreenAllScreens);
  mDisplay.Register(hidden, 0, 0, 3, kDisplayScreenAllScreens);
  mDisplay.SetWindowPosition(hidden, 0, 0, 480, 272, 0);

  const std::string path = mDir.file("shot.png");
  std::string error;
  ASSERT_TRUE(solva::WriteScreenshotPNG(path, &error)) << error;
  zvtest::PngImage image;
  ASSERT_TRUE(zvtest::ReadPng(path, &image, &error)) << error;
  ASSERT_EQ(480, image.width);
  ASSERT_EQ(272, image.height);
  EXPECT_EQ(0xFF000000u, image.at(0, 0));      // the hidden white plane is not there
  EXPECT_EQ(0xFF3366CCu, image.at(10, 20));
  EXPECT_EQ(0xFF3366CCu, image.at(179, 119));
  EXPECT_EQ(0xFFFFCC00u, image.at(180, 80));   // higher z-order on top
  EXPECT_EQ(0xFFFFCC00u, image.at(209, 119));
  EXPECT_EQ(0xFFFFCC00u, image.at(229, 129));
  EXPECT_EQ(0xFF000000u, image.at(230, 130));
  EXPECT_EQ(solva::ReadScreen(), image.pixels);
}

TEST_F(DisplayScreenshot, UnwritablePathFailsWithAMessageAndLeavesNothing) {
  const std::string path = mDir.file("missing/shot.png");
  std::string error;
  EXPECT_FALSE(solva::WriteScreenshotPNG(path, &error));
  EXPECT_EQ(0u, error.find("cannot write the screenshot " + path + ": ")) << error;
  EXPECT_FALSE(zvtest::Exists(path));
}

}  // namespace
