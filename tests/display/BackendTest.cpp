// Choosing where the screen goes. The SDL window is tried on SDL's dummy video
// driver, which needs no display.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "CDisplaySvc.h"
#include "solva/Device.h"
#include "solva/Display.h"

namespace {

using namespace Vantrel::Solva;

// Sets an environment variable for the life of a test.
class EnvVar {
 public:
  EnvVar(const char* name, const char* value) : mName(name) {
    const char* old = getenv(name);
    mHad = old != nullptr;
    if (mHad) mOld = old;
    if (value) {
      setenv(name, value, 1);
    } else {
      unsetenv(name);
    }
  }
  ~EnvVar() {
    if (mHad) {
      setenv(mName.c_str(), mOld.c_str(), 1);
    } else {
      unsetenv(mName.c_str());
    }
  }

 private:
  std::string mName;
  std::string mOld;
  bool mHad = false;
};

class Backend : public testing::Test {
 protected:
  void SetUp() override { solva::ResetDevice(); }
  void TearDown() override { solva::ResetDevice(); }
};

TEST_F(Backend, HeadlessUntilAnotherIsChosen) { EXPECT_EQ("headless", solva::DisplayBackendName()); }

TEST_F(Backend, UnknownNameIsRefusedWithAMessage) {
  std::string error;
  EXPECT_FALSE(solva::SetDisplayBackend("vga", solva::DisplayOptions(), &error));
  EXPECT_EQ("unknown display backend \"vga\" (sdl, headless or auto)", error);
  EXPECT_EQ("headless", solva::DisplayBackendName());
}

TEST_F(Backend, AutoWithoutADisplayTakesHeadless) {
  EnvVar display("DISPLAY", nullptr);
  EnvVar wayland("WAYLAND_DISPLAY", nullptr);
  EnvVar driver("SDL_VIDEODRIVER", nullptr);
  EXPECT_TRUE(solva::SetDisplayBackend("auto"));
  EXPECT_EQ("headless", solva::DisplayBackendName());
  EXPECT_EQ(0u, solva::DisplayWindowId());
  int x = -1, y = -1;
  EXPECT_FALSE(solva::WindowToScreen(100, 100, &x, &y));
}

TEST_F(Backend, SdlWindowOnTheDummyDriverPresentsAtEverySwap) {
  EnvVar driver("SDL_VIDEODRIVER", "dummy");
  std::string error;
  ASSERT_TRUE(solva::SetDisplayBackend("sdl", solva::DisplayOptions(), &error)) << error;
  EXPECT_EQ("sdl", solva::DisplayBackendName());
  EXPECT_NE(0u, solva::DisplayWindowId());

  CDisplaySvc display;
  tDisplayHandle handle = display.CreateHandle(272, 480, kPixelFormatARGB8888, nullptr);
  display.Register(handle, 0, 0, 1, kDisplayScreenAllScreens);
  memset(display.GetBuffer(handle), 0xFF, 480 * 272 * 4);
  EXPECT_EQ(kNoErr, display.SwapBuffers(handle, 0));
  solva::PresentScreen();
  // The screen is the same whatever shows it.
  EXPECT_EQ(0xFFFFFFFFu, solva::ScreenPixel(240, 136));

  // At scale 2 the screen starts 32 window pixels in, inside the frame.
  int x = -1, y = -1;
  EXPECT_TRUE(solva::WindowToScreen(32, 32, &x, &y));
  EXPECT_EQ(0, x);
  EXPECT_EQ(0, y);
  EXPECT_TRUE(solva::WindowToScreen(32 + 2 * 479 + 1, 32 + 2 * 271 + 1, &x, &y));
  EXPECT_EQ(479, x);
  EXPECT_EQ(271, y);
  EXPECT_FALSE(solva::WindowToScreen(31, 40, &x, &y));
  EXPECT_FALSE(solva::WindowToScreen(32 + 2 * 480, 40, &x, &y));

  EXPECT_TRUE(solva::SetDisplayBackend("headless"));
  EXPECT_EQ(0u, solva::DisplayWindowId());
}

TEST_F(Backend, AutoTakesTheWindowWhereOneCanOpen) {
  EnvVar driver("SDL_VIDEODRIVER", "dummy");
  solva::DisplayOptions options;
  options.scale = 1;
  ASSERT_TRUE(solva::SetDisplayBackend("auto", options));
  EXPECT_EQ("sdl", solva::DisplayBackendName());
  int x = -1, y = -1;
  EXPECT_TRUE(solva::WindowToScreen(16 + 5, 16 + 7, &x, &y));  // scale 1: a 16-pixel frame
  EXPECT_EQ(5, x);
  EXPECT_EQ(7, y);
}

TEST_F(Backend, SdlThatCannotStartLeavesHeadlessAndSaysWhy) {
  EnvVar driver("SDL_VIDEODRIVER", "no-such-driver");
  std::string error;
  EXPECT_FALSE(solva::SetDisplayBackend("sdl", solva::DisplayOptions(), &error));
  EXPECT_EQ(0u, error.find("the sdl display cannot start: ")) << error;
  EXPECT_EQ("headless", solva::DisplayBackendName());
  // auto falls back.
  EXPECT_TRUE(solva::SetDisplayBackend("auto"));
  EXPECT_EQ("headless", solva::DisplayBackendName());
}

}  // namespace
