// The shell with 3D on, on the device's real context: the state InitSolvaOpenGL
// leaves, the swap at the end of each frame that has something to render, and
// CloseSolvaOpenGL at exit.
#include <GLES/gl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <boost/shared_ptr.hpp>
#include <memory>
#include <string>
#include <vector>

#include "BaseFramework/InputManager.h"
#include "RenderSystem/GLTexture.h"
#include "RenderSystem/GLTextureManager.h"
#include "RenderSystem/RenderStateStack.h"
#include "RenderSystem/XFontManager.h"
#include "Tamarin/ZvWidgetInstance.h"
#include "solva/Clock.h"
#include "solva/Device.h"
#include "solva/Display.h"
#include "solva/Events.h"
#include "solva/OpenGL.h"
#include "support/GLTestSupport.h"
#include "support/ShellTitle.h"
#include "support/TestSupport.h"

namespace {

using shelltitle::ShellTitleInstance;
using shelltitle::ShellTitleManager;

class ShellOpenGL : public testing::Test {
 protected:
  void SetUp() override {
    char here[1000] = {0};
    ASSERT_NE(nullptr, getcwd(here, sizeof here));
    mWorkingPath = here;
    solva::ResetDevice();
    ASSERT_TRUE(solva::SetDeviceRoot(mRoot.path()));
    solva::SetTitlePath(ZV_SOURCE_DIR);  // where res/CamCfg.xml is
    solva::SetClockMode(solva::ClockMode::Virtual, 1000000);
    mGL.reset(new zvtest::GLContext());
    ASSERT_TRUE(mGL->ok()) << mGL->error();
    mApp.reset(new ShellTitleInstance(nullptr));
    ZvWidgetInstance::SetIsUseOgl(1);
    mApp->SetSolvaOpenGLConfig(mGL->config());
  }
  void TearDown() override {
    if (mEntered && !mExited) mApp->Exit();
    mApp.reset();
    mGL.reset();
    ZvWidgetInstance::SetIsUseOgl(0);
    delete XFontManager::instance_;
    XFontManager::instance_ = nullptr;
    ASSERT_EQ(0, chdir(mWorkingPath.c_str()));
    solva::SetClockMode(solva::ClockMode::Real);
    solva::ResetDevice();
  }

  std::string Enter() {
    testing::internal::CaptureStdout();
    mApp->Enter();
    mEntered = true;
    return testing::internal::GetCapturedStdout();
  }
  std::string Exit() {
    testing::internal::CaptureStdout();
    mApp->Exit();
    mExited = true;
    return testing::internal::GetCapturedStdout();
  }
  void Frame() {
    solva::AdvanceClock(33);
    solva::DeliverEvents();
    mApp->Update();
  }
  static GLint Integer(GLenum name) {
    GLint value = 0;
    glGetIntegerv(name, &value);
    return value;
  }
  // The current matrix of `mode`, as the fixed-point profile gives it.
  static std::vector<GLfixed> Matrix(GLenum mode) {
    std::vector<GLfixed> matrix(16);
    glGetFixedv(mode, matrix.data());
    return matrix;
  }
  static void FillGL(GLfixed r, GLfixed g, GLfixed b) {
    glClearColorx(r, g, b, 1 << 16);
    glClear(GL_COLOR_BUFFER_BIT);
  }

  zvtest::TempDir mRoot;
  std::string mWorkingPath;
  std::unique_ptr<zvtest::GLContext> mGL;
  boost::shared_ptr<ShellTitleInstance> mApp;
  bool mEntered = false;
  bool mExited = false;
};

const GLfixed kOne = 1 << 16;

TEST_F(ShellOpenGL, EnterSetsTheContextUpBeforeTheManager) {
  uint64_t swapsBeforeTheManager = 0;
  shelltitle::InitializeHook() = [&] { swapsBeforeTheManager = solva::OpenGLSwapCount(); };
  const std::string out = Enter();
  shelltitle::InitializeHook() = nullptr;
  EXPECT_EQ(1u, swapsBeforeTheManager) << "InitSolvaOpenGL's swap came first";
  EXPECT_EQ(0u, out.find("[SolvaOpenGL create]\nRegister gPowerListener \n")) << out;
  EXPECT_EQ(4, XFontManager::sInstance().mFontCount) << "the manager came up with 3D on";
}

TEST_F(ShellOpenGL, InitSolvaOpenGLLeavesAnOrthographicScreenInFixedPoint) {
  Enter();
  EXPECT_EQ(GL_MODELVIEW, Integer(GL_MATRIX_MODE));
  // glOrthox(0, 480, 272, 0, -1, 1): x from 0..480 and y from 272..0 to -1..1.
  const std::vector<GLfixed> projection = Matrix(GL_PROJECTION_MATRIX);
  EXPECT_NEAR(2.0 / 480, projection[0] / 65536.0, 1.0 / 65536);
  EXPECT_NEAR(-2.0 / 272, projection[5] / 65536.0, 1.0 / 65536);
  EXPECT_NEAR(-1.0, projection[10] / 65536.0, 1.0 / 65536);
  EXPECT_EQ(-kOne, projection[12]);
  EXPECT_EQ(kOne, projection[13]);
  EXPECT_EQ(0, projection[14]);
  EXPECT_EQ(kOne, projection[15]);
  EXPECT_EQ((std::vector<GLfixed>{kOne, 0, 0, 0, 0, kOne, 0, 0, 0, 0, kOne, 0, 0, 0, 0, kOne}),
            Matrix(GL_MODELVIEW_MATRIX));
}

TEST_F(ShellOpenGL, InitSolvaOpenGLBlendsTexturesWithoutDepth) {
  Enter();
  EXPECT_EQ(GL_TRUE, glIsEnabled(GL_BLEND));
  EXPECT_EQ(GL_SRC_ALPHA, Integer(GL_BLEND_SRC));
  EXPECT_EQ(GL_ONE_MINUS_SRC_ALPHA, Integer(GL_BLEND_DST));
  EXPECT_EQ(GL_TRUE, glIsEnabled(GL_TEXTURE_2D));
  EXPECT_EQ(GL_FALSE, glIsEnabled(GL_DEPTH_TEST));
  EXPECT_EQ(GL_LEQUAL, Integer(GL_DEPTH_FUNC));
  GLfixed clear[4] = {1, 1, 1, 1};
  glGetFixedv(GL_COLOR_CLEAR_VALUE, clear);
  EXPECT_EQ((std::vector<GLfixed>{0, 0, 0, 0}), std::vector<GLfixed>(clear, clear + 4));
}

TEST_F(ShellOpenGL, InitSolvaOpenGLClearsAndShowsTheEmptyPlane) {
  FillGL(kOne, 0, 0);
  mGL->Swap();
  ASSERT_EQ(0xFFFF0000u, solva::ScreenPixel(100, 100));
  Enter();
  EXPECT_EQ(2u, solva::OpenGLSwapCount());
  EXPECT_EQ(0xFF000000u, solva::ScreenPixel(100, 100));
  const std::vector<uint8_t> picture = solva::PublishedPicture(mGL->config()->hndlDisplay);
  EXPECT_EQ(std::vector<uint8_t>(480 * 272 * 4, 0), picture) << "transparent black";
}

TEST_F(ShellOpenGL, TheScreenOfTheProjectionHasItsOriginAtTheTopLeft) {
  Enter();
  glDisable(GL_TEXTURE_2D);
  glDisable(GL_BLEND);
  glColor4x(kOne, kOne, 0, kOne);
  const GLfixed corners[] = {0,          0,          2 * kOne,   0,
                             0,          kOne,       2 * kOne,   kOne,  // top left, 2 x 1
                             478 * kOne, 270 * kOne, 480 * kOne, 270 * kOne,
                             478 * kOne, 272 * kOne, 480 * kOne, 272 * kOne};  // bottom right, 2 x 2
  glEnableClientState(GL_VERTEX_ARRAY);
  glVertexPointer(2, GL_FIXED, 0, corners);
  glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
  glDrawArrays(GL_TRIANGLE_STRIP, 4, 4);
  glDisableClientState(GL_VERTEX_ARRAY);
  mApp->SwapRenderBuffer();
  EXPECT_EQ(0xFFFFFF00u, solva::ScreenPixel(0, 0));
  EXPECT_EQ(0xFFFFFF00u, solva::ScreenPixel(1, 0));
  EXPECT_EQ(0xFF000000u, solva::ScreenPixel(0, 1));
  EXPECT_EQ(0xFF000000u, solva::ScreenPixel(2, 0));
  EXPECT_EQ(0xFFFFFF00u, solva::ScreenPixel(479, 271));
  EXPECT_EQ(0xFFFFFF00u, solva::ScreenPixel(478, 270));
  EXPECT_EQ(0xFF000000u, solva::ScreenPixel(477, 270));
}

TEST_F(ShellOpenGL, EachFrameSwapsOnlyWhenThereIsSomethingToRender) {
  Enter();
  EXPECT_EQ(1u, solva::OpenGLSwapCount());
  Frame();  // the state is entered; its scene waits
  Frame();  // the transition ends
  EXPECT_FALSE(ShellTitleManager::sInstance().needRender());
  EXPECT_EQ(1u, solva::OpenGLSwapCount());
  // What a scene draws in its update is on the screen after its frame.
  GLfixed red = 0;
  ShellTitleManager::sInstance().state()->main()->onUpdate = [&](shelltitle::LoggingScene&, float) {
    red += kOne / 4;
    FillGL(red, 0, 0);
  };
  Frame();  // the scene is pushed, updated and rendered
  EXPECT_TRUE(ShellTitleManager::sInstance().needRender());
  EXPECT_EQ(2u, solva::OpenGLSwapCount());
  EXPECT_EQ(0xFF400000u, solva::ScreenPixel(5, 5));
  Frame();
  EXPECT_EQ(3u, solva::OpenGLSwapCount());
  EXPECT_EQ(0xFF800000u, solva::ScreenPixel(5, 5));

  ShellTitleManager::sInstance().state()->PopScene();
  Frame();  // the last scene goes: nothing to render, no swap
  EXPECT_FALSE(ShellTitleManager::sInstance().needRender());
  Frame();
  EXPECT_EQ(3u, solva::OpenGLSwapCount());
  EXPECT_EQ(0xFF800000u, solva::ScreenPixel(5, 5));
}

TEST_F(ShellOpenGL, SwapRenderBufferSwapsWithThreeDOnly) {
  Enter();
  mApp->SwapRenderBuffer();
  EXPECT_EQ(2u, solva::OpenGLSwapCount());
  ZvWidgetInstance::SetIsUseOgl(0);
  mApp->SwapRenderBuffer();
  EXPECT_EQ(2u, solva::OpenGLSwapCount());
  ZvWidgetInstance::SetIsUseOgl(1);
}

TEST_F(ShellOpenGL, ExitClosesTheContextLastWithAnEmptyPlane) {
  Enter();
  for (int i = 0; i < 3; ++i) Frame();
  FillGL(0, kOne, 0);
  mApp->SwapRenderBuffer();
  ASSERT_EQ(0xFF00FF00u, solva::ScreenPixel(5, 5));
  const uint64_t swaps = solva::OpenGLSwapCount();
  const std::string out = Exit();
  EXPECT_EQ(out.size() - std::string("[CloseSolvaOpenGL]\n").size(), out.rfind("[CloseSolvaOpenGL]\n")) << out;
  EXPECT_EQ(swaps + 1, solva::OpenGLSwapCount());
  EXPECT_EQ(0xFF000000u, solva::ScreenPixel(5, 5));
  GLfixed clear[4] = {1, 1, 1, 1};
  glGetFixedv(GL_COLOR_CLEAR_VALUE, clear);
  EXPECT_EQ((std::vector<GLfixed>{0, 0, 0, 0}), std::vector<GLfixed>(clear, clear + 4));
}

TEST_F(ShellOpenGL, TheManagerBringsTheTextureManagerAndTheColourRingUpAndDown) {
  Enter();
  ASSERT_NE(nullptr, GLTextureManager::instance_);
  RenderStateStack::GetColorContainer()->push_back(RenderStateStack::Color{1, 1, 1, 1});
  uint8_t pixels[4 * 4 * 4] = {};
  std::string name = "t";
  GLTexture* texture = gxGetTextureManager()->LoadTexture(pixels, 4, 4, 32, name, nullptr);
  ASSERT_NE(nullptr, texture);
  const unsigned id = texture->mTextureID;
  ASSERT_EQ(GL_TRUE, glIsTexture(id));
  Exit();
  EXPECT_EQ(nullptr, GLTextureManager::instance_);
  EXPECT_EQ(GL_FALSE, glIsTexture(id)) << "deleted with the manager, while the context was there";
  EXPECT_DEATH(RenderStateStack::GetColorContainer(), "Assertion `mpStack' failed");
}

}  // namespace
