// The recorder's screens drawn into the device's RGBA layer the way the scenes
// draw them, in both orientations and in the states a child sees: the panel
// ready, recording and playing, and the two pop-ups. Each picture is kept beside
// the build (recorder-*.png) for a person to look at; the checks name the colours
// a child should see at the buttons, the bar and around the panel.
#include <gtest/gtest.h>

#include <array>
#include <cstdlib>

#include "Canvas/VT/ZvCanvasFactory.h"
#include "Canvas/VT/ZvCanvasRGBALayer.h"
#include "RecorderResSupport.h"
#include "YGUI/YGUITypes.h"
#include "support/PngImage.h"
#include "ygui/MenuDevice.h"

namespace {

using ygtest::DeviceInput;
using ygtest::Frame;
using ygtest::RecordingMenu;

using Rgba = std::array<int, 4>;

// Close enough to a colour of the pictures: the layer blends edges and gloss.
::testing::AssertionResult Near(const Rgba& want, const Rgba& got, int tolerance = 24) {
  for (int i = 0; i < 4; ++i)
    if (std::abs(want[i] - got[i]) > tolerance)
      return ::testing::AssertionFailure() << "got (" << got[0] << ", " << got[1] << ", " << got[2] << ", " << got[3]
                                           << "), want about (" << want[0] << ", " << want[1] << ", " << want[2]
                                           << ", " << want[3] << ")";
  return ::testing::AssertionSuccess();
}

const Rgba kRecordDot = {230, 57, 70, 255};
const Rgba kStopFace = {58, 134, 255, 255};
const Rgba kPlayFace = {76, 195, 90, 255};
const Rgba kPauseFace = {168, 85, 247, 255};
const Rgba kBackFace = {255, 159, 28, 255};
const Rgba kDisabledFace = {212, 212, 212, 255};
const Rgba kPanel = {255, 246, 213, 255};
const Rgba kNothing = {0, 0, 0, 0};
const Rgba kBarFill = {255, 196, 61, 255};
const Rgba kBarGroove = {189, 230, 250, 255};
const Rgba kLight = {255, 45, 45, 255};

enum class PanelState { Ready, Recording, Playing };

class RecorderScreensRenderTest : public testing::Test {
 protected:
  void Start(const std::string& horizontal, const std::string& vertical, int orientation, bool runIn = true) {
    device.reset(new DeviceInput(orientation));
    testing::internal::CaptureStdout();
    layer = dynamic_cast<ZvCanvasRGBALayer*>(factory.CreateRGBALayer(0, 0, 480, 272));
    testing::internal::GetCapturedStdout();
    ASSERT_NE(nullptr, layer);
    menu.reset(new RecordingMenu(horizontal, vertical));
    ygtest::ScopedWorkDir work(restest::TitleRoot());
    menu->EnterScene();
    if (!runIn) return;
    for (int i = 0; i < 60 && menu->mMenuState != YGUI::eMenu_Running; ++i) Frame(*menu);
    ASSERT_EQ(YGUI::eMenu_Running, menu->mMenuState);
    menu->StopCurAnime();  // rest the "loop" on its last pose
    Frame(*menu);
  }
  YGUIControl& Control(const char* name) {
    YGUIControl* c = menu->GetControl(name);
    EXPECT_NE(nullptr, c) << name;
    return *c;
  }
  // What the record scene shows in each state: its bar parts hidden, record and
  // stop taking turns, play and pause likewise, the light while recording.
  void Show(PanelState state) {
    for (const char* name : {"bar_blue", "bar_yellow", "bar"}) Control(name).mVisible = 0;
    const bool recording = state == PanelState::Recording, playing = state == PanelState::Playing;
    Control("record").mVisible = !recording && !playing;
    Control("stop").mVisible = recording || playing;
    Control("play").mVisible = !playing;
    Control("pause").mVisible = playing;
    Control("bar_red").mVisible = recording;
    if (state == PanelState::Ready)
      Control("play").Disable();
    else
      Control("play").Enable();
    if (recording || playing)
      Control("back").Disable();
    else
      Control("back").Enable();
    if (recording) Control("play").Disable();
    Frame(*menu);
  }
  // The grid point (gx, gy) on the screen, in the orientation in force.
  Rgba AtGrid(int gx, int gy) const {
    const int o = menu->mOrientation;
    const int x = o == 1 ? 479 - gy : gx, y = o == 1 ? gx : gy;
    const unsigned char* p = layer->GetBuffer() + (size_t(y) * 480 + x) * 4;
    return Rgba{p[2], p[1], p[0], p[3]};
  }
  Rgba AtControl(const char* name, int dx, int dy) {
    YGUIControl& c = Control(name);
    return AtGrid(c.GetPositionX() + dx, c.GetPositionY() + dy);
  }
  // The progress bar as the record scene draws it over the panel: base, the
  // fill cut to the progress, the cursor 6 above, from the record button's place.
  void DrawBar(float progress) {
    const bool flat = menu->mIsHorizontal;
    const int x = Control("record").GetPositionX() + (flat ? 48 : -179);
    const int y = Control("record").GetPositionY() + (flat ? 16 : -22);
    barX = x;
    barY = y;
    YGUIRawImage parts[3];
    const char* names[3] = {"mic_time_blue", "mic_time_yellow", "mic_time_glide_button"};
    {
      ygtest::ScopedWorkDir work(restest::TitleRoot());
      for (int i = 0; i < 3; ++i) parts[i].LoadImage(names[i], "res/UI/UITexture/");
    }
    for (int i = 0; i < 3; ++i) ASSERT_NE(nullptr, parts[i].mData) << names[i];
    const int fill = int(float(parts[0].mWidth - 10) * progress) + 5;
    const int o = menu->mOrientation;
    layer->Draw_Image_RGBA8888(x, y, parts[0].mWidth, parts[0].mHeight, parts[0].mData, parts[0].mWidth,
                               parts[0].mHeight, 1.0f, o);
    layer->Draw_Image_RGBA8888(x, y, fill, parts[1].mHeight, parts[1].mData, parts[1].mWidth, parts[1].mHeight, 1.0f,
                               o);
    layer->Draw_Image_RGBA8888(x + fill - 5, y - 6, parts[2].mWidth, parts[2].mHeight, parts[2].mData,
                               parts[2].mWidth, parts[2].mHeight, 1.0f, o);
    for (YGUIRawImage& part : parts) part.Release();
  }
  void Draw() {
    layer->Clear();
    menu->RenderYGUI(*layer);
  }
  void Keep(const std::string& name) {
    std::vector<uint32_t> pixels;
    const unsigned char* p = layer->GetBuffer();
    for (int i = 0; i < 480 * 272; ++i, p += 4)
      pixels.push_back(uint32_t(p[3]) << 24 | uint32_t(p[2]) << 16 | uint32_t(p[1]) << 8 | uint32_t(p[0]));
    zvtest::WritePng(std::string(ZV_BINARY_DIR) + "/recorder-" + name + ".png", 480, 272, pixels);
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
  int barX = 0, barY = 0;
};

const char kPanelH[] = "menu_mic_widget.xml";
const char kPanelV[] = "menu_mic_widget_vert.xml";

TEST_F(RecorderScreensRenderTest, ReadyPanelHeldFlatShowsBackRecordAndAGreyedPlay) {
  Start(kPanelH, kPanelV, 0);
  Show(PanelState::Ready);
  Draw();
  DrawBar(0.0f);
  Keep("panel-flat-ready");
  EXPECT_TRUE(Near(kRecordDot, AtControl("record", 22, 22)));
  EXPECT_TRUE(Near(kBackFace, AtControl("back", 22, 33)));
  EXPECT_TRUE(Near(kDisabledFace, AtControl("play", 22, 33)));
  EXPECT_TRUE(Near(kPanel, AtControl("mic_time_flat", 55, 30)));
  EXPECT_TRUE(Near(kNothing, AtGrid(470, 200), 0));
  EXPECT_TRUE(Near(kBarGroove, AtGrid(barX + 100, barY + 9)));
}

// Coming in, the buttons grow from their middles: the toolkit scales about the
// quarter point, and the key frames' offsets put the middle back.
TEST_F(RecorderScreensRenderTest, ButtonsPopInAboutTheirMiddles) {
  Start(kPanelH, kPanelV, 0, false);
  ASSERT_EQ(YGUI::eMenu_InAnime, menu->mMenuState);
  Show(PanelState::Ready);  // as the scene has it when it enters
  int grown = 0;
  for (int i = 0; i < 14 && menu->mMenuState == YGUI::eMenu_InAnime; ++i) {
    Frame(*menu);
    for (const char* name : {"back", "record", "play"}) {
      YGUIControl& c = Control(name);
      if (c.mRenderWidth != c.GetWidth()) ++grown;
      const int middleX = 2 * c.GetRenderLeft() + c.mRenderWidth, middleY = 2 * c.GetRenderTop() + c.mRenderHeight;
      EXPECT_NEAR(2 * c.GetPositionX() + c.GetWidth(), middleX, 3) << name << " frame " << i;
      EXPECT_NEAR(2 * c.GetPositionY() + c.GetHeight(), middleY, 3) << name << " frame " << i;
    }
    if (i == 5) {
      Draw();
      Keep("panel-flat-coming-in");
    }
  }
  EXPECT_GT(grown, 6);
}

// While a hint plays, the scene keeps the focus on the button it speaks of: the
// button is lit with a yellow halo.
TEST_F(RecorderScreensRenderTest, HintLightsTheRecordButtonWithAYellowHalo) {
  Start(kPanelH, kPanelV, 0);
  Show(PanelState::Ready);
  Draw();
  const Rgba unlit = AtControl("record", 1, 22);
  menu->mCurrentGrid->RequestFocus(&Control("record"));
  Frame(*menu);
  Draw();
  DrawBar(0.0f);
  Keep("panel-flat-hint");
  const Rgba kHalo = {255, 158, 0, 255};
  EXPECT_TRUE(Near(kHalo, AtControl("record", 1, 22)));
  EXPECT_FALSE(Near(kHalo, unlit));
  EXPECT_TRUE(Near(kRecordDot, AtControl("record", 22, 22)));
}

TEST_F(RecorderScreensRenderTest, RecordingPanelHeldFlatShowsStopTheLightAndTheBarFilling) {
  Start(kPanelH, kPanelV, 0);
  Show(PanelState::Recording);
  Draw();
  DrawBar(0.4f);
  Keep("panel-flat-recording");
  EXPECT_TRUE(Near(kStopFace, AtControl("stop", 22, 33)));
  EXPECT_TRUE(Near(kLight, AtControl("bar_red", 16, 20)));
  EXPECT_TRUE(Near(kBarFill, AtGrid(barX + 40, barY + 9)));
  EXPECT_TRUE(Near(kBarGroove, AtGrid(barX + 160, barY + 9)));
}

TEST_F(RecorderScreensRenderTest, PlayingPanelHeldFlatShowsPauseAndStop) {
  Start(kPanelH, kPanelV, 0);
  Show(PanelState::Playing);
  Draw();
  DrawBar(0.7f);
  Keep("panel-flat-playing");
  EXPECT_TRUE(Near(kPauseFace, AtControl("pause", 22, 33)));
  EXPECT_TRUE(Near(kStopFace, AtControl("stop", 22, 33)));
  EXPECT_TRUE(Near(kDisabledFace, AtControl("back", 22, 33)));
}

TEST_F(RecorderScreensRenderTest, ReadyPanelStoodUpIsDrawnTurnedWithTheBarAboveTheButtons) {
  Start(kPanelH, kPanelV, 1);
  ASSERT_EQ(menu->mVerticalGrid, menu->mCurrentGrid);
  Show(PanelState::Ready);
  Draw();
  DrawBar(0.0f);
  Keep("panel-up-ready");
  EXPECT_TRUE(Near(kRecordDot, AtControl("record", 22, 22)));
  EXPECT_TRUE(Near(kBackFace, AtControl("back", 22, 33)));
  EXPECT_TRUE(Near(kBarGroove, AtGrid(barX + 100, barY + 9)));
  EXPECT_LT(barY + 14, Control("record").GetPositionY());
  EXPECT_TRUE(Near(kNothing, AtGrid(200, 400), 0));
}

TEST_F(RecorderScreensRenderTest, RecordingPanelStoodUpShowsStopTheLightAndTheBarFilling) {
  Start(kPanelH, kPanelV, 1);
  Show(PanelState::Recording);
  Draw();
  DrawBar(0.4f);
  Keep("panel-up-recording");
  EXPECT_TRUE(Near(kStopFace, AtControl("stop", 22, 33)));
  EXPECT_TRUE(Near(kLight, AtControl("bar_red", 16, 20)));
  EXPECT_TRUE(Near(kBarFill, AtGrid(barX + 40, barY + 9)));
}

TEST_F(RecorderScreensRenderTest, PlayingPanelStoodUpShowsPauseAndStop) {
  Start(kPanelH, kPanelV, 1);
  Show(PanelState::Playing);
  Draw();
  DrawBar(0.7f);
  Keep("panel-up-playing");
  EXPECT_TRUE(Near(kPauseFace, AtControl("pause", 22, 33)));
  EXPECT_TRUE(Near(kStopFace, AtControl("stop", 22, 33)));
  EXPECT_TRUE(Near(kBarFill, AtGrid(barX + 120, barY + 9)));
}

TEST_F(RecorderScreensRenderTest, NoMicrophonePopupShowsItsGreenOkButtonOverTheWholeScreen) {
  Start("menu_paint_save.xml", "", 0);
  Draw();
  Keep("popup-no-microphone");
  EXPECT_TRUE(Near(kPlayFace, AtControl("ok", 30, 44)));
  for (int x : {0, 240, 479})
    for (int y : {0, 271}) EXPECT_EQ(255, AtGrid(x, y)[3]) << x << ", " << y;
}

TEST_F(RecorderScreensRenderTest, GalleryFullPopupShowsItsBackButtonHeldFlat) {
  Start("menu_pop_up_gall_full_hori.xml", "menu_pop_up_gall_full_vert.xml", 0);
  Draw();
  Keep("popup-gallery-full-flat");
  EXPECT_TRUE(Near(kBackFace, AtControl("back", 30, 46)));
  for (int x : {0, 240, 479})
    for (int y : {0, 271}) EXPECT_EQ(255, AtGrid(x, y)[3]) << x << ", " << y;
}

TEST_F(RecorderScreensRenderTest, GalleryFullPopupShowsItsBackButtonStoodUp) {
  Start("menu_pop_up_gall_full_hori.xml", "menu_pop_up_gall_full_vert.xml", 1);
  ASSERT_EQ(menu->mVerticalGrid, menu->mCurrentGrid);
  Draw();
  Keep("popup-gallery-full-up");
  EXPECT_TRUE(Near(kBackFace, AtControl("back", 30, 46)));
  for (int gx : {0, 271})
    for (int gy : {0, 240, 479}) EXPECT_EQ(255, AtGrid(gx, gy)[3]) << gx << ", " << gy;
}

}  // namespace
