// The display service's surfaces and how the screen is composed from them.
#include <gtest/gtest.h>

#include <cstring>

#include "CDisplaySvc.h"
#include "solva/Device.h"
#include "solva/Display.h"

namespace {

using namespace Vantrel::Solva;

class Compositor : public testing::Test {
 protected:
  void SetUp() override { solva::ResetDevice(); }
  void TearDown() override { solva::ResetDevice(); }

  // An ARGB surface filled with one premultiplied pixel value, published.
  tDisplayHandle Solid(int w, int h, uint32_t argb, S16 x, S16 y, tDisplayZOrder z) {
    tDisplayHandle handle = mDisplay.CreateHandle(U16(h), U16(w), kPixelFormatARGB8888, nullptr);
    EXPECT_NE(kInvalidDisplayHandle, handle);
    Paint(handle, argb);
    mDisplay.Register(handle, x, y, z, kDisplayScreenAllScreens);
    mDisplay.SetAlpha(handle, 100, 1);
    return handle;
  }
  void Paint(tDisplayHandle handle, uint32_t argb) {
    uint32_t* pixels = reinterpret_cast<uint32_t*>(mDisplay.GetBuffer(handle));
    for (int i = 0; i < mDisplay.GetWidth(handle) * mDisplay.GetHeight(handle); ++i) pixels[i] = argb;
    mDisplay.SwapBuffers(handle, 0);
  }
  CDisplaySvc mDisplay;
};

TEST_F(Compositor, EmptyScreenIsOpaqueBlack) {
  const std::vector<uint32_t> screen = solva::ReadScreen();
  ASSERT_EQ(size_t(480 * 272), screen.size());
  for (uint32_t p : screen) ASSERT_EQ(0xFF000000u, p);
  EXPECT_EQ(1, mDisplay.GetNumberOfScreens());
}

TEST_F(Compositor, SurfacesKnowTheirFormatSizeAndPitch) {
  tDisplayHandle argb = mDisplay.CreateHandle(10, 20, kPixelFormatARGB8888, nullptr);
  EXPECT_EQ(20, mDisplay.GetWidth(argb));
  EXPECT_EQ(10, mDisplay.GetHeight(argb));
  EXPECT_EQ(80, mDisplay.GetPitch(argb));
  EXPECT_EQ(kPixelFormatARGB8888, mDisplay.GetPixelFormat(argb));
  tDisplayHandle yuv = mDisplay.CreateHandle(10, 21, kPixelFormatYUV420, nullptr);
  EXPECT_EQ(44, mDisplay.GetPitch(yuv));  // width made even, luma and chroma side by side
  EXPECT_EQ(kPixelFormatYUV420, mDisplay.GetPixelFormat(yuv));
  EXPECT_EQ(2, solva::DisplayHandleCount());
  EXPECT_EQ(0, solva::RegisteredDisplayHandleCount());
}

TEST_F(Compositor, CreateHandleRefusesWhatTheDeviceCannotShow) {
  EXPECT_EQ(kInvalidDisplayHandle, mDisplay.CreateHandle(10, 10, kPixelFormatRGB565, nullptr));
  EXPECT_EQ(kInvalidDisplayHandle, mDisplay.CreateHandle(10, 10, kPixelFormatError, nullptr));
  EXPECT_EQ(kInvalidDisplayHandle, mDisplay.CreateHandle(0, 10, kPixelFormatARGB8888, nullptr));
  uint8_t own[400];
  EXPECT_EQ(kInvalidDisplayHandle, mDisplay.CreateHandle(10, 10, kPixelFormatARGB8888, own));
  EXPECT_EQ(0, solva::DisplayHandleCount());
}

TEST_F(Compositor, StaleHandlesAreRefused) {
  tDisplayHandle handle = mDisplay.CreateHandle(4, 4, kPixelFormatARGB8888, nullptr);
  EXPECT_EQ(kNoErr, mDisplay.DestroyHandle(handle, 1));
  EXPECT_NE(kNoErr, mDisplay.DestroyHandle(handle, 1));
  EXPECT_NE(kNoErr, mDisplay.Register(handle, 0, 0, 1, kDisplayScreenAllScreens));
  EXPECT_NE(kNoErr, mDisplay.SwapBuffers(handle, 0));
  EXPECT_EQ(nullptr, mDisplay.GetBuffer(handle));
  EXPECT_EQ(0, mDisplay.GetWidth(handle));
  EXPECT_EQ(kPixelFormatError, mDisplay.GetPixelFormat(handle));
}

TEST_F(Compositor, RegisteredSurfaceShowsAtItsPosition) {
  Solid(10, 5, 0xFF204080u, 100, 50, 1);
  EXPECT_EQ(0xFF204080u, solva::ScreenPixel(100, 50));
  EXPECT_EQ(0xFF204080u, solva::ScreenPixel(109, 54));
  EXPECT_EQ(0xFF000000u, solva::ScreenPixel(110, 54));
  EXPECT_EQ(0xFF000000u, solva::ScreenPixel(109, 55));
  EXPECT_EQ(0xFF000000u, solva::ScreenPixel(99, 50));
}

TEST_F(Compositor, UnregisteredSurfaceIsNotComposed) {
  tDisplayHandle handle = mDisplay.CreateHandle(4, 4, kPixelFormatARGB8888, nullptr);
  Paint(handle, 0xFFFFFFFFu);
  EXPECT_EQ(0xFF000000u, solva::ScreenPixel(0, 0));
  mDisplay.Register(handle, 0, 0, 1, kDisplayScreenAllScreens);
  EXPECT_EQ(0xFFFFFFFFu, solva::ScreenPixel(0, 0));
  mDisplay.UnRegister(handle, kDisplayScreenAllScreens);
  EXPECT_EQ(0xFF000000u, solva::ScreenPixel(0, 0));
}

TEST_F(Compositor, HiddenHandleIsNotComposed) {
  tDisplayHandle handle = Solid(4, 4, 0xFFFFFFFFu, 0, 0, 1);
  mDisplay.SetWindowPosition(handle, 0, 0, 4, 4, 0);
  EXPECT_EQ(0xFF000000u, solva::ScreenPixel(0, 0));
  mDisplay.SetWindowPosition(handle, 0, 0, 4, 4, 1);
  EXPECT_EQ(0xFFFFFFFFu, solva::ScreenPixel(0, 0));
}

TEST_F(Compositor, HigherZOrderLiesOnTop) {
  Solid(4, 4, 0xFFFF0000u, 0, 0, 2);  // registered first, but higher
  Solid(4, 4, 0xFF00FF00u, 2, 2, 1);
  EXPECT_EQ(0xFFFF0000u, solva::ScreenPixel(3, 3));
  EXPECT_EQ(0xFF00FF00u, solva::ScreenPixel(4, 4));
}

TEST_F(Compositor, EqualZOrderLaysTheLaterRegistrationOnTop) {
  Solid(4, 4, 0xFFFF0000u, 0, 0, 1);
  Solid(4, 4, 0xFF00FF00u, 2, 2, 1);
  EXPECT_EQ(0xFF00FF00u, solva::ScreenPixel(3, 3));
}

TEST_F(Compositor, SurfacePartlyOffTheScreenIsCut) {
  Solid(20, 20, 0xFF0000FFu, -10, -10, 1);
  Solid(20, 20, 0xFF00FF00u, 470, 262, 1);
  EXPECT_EQ(0xFF0000FFu, solva::ScreenPixel(0, 0));
  EXPECT_EQ(0xFF0000FFu, solva::ScreenPixel(9, 9));
  EXPECT_EQ(0xFF000000u, solva::ScreenPixel(10, 10));
  EXPECT_EQ(0xFF00FF00u, solva::ScreenPixel(479, 271));
  EXPECT_EQ(0xFF000000u, solva::ScreenPixel(469, 271));
}

TEST_F(Compositor, WindowShowsAtMostTheSurfaceAndMovesIt) {
  tDisplayHandle handle = Solid(10, 10, 0xFFFFFFFFu, 0, 0, 1);
  mDisplay.SetWindowPosition(handle, 50, 60, 4, 100, 1);
  EXPECT_EQ(0xFF000000u, solva::ScreenPixel(0, 0));
  EXPECT_EQ(0xFFFFFFFFu, solva::ScreenPixel(53, 69));
  EXPECT_EQ(0xFF000000u, solva::ScreenPixel(54, 60));  // 4 wide
  EXPECT_EQ(0xFF000000u, solva::ScreenPixel(50, 70));  // the surface is 10 high
}

TEST_F(Compositor, PremultipliedPixelsLieOverWhatIsBeneath) {
  Solid(4, 4, 0xFFC86432u, 0, 0, 1);  // R 200 G 100 B 50, opaque
  // Half-covering white, premultiplied: 128 of colour at alpha 128.
  Solid(4, 4, 0x80808080u, 0, 0, 2);
  // 128 + 200 x 127 / 255 = 227.6, 128 + 100 x 127 / 255 = 177.8, 128 + 50 x 127 / 255 = 152.9,
  // each rounded after adding: 228, 178, 153
  EXPECT_EQ(0xFFE4B299u, solva::ScreenPixel(0, 0));
}

TEST_F(Compositor, TransparentPixelsShowWhatIsBeneath) {
  Solid(4, 4, 0xFFC86432u, 0, 0, 1);
  Solid(4, 4, 0x00000000u, 0, 0, 2);
  EXPECT_EQ(0xFFC86432u, solva::ScreenPixel(0, 0));
}

TEST_F(Compositor, PlaneAlphaLevelScalesThePlane) {
  Solid(4, 4, 0xFFFFFFFFu, 0, 0, 1);
  tDisplayHandle top = Solid(4, 4, 0xFF000000u, 0, 0, 2);
  mDisplay.SetAlpha(top, 50, 1);
  // Black at half strength over white: 255 x (25500 - 255 x 50) / 25500 = 127.5, rounded.
  EXPECT_EQ(0xFF808080u, solva::ScreenPixel(0, 0));
  EXPECT_NE(kNoErr, mDisplay.SetAlpha(top, 101, 1));
}

TEST_F(Compositor, PlaneWithoutAlphaCoversWhatIsBeneath) {
  Solid(4, 4, 0xFFFFFFFFu, 0, 0, 1);
  tDisplayHandle top = Solid(4, 4, 0x00102030u, 0, 0, 2);
  mDisplay.SetAlpha(top, 100, 0);
  EXPECT_EQ(0xFF102030u, solva::ScreenPixel(0, 0));
}

TEST_F(Compositor, ScreenShowsThePublishedPictureNotTheOneBeingWritten) {
  tDisplayHandle handle = Solid(4, 4, 0xFFFF0000u, 0, 0, 1);
  uint8_t* writing = mDisplay.GetBuffer(handle);
  memset(writing, 0xFF, 4 * 4 * 4);
  EXPECT_EQ(0xFFFF0000u, solva::ScreenPixel(0, 0));
  mDisplay.SwapBuffers(handle, 0);
  EXPECT_EQ(0xFFFFFFFFu, solva::ScreenPixel(0, 0));
  // The picture that was shown comes back to be written.
  EXPECT_NE(writing, mDisplay.GetBuffer(handle));
  EXPECT_EQ(0xFF, solva::PublishedPicture(handle)[0]);
}

TEST_F(Compositor, SwapsAreCounted) {
  tDisplayHandle handle = mDisplay.CreateHandle(4, 4, kPixelFormatARGB8888, nullptr);
  EXPECT_EQ(0u, solva::DisplaySwapCount());
  mDisplay.SwapBuffers(handle, 0);
  mDisplay.SwapBuffers(handle, 0);
  EXPECT_EQ(2u, solva::DisplaySwapCount());
}

TEST_F(Compositor, YUVSurfaceShowsItsLumaAndChroma) {
  tDisplayHandle handle = mDisplay.CreateHandle(4, 4, kPixelFormatYUV420, nullptr);
  mDisplay.Register(handle, 0, 0, 2, kDisplayScreenAllScreens);
  mDisplay.SetAlpha(handle, 100, 1);
  EXPECT_EQ(0xFF000000u, solva::ScreenPixel(0, 0));  // made black
  uint8_t* picture = mDisplay.GetBuffer(handle);
  const int pitch = mDisplay.GetPitch(handle);
  for (int y = 0; y < 4; ++y) memset(picture + y * pitch, 255, 4);  // white luma, neutral chroma
  picture[0 * pitch + 4] = 128 - 50;                                // U of the top-left 2 x 2
  picture[2 * pitch + 4] = 128 + 100;                               // V of the top-left 2 x 2
  mDisplay.SwapBuffers(handle, 0);
  EXPECT_EQ(0xFFFFFFFFu, solva::ScreenPixel(3, 3));
  // R = 255 + 1.402 x 100 -> 255; G = 255 + 0.344 x 50 - 0.714 x 100 = 201.1; B = 255 - 1.772 x 50 = 166.4
  EXPECT_EQ(0xFFFFC9A6u, solva::ScreenPixel(1, 1));
}

TEST_F(Compositor, ResetTakesEverySurfaceAway) {
  Solid(4, 4, 0xFFFFFFFFu, 0, 0, 1);
  solva::ResetDevice();
  EXPECT_EQ(0, solva::DisplayHandleCount());
  EXPECT_EQ(0u, solva::DisplaySwapCount());
  EXPECT_EQ(0xFF000000u, solva::ScreenPixel(0, 0));
}

}  // namespace
