// The test screen rendered into the device's RGBA layer, in both layouts: colours
// at control corners, the scaled background, button states and a control half
// faded in.
#include <gtest/gtest.h>

#include <array>

#include "Canvas/VT/ZvCanvasFactory.h"
#include "Canvas/VT/ZvCanvasRGBALayer.h"
#include "MenuDevice.h"
#include "YGUI/YGUIImage.h"
#include "YGUI/YGUIImageButton.h"
#include "YGUI/YGUILabel.h"
#include "support/PngImage.h"

namespace {

using ygtest::DeviceInput;
using ygtest::Frame;
using ygtest::RecordingMenu;

// Layer pixels are B, G, R, A; these are written R, G, B, A for reading.
using Rgba = std::array<int, 4>;

const Rgba kRed = {200, 0, 0, 255};
const Rgba kBlue = {0, 0, 200, 255};
const Rgba kGreen = {0, 160, 0, 255};
const Rgba kYellow = {255, 255, 0, 255};
const Rgba kGrey = {128, 128, 128, 255};
const Rgba kWhite = {255, 255, 255, 255};
const Rgba kBlack = {0, 0, 0, 255};
const Rgba kMagenta = {248, 0, 248, 255};  // RGB565 of (248, 0, 248)
// The "back" picture is RGBA4444 0x0FFF: (0, 240, 240) at alpha 240, blended
// through the table: d = 255 * 15 / 255 = 15, each channel
// floor(dst * 15 / 255) + floor(src * 240 / 255).
const Rgba kCyanOverRed = {11, 225, 225, 255};
const Rgba kCyanOverBlue = {0, 225, 236, 255};

class MenuRenderTest : public testing::Test {
 protected:
  void Start(int orientation) {
    device.reset(new DeviceInput(orientation));
    testing::internal::CaptureStdout();
    layer = dynamic_cast<ZvCanvasRGBALayer*>(factory.CreateRGBALayer(0, 0, 480, 272));
    testing::internal::GetCapturedStdout();
    ASSERT_NE(nullptr, layer);
    menu.reset(new RecordingMenu("TestMenuH.xml", "TestMenuV.xml"));
    ygtest::ScopedWorkDir work(ygtest::LayoutRoot());
    menu->EnterScene();
  }
  // Runs the scene until it is running, and rests the "loop" on its last pose.
  void RunIn() {
    for (int i = 0; i < 40 && menu->mMenuState != YGUI::eMenu_Running; ++i) Frame(*menu);
    ASSERT_EQ(YGUI::eMenu_Running, menu->mMenuState);
    menu->StopCurAnime();
    Frame(*menu);
  }
  void Draw() {
    layer->Clear();
    menu->RenderYGUI(*layer);
  }
  Rgba At(int x, int y) const {
    const unsigned char* p = layer->GetBuffer() + (size_t(y) * 480 + x) * 4;
    return Rgba{p[2], p[1], p[0], p[3]};
  }
  // Keeps what was drawn for a person to look at: beside the build, named after
  // the test.
  void Keep(const std::string& name) {
    std::vector<uint32_t> pixels;
    for (int y = 0; y < 272; ++y)
      for (int x = 0; x < 480; ++x) {
        const Rgba c = At(x, y);
        pixels.push_back(uint32_t(c[3]) << 24 | uint32_t(c[0]) << 16 | uint32_t(c[1]) << 8 | uint32_t(c[2]));
      }
    zvtest::WritePng(std::string(ZV_BINARY_DIR) + "/ygui-" + name + (HasFailure() ? "_actual" : "") + ".png", 480,
                     272, pixels);
  }
  void TearDown() override {
    if (menu) menu->ExitScene();
    menu.reset();
    if (layer) {
      layer->Destroy();
      delete layer;
    }
    device.reset();
  }

  ygtest::ScopedTextureManager textures;
  std::unique_ptr<DeviceInput> device;
  ZvCanvasFactory factory;
  ZvCanvasRGBALayer* layer = nullptr;
  std::unique_ptr<RecordingMenu> menu;
};

TEST_F(MenuRenderTest, HorizontalScreenHasItsControlsAtTheirCornersOverTheScaledBackground) {
  Start(0);
  RunIn();
  Draw();
  // The 48-wide background at 480: source column 24 begins at 236, not 240.
  EXPECT_EQ(kRed, At(0, 0));
  EXPECT_EQ(kRed, At(235, 271));
  EXPECT_EQ(kBlue, At(236, 0));
  EXPECT_EQ(kBlue, At(479, 271));
  // "ok": 40 x 40 green drawn at 80 x 80 from (40, 100).
  EXPECT_EQ(kGreen, At(40, 100));
  EXPECT_EQ(kGreen, At(119, 100));
  EXPECT_EQ(kGreen, At(40, 179));
  EXPECT_EQ(kGreen, At(119, 179));
  EXPECT_EQ(kRed, At(39, 100));
  EXPECT_EQ(kRed, At(120, 179));
  EXPECT_EQ(kRed, At(40, 180));
  // "back" blends: its pictures' alpha is 240.
  EXPECT_EQ(kCyanOverRed, At(200, 100));
  EXPECT_EQ(kCyanOverRed, At(235, 139));
  EXPECT_EQ(kCyanOverBlue, At(236, 100));
  EXPECT_EQ(kCyanOverBlue, At(239, 139));
  EXPECT_EQ(kBlue, At(240, 139));
  // "third" over blue.
  EXPECT_EQ(kGreen, At(320, 100));
  EXPECT_EQ(kGreen, At(359, 139));
  // "logo" from two tiles: white 0..31, black 32..49.
  EXPECT_EQ(kWhite, At(400, 20));
  EXPECT_EQ(kWhite, At(431, 39));
  EXPECT_EQ(kBlack, At(432, 20));
  EXPECT_EQ(kBlack, At(449, 39));
  EXPECT_EQ(kBlue, At(450, 20));
  // The label draws nothing through the grid's pass.
  EXPECT_EQ(kRed, At(25, 25));
  Keep("horizontal");
}

TEST_F(MenuRenderTest, ButtonStatesShowTheFocusAndTheDisabledPictures) {
  Start(0);
  RunIn();
  // Focus by the confirm-less way: a direction from the focused control.
  menu->mCurrentGrid->FocusOnControlById(1);
  solva::QueueButtons(kButtonRight);
  Frame(*menu);
  solva::QueueButtons(0);
  menu->GetControl("third")->Disable();
  Frame(*menu);
  Draw();
  EXPECT_EQ(kGreen, At(40, 100));  // "ok" lost focus again
  // "back" has focus: its Selected picture, RGB565 magenta, opaque.
  EXPECT_EQ(kMagenta, At(200, 100));
  EXPECT_EQ(kMagenta, At(239, 139));
  // "third" is disabled: the FocusBackground picture, grey.
  EXPECT_EQ(kGrey, At(320, 100));
  EXPECT_EQ(kGrey, At(359, 139));
  Keep("states");
  // The "focus" set of "ok": focus back on it and part way through its growth
  // it's larger than 80.
  solva::QueueButtons(kButtonLeft);
  Frame(*menu);
  solva::QueueButtons(0);
  Draw();
  EXPECT_EQ(kYellow, At(40, 100));
}

TEST_F(MenuRenderTest, ControlHalfFadedInBlendsAtItsAnimatedOpacityAndPlace) {
  Start(0);
  // Eight frames of 0.033 seconds: 8 x 135 = 1080 of the 2048 of "in". t = 2160,
  // so opacity 2160 (alpha 0.527, b = 134) and x offset -40 + 21 = -19.
  for (int i = 0; i < 8; ++i) Frame(*menu);
  YGUIControl* ok = menu->GetControl("ok");
  ASSERT_EQ(2160, ok->mRenderOpacity);
  ASSERT_EQ(21, ok->GetRenderLeft());
  Draw();
  // Green at 134 over red: d = 121; R floor(200 * 121 / 255) = 94,
  // G floor(160 * 134 / 255) = 84.
  const Rgba half = {94, 84, 0, 255};
  EXPECT_EQ(half, At(21, 100));
  EXPECT_EQ(half, At(100, 179));
  EXPECT_EQ(kRed, At(20, 100));
  EXPECT_EQ(kRed, At(101, 100));
  Keep("half-faded");
}

TEST_F(MenuRenderTest, VerticalScreenIsDrawnTurnedAQuarterClockwise) {
  Start(1);
  RunIn();
  Draw();
  EXPECT_EQ(eOS_Vertical, menu->mOrientation);
  // Grid point (gx, gy) lands on screen (479 - gy, gx). The 48-wide background
  // at 272: source column 24 begins at grid x 134.
  EXPECT_EQ(kRed, At(479, 0));
  EXPECT_EQ(kRed, At(0, 133));
  EXPECT_EQ(kBlue, At(0, 134));
  EXPECT_EQ(kBlue, At(479, 271));
  // "ok" from grid (40, 60) to (119, 139).
  EXPECT_EQ(kGreen, At(419, 40));
  EXPECT_EQ(kGreen, At(340, 119));
  EXPECT_EQ(kGreen, At(419, 119));
  EXPECT_EQ(kRed, At(420, 40));
  EXPECT_EQ(kRed, At(339, 119));
  // "back" from grid (160, 300) over blue.
  EXPECT_EQ(kCyanOverBlue, At(179, 160));
  EXPECT_EQ(kCyanOverBlue, At(140, 199));
  // "third" from grid (40, 400).
  EXPECT_EQ(kGreen, At(79, 40));
  EXPECT_EQ(kGreen, At(40, 79));
  Keep("vertical");
}

TEST_F(MenuRenderTest, UpsideDownScreenIsDrawnTurnedHalfWay) {
  Start(2);
  RunIn();
  Draw();
  EXPECT_EQ(eOS_HorizontalUpsideDown, menu->mOrientation);
  // Grid point (gx, gy) lands on screen (479 - gx, 271 - gy).
  EXPECT_EQ(kGreen, At(439, 171));
  EXPECT_EQ(kGreen, At(360, 92));
  EXPECT_EQ(kRed, At(440, 171));
  EXPECT_EQ(kBlue, At(0, 0));
  Keep("upside-down");
}

TEST_F(MenuRenderTest, TurningWhileRunningSwitchesTheGridAtTheNextRender) {
  Start(0);
  RunIn();
  device->Turn(3);
  Draw();
  EXPECT_EQ(eOS_VerticalUpsideDown, menu->mOrientation);
  EXPECT_EQ(menu->mVerticalGrid, menu->mCurrentGrid);
  // Orient 3: grid (gx, gy) at screen (gy, 271 - gx); "ok" from grid (40, 60).
  EXPECT_EQ(kGreen, At(60, 231));
  EXPECT_EQ(kGreen, At(139, 152));
  Keep("turned");
}

TEST_F(MenuRenderTest, LabelDrawsOnlyThroughItsOwnOverloadAndNeedsTheLayersFont) {
  Start(0);
  RunIn();
  YGUILabel* title = dynamic_cast<YGUILabel*>(menu->GetControl("title"));
  ASSERT_NE(nullptr, title);
  layer->Clear();
  title->Render(*layer, eOS_Horizontal);  // the inherited one: nothing
  title->Render(*layer, 0);               // without a loaded font: nothing either
  for (int y = 0; y < 272; y += 17)
    for (int x = 0; x < 480; x += 13) EXPECT_EQ((Rgba{0, 0, 0, 0}), At(x, y));
  testing::internal::CaptureStdout();
  layer->InitFont();
  testing::internal::GetCapturedStdout();
  title->Render(*layer, 0);
  // Text from (10 + 10, 10 + 15): something is drawn near there and nowhere far.
  int near = 0, far = 0;
  for (int y = 0; y < 272; ++y)
    for (int x = 0; x < 480; ++x)
      if (At(x, y)[3] != 0) ((x < 200 && y < 60) ? near : far)++;
  EXPECT_GT(near, 0);
  EXPECT_EQ(0, far);
  Keep("label");
}

TEST_F(MenuRenderTest, PartRenderShowsTheLowerOrTheLeftShare) {
  Start(0);
  RunIn();
  YGUIImage* logo = dynamic_cast<YGUIImage*>(menu->GetControl("logo"));
  ASSERT_NE(nullptr, logo);
  const int half = 2048;
  logo->SetPartRenderParm(true, false, half);
  Draw();
  // The left 25 of 50 columns: white 0..24 only (the eleven-argument form
  // blends at 254).
  EXPECT_EQ(254, At(400, 20)[0]);
  EXPECT_EQ(254, At(424, 39)[0]);
  EXPECT_EQ(kBlue, At(425, 20));
  logo->SetPartRenderParm(true, true, half);
  Draw();
  // The lower 10 of 20 rows, at their place.
  EXPECT_EQ(kBlue, At(400, 29));
  EXPECT_EQ(254, At(400, 30)[0]);
  EXPECT_EQ(254, At(400, 39)[0]);
  Keep("part");
}

TEST_F(MenuRenderTest, RgbImageSetFromPixelsIsCopiedOpaque) {
  Start(0);
  RunIn();
  YGUIImage* logo = dynamic_cast<YGUIImage*>(menu->GetControl("logo"));
  unsigned char* pixels = new unsigned char[2 * 2 * 3];
  for (int i = 0; i < 4; ++i) {
    pixels[i * 3] = 10;
    pixels[i * 3 + 1] = 20;
    pixels[i * 3 + 2] = 30;
  }
  logo->SetImage(pixels, 2, 2);
  EXPECT_EQ(2, logo->mWidth);
  EXPECT_FALSE(logo->IsImageEmpty());
  Frame(*menu);
  Draw();
  EXPECT_EQ((Rgba{10, 20, 30, 255}), At(400, 20));
  EXPECT_EQ((Rgba{10, 20, 30, 255}), At(401, 21));
  EXPECT_EQ(kBlue, At(402, 20));
  logo->SetImageEmpty();
  EXPECT_TRUE(logo->IsImageEmpty());
  Draw();
  EXPECT_EQ(kBlue, At(400, 20));
}

}  // namespace
