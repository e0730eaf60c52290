// The recorder's five layouts: every control the scenes bind, the animations they
// play, every picture loaded at the size it is drawn, and the record panel laid
// out so that the bar the scene places from the record button sits in its slot.
#include <gtest/gtest.h>

#include <ostream>
#include <vector>

#include "RecorderResSupport.h"
#include "YGUI/YGUIAnimation.h"
#include "YGUI/YGUIImage.h"
#include "YGUI/YGUIImageButton.h"

namespace {

using restest::Box;
using restest::BoxOf;
using restest::LoadedGrid;

const char* const kPanelButtons[] = {"back", "play", "stop", "record", "pause"};
const char* const kPanelImages[] = {"mic_time_flat", "bar_red", "bar_blue", "bar_yellow", "bar"};

// The bar as the scene draws it: its base 210 x 14 from the record button, the
// cursor 6 above it, 26 high and 12 wide, riding from the bar's start to 200 in.
struct PanelGeometry {
  const char* file;
  int screenWidth, screenHeight;  // of the grid's orientation
  int barDx, barDy;               // from the record button's place
};

const PanelGeometry kPanels[] = {
    {"menu_mic_widget.xml", 480, 272, 48, 16},
    {"menu_mic_widget_vert.xml", 272, 480, -179, -22},
};

void PrintTo(const PanelGeometry& g, std::ostream* out) { *out << g.file; }

class PanelLayoutTest : public testing::TestWithParam<PanelGeometry> {};

TEST_P(PanelLayoutTest, HasEveryControlTheRecordSceneBindsOfTheRightKind) {
  LoadedGrid loaded(GetParam().file);
  for (const char* name : kPanelButtons) {
    YGUIControl* c = loaded.Find(name);
    ASSERT_NE(nullptr, c) << name;
    EXPECT_EQ(1, c->GetControlType()) << name << " is a button";
  }
  for (const char* name : kPanelImages) {
    YGUIControl* c = loaded.Find(name);
    ASSERT_NE(nullptr, c) << name;
    EXPECT_EQ(0, c->GetControlType()) << name << " is a picture";
  }
}

TEST_P(PanelLayoutTest, HasTheAnimationsTheMenuAndTheScenePlay) {
  LoadedGrid loaded(GetParam().file);
  for (const char* name : {"in", "loop", "recording", "stop"})
    EXPECT_TRUE(loaded.grid.IsAnimationExist(name)) << name;
  // The light is what "recording" makes blink.
  YGUIAnimation* light = loaded.Find("bar_red")->GetAnimation();
  ASSERT_NE(nullptr, light);
  EXPECT_TRUE(light->IsAnimationExist("recording"));
}

// Every picture is found and is exactly the size of its control, so nothing is
// scaled when drawn at rest; buttons have all three states.
TEST_P(PanelLayoutTest, EveryPictureLoadsAtTheSizeOfItsControl) {
  LoadedGrid loaded(GetParam().file);
  for (const char* name : kPanelButtons) {
    YGUIImageButton* b = dynamic_cast<YGUIImageButton*>(loaded.Find(name));
    ASSERT_NE(nullptr, b) << name;
    for (int state = 0; state < 3; ++state) {
      EXPECT_NE(nullptr, b->mImages[state].mData) << name << " state " << state;
      EXPECT_EQ(b->GetWidth(), b->mImages[state].mWidth) << name << " state " << state;
      EXPECT_EQ(b->GetHeight(), b->mImages[state].mHeight) << name << " state " << state;
    }
  }
  for (const char* name : kPanelImages) {
    YGUIImage* i = dynamic_cast<YGUIImage*>(loaded.Find(name));
    ASSERT_NE(nullptr, i) << name;
    EXPECT_NE(nullptr, i->mImage.mData) << name;
    EXPECT_EQ(i->GetWidth(), i->mImage.mWidth) << name;
    EXPECT_EQ(i->GetHeight(), i->mImage.mHeight) << name;
  }
}

// "mic_time_flat" is the anchor the launcher's position moves, and the panel's
// background: at (0, 0), with every control and the bar inside it, and itself on
// the screen of its orientation.
TEST_P(PanelLayoutTest, AnchorIsAtTheOriginAndHoldsTheWholePanelOnScreen) {
  const PanelGeometry& g = GetParam();
  LoadedGrid loaded(g.file);
  const Box panel = BoxOf(*loaded.Find("mic_time_flat"));
  EXPECT_EQ(0, panel.x);
  EXPECT_EQ(0, panel.y);
  EXPECT_TRUE((Box{0, 0, g.screenWidth, g.screenHeight}.Contains(panel))) << panel;
  for (const char* name : {"back", "play", "stop", "record", "pause", "bar_red"})
    EXPECT_TRUE(panel.Contains(BoxOf(*loaded.Find(name)))) << name << " " << BoxOf(*loaded.Find(name));
  const YGUIControl& record = *loaded.Find("record");
  const int barX = record.GetPositionX() + g.barDx, barY = record.GetPositionY() + g.barDy;
  EXPECT_TRUE(panel.Contains(Box{barX, barY, 210, 14})) << "bar at " << barX << ", " << barY;
  EXPECT_TRUE(panel.Contains(Box{barX, barY - 6, 200 + 12, 26})) << "cursor's run";
}

// The bar the scene draws, and the cursor over its whole run, touch no button
// and not the light; buttons that the scene never shows together share a place,
// and the others stand apart.
TEST_P(PanelLayoutTest, BarSlotIsClearOfTheButtonsAndButtonsShownTogetherStandApart) {
  const PanelGeometry& g = GetParam();
  LoadedGrid loaded(g.file);
  const YGUIControl& record = *loaded.Find("record");
  const Box cursorRun{record.GetPositionX() + g.barDx, record.GetPositionY() + g.barDy - 6, 212, 26};
  for (const char* name : {"back", "play", "stop", "record", "pause", "bar_red"})
    EXPECT_FALSE(cursorRun.Overlaps(BoxOf(*loaded.Find(name)))) << name << " " << BoxOf(*loaded.Find(name));
  // record and stop take turns, and so do play and pause
  EXPECT_EQ(BoxOf(*loaded.Find("record")).x, BoxOf(*loaded.Find("stop")).x);
  EXPECT_EQ(BoxOf(*loaded.Find("record")).y, BoxOf(*loaded.Find("stop")).y);
  EXPECT_EQ(BoxOf(*loaded.Find("play")).x, BoxOf(*loaded.Find("pause")).x);
  EXPECT_EQ(BoxOf(*loaded.Find("play")).y, BoxOf(*loaded.Find("pause")).y);
  const std::vector<const char*> apart = {"back", "record", "play", "bar_red"};
  for (size_t i = 0; i < apart.size(); ++i)
    for (size_t j = i + 1; j < apart.size(); ++j)
      EXPECT_FALSE(BoxOf(*loaded.Find(apart[i])).Overlaps(BoxOf(*loaded.Find(apart[j]))))
          << apart[i] << " and " << apart[j];
  // The hidden parts of the bar lie where the scene draws it.
  EXPECT_EQ(cursorRun.x, loaded.Find("bar_blue")->GetPositionX());
  EXPECT_EQ(cursorRun.y + 6, loaded.Find("bar_blue")->GetPositionY());
}

// A control takes presses where it is drawn: every animation must leave each
// control at rest, at its place, full size and opaque.
TEST_P(PanelLayoutTest, EveryAnimationEndsWithTheControlsAtRest) {
  LoadedGrid loaded(GetParam().file);
  for (const char* name : {"in", "loop", "recording", "stop"}) {
    loaded.grid.PlayAnime(name);
    int frames = 0;
    for (; frames < 300 && !loaded.grid.IsAnimeFinished(); ++frames) loaded.grid.Update(0.033f);
    EXPECT_LT(frames, 100) << name << " runs over three seconds";
    loaded.grid.Update(0.033f);
    for (int i = 0; i < loaded.grid.GetControlNum(); ++i) {
      YGUIControl* c = dynamic_cast<YGUIControl*>(loaded.grid.mFrames[i]);
      ASSERT_NE(nullptr, c);
      EXPECT_EQ(0, c->mAnimeFrame.mX) << name << " " << c->mName;
      EXPECT_EQ(0, c->mAnimeFrame.mY) << name << " " << c->mName;
      EXPECT_EQ(4096, c->mAnimeFrame.mScaleX) << name << " " << c->mName;
      EXPECT_EQ(4096, c->mAnimeFrame.mScaleY) << name << " " << c->mName;
      EXPECT_EQ(4096, c->mAnimeFrame.mOpacity) << name << " " << c->mName;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(BothOrientations, PanelLayoutTest, testing::ValuesIn(kPanels),
                         [](const testing::TestParamInfo<PanelGeometry>& info) {
                           return std::string(info.param.screenWidth > info.param.screenHeight ? "Horizontal"
                                                                                                : "Vertical");
                         });

struct PopupLayout {
  const char* label;
  const char* file;
  const char* button;
  int screenWidth, screenHeight;
};

const PopupLayout kPopups[] = {
    {"NoMicrophone", "menu_paint_save.xml", "ok", 480, 272},
    {"GalleryFullHorizontal", "menu_pop_up_gall_full_hori.xml", "back", 480, 272},
    {"GalleryFullVertical", "menu_pop_up_gall_full_vert.xml", "back", 272, 480},
};

void PrintTo(const PopupLayout& p, std::ostream* out) { *out << p.file; }

class PopupLayoutTest : public testing::TestWithParam<PopupLayout> {};

TEST_P(PopupLayoutTest, HasItsButtonWithThreePicturesAndEveryPictureLoads) {
  LoadedGrid loaded(GetParam().file);
  YGUIImageButton* b = dynamic_cast<YGUIImageButton*>(loaded.Find(GetParam().button));
  ASSERT_NE(nullptr, b) << GetParam().button;
  for (int state = 0; state < 3; ++state) {
    EXPECT_NE(nullptr, b->mImages[state].mData) << state;
    EXPECT_EQ(b->GetWidth(), b->mImages[state].mWidth) << state;
  }
  ASSERT_GT(loaded.grid.GetControlNum(), 1);
  for (int i = 0; i < loaded.grid.GetControlNum(); ++i) {
    YGUIImage* picture = dynamic_cast<YGUIImage*>(loaded.grid.mFrames[i]);
    if (!picture) continue;
    EXPECT_NE(nullptr, picture->mImage.mData) << picture->mName;
    EXPECT_EQ(picture->GetWidth(), picture->mImage.mWidth) << picture->mName;
    EXPECT_EQ(picture->GetHeight(), picture->mImage.mHeight) << picture->mName;
  }
}

TEST_P(PopupLayoutTest, EveryControlIsOnTheScreenOfItsOrientation) {
  const PopupLayout& p = GetParam();
  LoadedGrid loaded(p.file);
  const Box screen{0, 0, p.screenWidth, p.screenHeight};
  for (int i = 0; i < loaded.grid.GetControlNum(); ++i) {
    YGUIControl* c = dynamic_cast<YGUIControl*>(loaded.grid.mFrames[i]);
    ASSERT_NE(nullptr, c);
    EXPECT_TRUE(screen.Contains(BoxOf(*c))) << c->mName << " " << BoxOf(*c);
  }
}

// The gallery-full pop-up takes no tap before its animations are over: "in" and
// the "loop" behind it are short, and both end at rest.
TEST_P(PopupLayoutTest, InAndLoopAreShortAndEndAtRest) {
  LoadedGrid loaded(GetParam().file);
  EXPECT_TRUE(loaded.grid.IsAnimationExist("in"));
  EXPECT_TRUE(loaded.grid.IsAnimationExist("loop"));
  int frames = 0;
  for (const char* name : {"in", "loop"}) {
    loaded.grid.PlayAnime(name);
    for (; frames < 300 && !loaded.grid.IsAnimeFinished(); ++frames) loaded.grid.Update(0.033f);
  }
  EXPECT_LT(frames, 35) << "over 1.1 seconds before the button counts";
  loaded.grid.Update(0.033f);
  YGUIControl* b = loaded.Find(GetParam().button);
  ASSERT_NE(nullptr, b);
  EXPECT_EQ(4096, b->mAnimeFrame.mScaleX);
  EXPECT_EQ(4096, b->mAnimeFrame.mOpacity);
  EXPECT_EQ(0, b->mAnimeFrame.mX);
}

INSTANTIATE_TEST_SUITE_P(AllPopups, PopupLayoutTest, testing::ValuesIn(kPopups),
                         [](const testing::TestParamInfo<PopupLayout>& info) { return std::string(info.param.label); });

}  // namespace
