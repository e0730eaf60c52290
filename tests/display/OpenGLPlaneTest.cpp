// The device's 3D context: what the platform hands a title, and how each swap
// puts the GL picture on the 3D plane, under the canvas layers, in the screen and
// its screenshots.
#include <EGL/egl.h>
#include <GLES/gl.h>
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>

#include "CDisplaySvc.h"
#include "SolvaOpenGLConfig.h"
#include "solva/Device.h"
#include "solva/Display.h"
#include "solva/OpenGL.h"
#include "support/GLTestSupport.h"
#include "support/PngImage.h"
#include "support/TestSupport.h"

namespace {

using namespace Vantrel::Solva;

class OpenGLPlane : public testing::Test {
 protected:
  void SetUp() override {
    solva::ResetDevice();
    mGL.reset(new zvtest::GLContext());
    ASSERT_TRUE(mGL->ok()) << mGL->error();
  }
  void TearDown() override {
    mGL.reset();
    solva::ResetDevice();
  }

  // The whole surface in one colour, 8-bit channels.
  static void Fill(int r, int g, int b, int a) {
    glClearColorx(r * 257, g * 257, b * 257, a * 257);  // n / 255 in 16.16
    glClear(GL_COLOR_BUFFER_BIT);
  }
  // A w x h rectangle at (x, y) from the top left, through the scissor.
  static void Rect(int x, int y, int w, int h, int r, int g, int b) {
    glEnable(GL_SCISSOR_TEST);
    glScissor(x, 272 - y - h, w, h);
    Fill(r, g, b, 255);
    glDisable(GL_SCISSOR_TEST);
  }

  std::unique_ptr<zvtest::GLContext> mGL;
  CDisplaySvc mDisplay;
};

TEST_F(OpenGLPlane, TheContextIsOpenGLES11CommonWithPalettedTexturesAndCurrentHere) {
  SolvaOpenGLConfig* config = mGL->config();
  EXPECT_NE(nullptr, config->eglDisplay);
  EXPECT_NE(nullptr, config->eglConfig);
  EXPECT_NE(nullptr, config->eglSurface);
  EXPECT_NE(nullptr, config->eglContext);
  EXPECT_EQ(config->eglContext, eglGetCurrentContext());
  EXPECT_EQ(config->eglSurface, eglGetCurrentSurface(EGL_DRAW));
  EXPECT_EQ(0, strncmp("OpenGL ES-CM 1.1", reinterpret_cast<const char*>(glGetString(GL_VERSION)), 16))
      << glGetString(GL_VERSION);
  const std::string extensions = reinterpret_cast<const char*>(glGetString(GL_EXTENSIONS));
  EXPECT_NE(std::string::npos, extensions.find("GL_OES_compressed_paletted_texture"));
  EXPECT_NE(std::string::npos, extensions.find("GL_OES_fixed_point"));
  EXPECT_NE(std::string::npos, extensions.find("GL_EXT_read_format_bgra")) << "the plane is read in its own order";
  EGLint width = 0, height = 0;
  eglQuerySurface(config->eglDisplay, config->eglSurface, EGL_WIDTH, &width);
  eglQuerySurface(config->eglDisplay, config->eglSurface, EGL_HEIGHT, &height);
  EXPECT_EQ(480, width);
  EXPECT_EQ(272, height);
  EXPECT_TRUE(solva::OpenGLContextAlive());
}

TEST_F(OpenGLPlane, ThePlaneIsAFullScreenHandleRegisteredAtTheBottom) {
  void* plane = mGL->config()->hndlDisplay;
  EXPECT_EQ(480, mDisplay.GetWidth(plane));
  EXPECT_EQ(272, mDisplay.GetHeight(plane));
  EXPECT_EQ(kPixelFormatARGB8888, mDisplay.GetPixelFormat(plane));
  EXPECT_EQ(1, solva::RegisteredDisplayHandleCount());
  // Registered: taking it off works once.
  EXPECT_EQ(kNoErr, mDisplay.UnRegister(plane, kDisplayScreenAllScreens));
  EXPECT_NE(kNoErr, mDisplay.UnRegister(plane, kDisplayScreenAllScreens));
}

TEST_F(OpenGLPlane, ASecondRequestGivesTheSameContext) {
  EXPECT_EQ(mGL->config(), CreateSolvaOpenGLConfig());
  EXPECT_EQ(1, solva::DisplayHandleCount());
}

TEST_F(OpenGLPlane, DestroyGivesTheContextAndThePlaneBack) {
  DestroySolvaOpenGLConfig(mGL->config());
  EXPECT_FALSE(solva::OpenGLContextAlive());
  EXPECT_EQ(EGL_NO_CONTEXT, eglGetCurrentContext());
  EXPECT_EQ(0, solva::DisplayHandleCount());
  // A stale or foreign config is ignored; a new context comes up afresh.
  SolvaOpenGLConfig foreign = {};
  DestroySolvaOpenGLConfig(&foreign);
  DestroySolvaOpenGLConfig(nullptr);
  zvtest::GLContext again;
  ASSERT_TRUE(again.ok());
  EXPECT_TRUE(solva::OpenGLContextAlive());
}

TEST_F(OpenGLPlane, ResettingTheDeviceEndsTheContext) {
  solva::ResetDevice();
  EXPECT_FALSE(solva::OpenGLContextAlive());
  EXPECT_EQ(0u, solva::OpenGLSwapCount());
  EXPECT_EQ(0, solva::DisplayHandleCount());
}

TEST_F(OpenGLPlane, ASwapPublishesThePictureOnThePlane) {
  Fill(200, 100, 50, 255);
  EXPECT_EQ(0xFF000000u, solva::ScreenPixel(10, 10)) << "nothing shows before the swap";
  mGL->Swap();
  EXPECT_EQ(1u, solva::OpenGLSwapCount());
  const std::vector<uint8_t> picture = solva::PublishedPicture(mGL->config()->hndlDisplay);
  ASSERT_EQ(size_t(480 * 272 * 4), picture.size());
  EXPECT_EQ(50, picture[0]);  // B, G, R, A
  EXPECT_EQ(100, picture[1]);
  EXPECT_EQ(200, picture[2]);
  EXPECT_EQ(255, picture[3]);
  EXPECT_EQ(0xFFC86432u, solva::ScreenPixel(10, 10));
  EXPECT_EQ(0xFFC86432u, solva::ScreenPixel(479, 271));
}

TEST_F(OpenGLPlane, DrawingWithoutASwapChangesNothingOnTheScreen) {
  Fill(255, 0, 0, 255);
  mGL->Swap();
  Fill(0, 255, 0, 255);
  EXPECT_EQ(0xFFFF0000u, solva::ScreenPixel(100, 100));
  mGL->Swap();
  EXPECT_EQ(0xFF00FF00u, solva::ScreenPixel(100, 100));
  EXPECT_EQ(2u, solva::OpenGLSwapCount());
}

TEST_F(OpenGLPlane, TheTopRowOfTheSurfaceIsTheTopRowOfTheScreen) {
  Fill(0, 0, 0, 255);
  Rect(0, 0, 3, 2, 255, 255, 255);    // top left
  Rect(470, 260, 10, 12, 0, 0, 255);  // bottom right
  mGL->Swap();
  EXPECT_EQ(0xFFFFFFFFu, solva::ScreenPixel(0, 0));
  EXPECT_EQ(0xFFFFFFFFu, solva::ScreenPixel(2, 1));
  EXPECT_EQ(0xFF000000u, solva::ScreenPixel(3, 0));
  EXPECT_EQ(0xFF000000u, solva::ScreenPixel(0, 2));
  EXPECT_EQ(0xFF0000FFu, solva::ScreenPixel(479, 271));
  EXPECT_EQ(0xFF0000FFu, solva::ScreenPixel(470, 260));
  EXPECT_EQ(0xFF000000u, solva::ScreenPixel(469, 260));
}

TEST_F(OpenGLPlane, ThePlaneIsOpaqueWhateverItsAlpha) {
  Fill(40, 80, 120, 0);
  mGL->Swap();
  EXPECT_EQ(0xFF285078u, solva::ScreenPixel(5, 5));
}

TEST_F(OpenGLPlane, CanvasLayersLieOverThePlaneByZOrder) {
  Fill(0, 0, 255, 255);
  mGL->Swap();
  // A canvas surface at z-order 1 over the left half: opaque red above, half
  // covering grey below, transparent in its last row.
  tDisplayHandle layer = mDisplay.CreateHandle(272, 240, kPixelFormatARGB8888, nullptr);
  uint32_t* pixels = reinterpret_cast<uint32_t*>(mDisplay.GetBuffer(layer));
  for (int y = 0; y < 272; ++y) {
    for (int x = 0; x < 240; ++x) pixels[y * 240 + x] = y < 100 ? 0xFFFF0000u : (y < 271 ? 0x80404040u : 0);
  }
  mDisplay.SwapBuffers(layer, 0);
  mDisplay.Register(layer, 0, 0, kDisplayOnOverlay, kDisplayScreenAllScreens);
  mDisplay.SetAlpha(layer, 100, 1);
  EXPECT_EQ(0xFFFF0000u, solva::ScreenPixel(10, 10));
  EXPECT_EQ(0xFF4040BFu, solva::ScreenPixel(10, 150));  // premultiplied grey over blue at 128 of 255
  EXPECT_EQ(0xFF0000FFu, solva::ScreenPixel(10, 271));
  EXPECT_EQ(0xFF0000FFu, solva::ScreenPixel(300, 10));
}

TEST_F(OpenGLPlane, ScreenshotsShowTheGLPicture) {
  Fill(0, 0, 0, 255);
  Rect(100, 50, 20, 10, 10, 220, 30);
  mGL->Swap();
  zvtest::TempDir dir;
  ASSERT_TRUE(solva::WriteScreenshotPNG(dir.file("shot.png")));
  zvtest::PngImage image;
  ASSERT_TRUE(zvtest::ReadPng(dir.file("shot.png"), &image));
  EXPECT_EQ(0xFF0ADC1Eu, image.at(100, 50));
  EXPECT_EQ(0xFF0ADC1Eu, image.at(119, 59));
  EXPECT_EQ(0xFF000000u, image.at(120, 59));
}

TEST_F(OpenGLPlane, ASwapOfAnotherSurfaceLeavesThePlaneAlone) {
  Fill(255, 255, 0, 255);
  EGLDisplay display = mGL->config()->eglDisplay;
  EXPECT_EQ(EGL_FALSE, eglSwapBuffers(display, EGL_NO_SURFACE));
  EXPECT_EQ(0u, solva::OpenGLSwapCount());
  EXPECT_EQ(0xFF000000u, solva::ScreenPixel(0, 0));
}

}  // namespace
