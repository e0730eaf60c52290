// Frames and controls: the render rectangle, hit tests, focus and the buttons'
// states.
#include <gtest/gtest.h>

#include "YGUI/YGUIAnimation.h"
#include "YGUI/YGUIAnimeSet.h"
#include "YGUI/YGUIControl.h"
#include "YGUI/YGUIGrid.h"
#include "YGUI/YGUIImage.h"
#include "YGUI/YGUIImageButton.h"
#include "YGUI/YGUILabel.h"
#include "YguiTestSupport.h"

namespace {

using ygtest::Button;
using ygtest::Stylus;

// A one-set animation whose only key has the given pose, played and finished, so
// that it is the control's current pose.
YGUIAnimation* PoseAnimation(int x, int y, float scale, float opacity) {
  YGUIAnimation* animation = new YGUIAnimation(1);
  animation->Initialize();
  YGUIAnimeSet* set = new YGUIAnimeSet(1);
  set->Initialize();
  set->mName = "pose";
  YGUIAnimeFrame* key = new YGUIAnimeFrame();
  key->mX = x;
  key->mY = y;
  key->mScaleX = key->mScaleY = YGUIToFixed(scale);
  key->mOpacity = YGUIToFixed(opacity);
  set->AddKeyFrame(key);
  animation->AddAnimeSet(set);
  animation->PlayAnime("pose");
  animation->Update(0.0f);  // total time 0: ends on the key at once
  return animation;
}

class ControlTest : public testing::Test {
 protected:
  void SetUp() override { grid.SetSize(480, 272); }
  void TearDown() override { grid.Destroy(); }
  template <class T>
  T* Add(int id, int x, int y, int w, int h) {
    T* control = new T(grid);
    control->Initialize();
    control->mId = id;
    control->SetPosition(x, y);
    control->SetSize(w, h);
    grid.AddFrame(control);
    return control;
  }

  ygtest::RecordingObserver observer;
  YGUIGrid grid{&observer};
};

TEST_F(ControlTest, FreshControlHasTheDefaults) {
  YGUIControl control(grid);
  EXPECT_EQ(-1, control.mId);
  EXPECT_EQ(-1, control.mNavigate.mUp);
  EXPECT_EQ(-1, control.mNavigate.mRight);
  EXPECT_EQ(0, control.mEnabled);
  EXPECT_EQ(1, control.mVisible);
  EXPECT_EQ(0, control.mAnimeAble);
  EXPECT_EQ(4096, control.mRenderOpacity);
  EXPECT_EQ(4096, control.mAnimeFrame.mScaleX);
  EXPECT_TRUE(control.mDirty);
  EXPECT_EQ(-1, control.GetControlType());
  EXPECT_EQ("", control.GetCurrentAnimeName());
}

TEST_F(ControlTest, ControlTypesAreImageZeroButtonOneLabelTwo) {
  YGUIImage image(grid);
  YGUIImageButton button(grid);
  YGUILabel label(grid);
  EXPECT_EQ(0, image.GetControlType());
  EXPECT_EQ(1, button.GetControlType());
  EXPECT_EQ(2, label.GetControlType());
}

TEST_F(ControlTest, ScaleTwoMakesAHundredWideControlAtFiftyTwoHundredWideAtLeft25) {
  YGUIImage* image = Add<YGUIImage>(1, 50, 10, 100, 40);
  image->mAnimeFrame.mScaleX = 8192;
  image->SetRenderRect();
  EXPECT_EQ(200, image->mRenderWidth);
  EXPECT_EQ(25, image->GetRenderLeft());  // 50 + 25 - 50: grows around the quarter point
  EXPECT_EQ(40, image->mRenderHeight);
  EXPECT_EQ(10, image->GetRenderTop());
}

TEST_F(ControlTest, ChangeOfOpacityAloneReturnsZeroAndStillTakesTheOpacity) {
  YGUIImage* image = Add<YGUIImage>(1, 50, 10, 100, 40);
  image->SetRenderRect();
  image->mDirty = false;
  image->mAnimeFrame.mOpacity = 1000;
  EXPECT_EQ(0, image->SetRenderRect());
  EXPECT_EQ(1000, image->mRenderOpacity);
  EXPECT_TRUE(image->mDirty);
  // Nothing changed at all: 0 at once, the dirty area left alone.
  image->mDirty = false;
  EXPECT_EQ(0, image->SetRenderRect());
  EXPECT_FALSE(image->mDirty);
}

TEST_F(ControlTest, DirtyRectIsTheUnionOfOldAndNewClippedToTheScreen) {
  YGUIImage* image = Add<YGUIImage>(1, 450, 10, 20, 20);
  image->SetOffset(20, 5);  // 470..490, 15..35
  EXPECT_EQ(1, image->mRenderChanged);
  EXPECT_EQ(450, image->mDirtyRect.left);
  EXPECT_EQ(10, image->mDirtyRect.top);
  EXPECT_EQ(480, image->mDirtyRect.right);
  EXPECT_EQ(35, image->mDirtyRect.bottom);
}

TEST_F(ControlTest, RectangleWhollyOffTheScreenLeavesTheDirtyRectAlone) {
  YGUIImage* image = Add<YGUIImage>(1, 10, 10, 20, 20);
  const Rect2D<int> before = image->mDirtyRect;
  image->SetOffset(-100, 0);
  EXPECT_EQ(before.left, image->mDirtyRect.left);
  EXPECT_EQ(before.right, image->mDirtyRect.right);
}

TEST_F(ControlTest, GridScaleGoesThroughTheMirroringPivotFormula) {
  YGUIImage* image = Add<YGUIImage>(1, 40, 36, 100, 100);
  int scale = 8192;
  grid.SetScale(scale, scale);
  // Pivot (240, 136); base (40, 36) -> 240 + ((200 * 8192 + 2048) >> 12) = 640.
  EXPECT_EQ(200, image->mRenderWidth);
  EXPECT_EQ(640 + 50 - 50, image->GetRenderLeft());
  EXPECT_EQ(336, image->GetRenderTop());
}

TEST_F(ControlTest, InvisibleControlIgnoresAStylusPress) {
  YGUIImageButton* button = Add<YGUIImageButton>(1, 10, 10, 40, 40);
  button->mVisible = 0;
  EXPECT_EQ(0, button->DealMessage(Stylus(4, 20, 20)));
  EXPECT_EQ(0, button->mFocus);
  EXPECT_FALSE(button->ContainPoint(20, 20));
}

TEST_F(ControlTest, ControlWhoseAnimationPoseHasOpacityZeroIgnoresAStylusPress) {
  YGUIImageButton* button = Add<YGUIImageButton>(1, 10, 10, 40, 40);
  button->mAnimation = PoseAnimation(0, 0, 1.0f, 0.0f);
  EXPECT_EQ(0, button->DealMessage(Stylus(4, 20, 20)));
  EXPECT_EQ(nullptr, grid.mFocusControl);
}

TEST_F(ControlTest, PressInsideTheRenderRectangleTakesFocusAndIsReported) {
  YGUIImageButton* button = Add<YGUIImageButton>(1, 10, 10, 40, 40);
  EXPECT_EQ(1, button->DealMessage(Stylus(4, 50, 50)));  // the far corner counts
  EXPECT_EQ(1, button->mFocus);
  EXPECT_EQ(button, grid.mFocusControl);
  EXPECT_EQ(button, grid.mHandledControl);
  EXPECT_EQ(0, button->DealMessage(Stylus(4, 51, 50)));
}

TEST_F(ControlTest, PressGoesByTheRenderRectangleReleaseByThePlainFrame) {
  YGUIImageButton* button = Add<YGUIImageButton>(1, 10, 10, 40, 40);
  button->SetOffset(100, 0);  // seen at 110..150
  EXPECT_EQ(0, button->DealMessage(Stylus(4, 20, 20)));
  EXPECT_EQ(1, button->DealMessage(Stylus(4, 120, 20)));
  // Released where it is seen: outside the layout's frame.
  EXPECT_EQ(0, button->DealMessage(Stylus(5, 120, 20)));
  EXPECT_EQ(1, button->mFocus);
  EXPECT_EQ(1, button->DealMessage(Stylus(5, 20, 20)));
  EXPECT_EQ(0, button->mFocus);
}

TEST_F(ControlTest, ReleaseOutsideThePlainFrameReturnsZeroAndKeepsFocusUntilADragOutside) {
  YGUIImageButton* button = Add<YGUIImageButton>(1, 10, 10, 40, 40);
  ASSERT_EQ(1, button->DealMessage(Stylus(4, 20, 20)));
  EXPECT_EQ(0, button->DealMessage(Stylus(5, 100, 100)));
  EXPECT_EQ(1, button->mFocus);
  EXPECT_EQ(0, button->DealMessage(Stylus(7, 30, 30)));  // a drag inside keeps it
  EXPECT_EQ(1, button->mFocus);
  EXPECT_EQ(0, button->DealMessage(Stylus(7, 100, 100)));
  EXPECT_EQ(0, button->mFocus);
}

TEST_F(ControlTest, ReleaseOnADisabledControlAnswersWhetherItHadFocus) {
  YGUIImageButton* button = Add<YGUIImageButton>(1, 10, 10, 40, 40);
  button->Disable();
  EXPECT_EQ(0, button->DealMessage(Stylus(4, 20, 20)));  // a disabled control takes no press
  EXPECT_EQ(0, button->DealMessage(Stylus(5, 20, 20)));
  button->mFocus = 1;
  EXPECT_EQ(1, button->DealMessage(Stylus(5, 20, 20)));
  EXPECT_EQ(1, button->mFocus);  // not cleared
  EXPECT_EQ(button, grid.mHandledControl);
}

TEST_F(ControlTest, DirectionOnAControlThatIsNotTheGridsFocusDoesNothing) {
  YGUIImageButton* a = Add<YGUIImageButton>(1, 10, 10, 40, 40);
  YGUIImageButton* b = Add<YGUIImageButton>(2, 100, 10, 40, 40);
  a->mNavigate.mRight = 2;
  EXPECT_EQ(0, a->DealMessage(Button(YGUIMessage::eKey_Right)));
  EXPECT_EQ(nullptr, grid.mFocusControl);
  EXPECT_EQ(0, b->mFocus);
}

TEST_F(ControlTest, DirectionWhoseNeighbourIsMinusOneIsNotHandled) {
  YGUIImageButton* a = Add<YGUIImageButton>(1, 10, 10, 40, 40);
  grid.RequestFocus(a);
  EXPECT_EQ(0, a->DealMessage(Button(YGUIMessage::eKey_Left)));
  EXPECT_EQ(a, grid.mFocusControl);
  EXPECT_EQ(nullptr, grid.mHandledControl);
}

TEST_F(ControlTest, DirectionMovesFocusToTheNeighbourById) {
  YGUIImageButton* a = Add<YGUIImageButton>(1, 10, 10, 40, 40);
  YGUIImageButton* b = Add<YGUIImageButton>(2, 100, 10, 40, 40);
  a->mNavigate.mRight = 2;
  grid.RequestFocus(a);
  EXPECT_EQ(1, a->DealMessage(Button(YGUIMessage::eKey_Right)));
  EXPECT_EQ(b, grid.mFocusControl);
  EXPECT_EQ(0, a->mFocus);
  EXPECT_EQ(1, b->mFocus);
  EXPECT_EQ(a, grid.mHandledControl);
}

TEST_F(ControlTest, ConfirmIsHandledOnlyByAFocusedControlAndBackByNone) {
  YGUIImageButton* a = Add<YGUIImageButton>(1, 10, 10, 40, 40);
  EXPECT_EQ(0, a->DealMessage(Button(YGUIMessage::eKey_Confirm)));
  grid.RequestFocus(a);
  EXPECT_EQ(1, a->DealMessage(Button(YGUIMessage::eKey_Confirm)));
  EXPECT_EQ(0, a->DealMessage(Button(YGUIMessage::eKey_Back)));
  EXPECT_EQ(0, a->DealMessage(Button(6)));
  YGUIMessage foreign = Button(YGUIMessage::eKey_Confirm);
  foreign.mType = 1;
  EXPECT_EQ(0, a->DealMessage(foreign));
}

TEST_F(ControlTest, EnableOnAButtonThatWasNeverDisabledHasNoEffectAndStateChangedStays) {
  YGUIImageButton* button = Add<YGUIImageButton>(1, 10, 10, 40, 40);
  button->mStateChanged = 0;
  button->mRenderChanged = 0;
  button->Enable();
  EXPECT_EQ(0, button->mStateChanged);
  EXPECT_EQ(0, button->mRenderChanged);
  button->mStateChanged = 1;
  button->Enable();
  EXPECT_EQ(1, button->mStateChanged);
  button->Disable();
  EXPECT_EQ(0, button->mEnabled);
  EXPECT_EQ(1, button->mDisabled);
  button->mStateChanged = 0;
  button->Disable();  // already disabled
  EXPECT_EQ(0, button->mStateChanged);
  button->Enable();
  EXPECT_EQ(1, button->mEnabled);
  EXPECT_EQ(1, button->mStateChanged);
  EXPECT_EQ(1, button->mRenderChanged);
}

TEST_F(ControlTest, ButtonUpdateNotesWhetherFocusCameOrWent) {
  YGUIImageButton* button = Add<YGUIImageButton>(1, 10, 10, 40, 40);
  button->Update(0.01f);
  EXPECT_EQ(0, button->mStateChanged);
  button->MarkFocus(1);
  button->Update(0.01f);
  EXPECT_EQ(1, button->mStateChanged);
  button->Update(0.01f);
  EXPECT_EQ(0, button->mStateChanged);
  button->MarkFocus(0);
  button->Update(0.01f);
  EXPECT_EQ(1, button->mStateChanged);
}

TEST_F(ControlTest, MarkFocusOnlyWhileEnabled) {
  YGUIImage* image = Add<YGUIImage>(1, 0, 0, 10, 10);
  image->MarkFocus(1);
  EXPECT_EQ(0, image->mFocus);
  YGUIImageButton* button = Add<YGUIImageButton>(2, 0, 0, 10, 10);
  button->MarkFocus(1);
  EXPECT_EQ(1, button->mFocus);
}

TEST_F(ControlTest, ImageTakesNoInput) {
  YGUIImage* image = Add<YGUIImage>(1, 0, 0, 100, 100);
  EXPECT_EQ(0, image->DealMessage(Stylus(4, 10, 10)));
  EXPECT_EQ(0, image->mEnabled);
}

TEST_F(ControlTest, IsAnimeFinishedOfAFrameWithNoAnimationIsTrue) {
  YGUIImage* image = Add<YGUIImage>(1, 0, 0, 10, 10);
  EXPECT_TRUE(image->IsAnimeFinished());
  EXPECT_EQ(0, image->PlayAnime("in"));
  image->mAnimation = PoseAnimation(0, 0, 1.0f, 1.0f);
  image->mAnimeAble = 0;
  EXPECT_TRUE(image->IsAnimeFinished());
  EXPECT_EQ(0, image->PlayAnime("pose"));
  image->mAnimeAble = 1;
  EXPECT_EQ(1, image->PlayAnime("pose"));
  EXPECT_FALSE(image->IsAnimeFinished());
}

TEST_F(ControlTest, UpdateCopiesThePoseAndKeepsTheLastOneAfterTheEnd) {
  YGUIImageButton* button = Add<YGUIImageButton>(1, 10, 10, 40, 40);
  button->mAnimation = PoseAnimation(7, -3, 1.5f, 0.5f);
  button->Update(0.01f);
  EXPECT_EQ(7, button->mAnimeFrame.mX);
  EXPECT_EQ(-3, button->mAnimeFrame.mY);
  EXPECT_EQ(6144, button->mAnimeFrame.mScaleX);
  EXPECT_EQ(2048, button->mAnimeFrame.mOpacity);
  EXPECT_EQ(60, button->mRenderWidth);
  EXPECT_EQ(1, button->mRenderChanged);
  button->Update(0.01f);
  EXPECT_EQ(0, button->mRenderChanged);
  grid.mForceRedraw = 1;
  button->Update(0.01f);
  EXPECT_EQ(1, button->mRenderChanged);
}

TEST_F(ControlTest, SetOffsetAndResetOffset) {
  YGUIImage* image = Add<YGUIImage>(1, 10, 10, 20, 20);
  image->SetOffset(5, 6);
  EXPECT_EQ(15, image->GetRenderLeft());
  EXPECT_EQ(16, image->GetRenderTop());
  image->ResetOffset();
  EXPECT_EQ(10, image->GetRenderLeft());
  image->mRenderChanged = 7;
  image->ResetOffset();  // nothing when both are 0 already
  EXPECT_EQ(7, image->mRenderChanged);
}

TEST_F(ControlTest, ConstructorPutsTheDirtyRectAtTheGridOrigin) {
  grid.mX = 30;
  grid.mY = 40;
  YGUIControl control(grid);
  EXPECT_EQ(30, control.mDirtyRect.left);
  EXPECT_EQ(40, control.mDirtyRect.top);
  EXPECT_EQ(30, control.GetRenderLeft());
  EXPECT_EQ(40, control.GetRenderTop());
}

}  // namespace
