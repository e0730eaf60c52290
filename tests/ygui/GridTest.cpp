// Grids: the layout reader, focus, dispatch, the animation queue and what the
// observer hears.
#include <gtest/gtest.h>

#include <rapidxml.hpp>
#include <stdexcept>

#include "YGUI/YGUIAnimation.h"
#include "YGUI/YGUIAnimeSet.h"
#include "YGUI/YGUIGrid.h"
#include "YGUI/YGUIImage.h"
#include "YGUI/YGUIImageButton.h"
#include "YGUI/YGUILabel.h"
#include "YguiTestSupport.h"

namespace {

using ygtest::Button;
using ygtest::Report;
using ygtest::Stylus;

class GridTest : public testing::Test {
 protected:
  void TearDown() override { grid.Destroy(); }
  // Loads `xml` from a file of the temporary folder.
  void Load(const std::string& xml) {
    zvtest::WriteText(dir.file("layout.xml"), xml);
    grid.SetSize(480, 272);
    grid.LoadFromXml(dir.file("layout.xml"));
  }
  YGUIImageButton* ButtonAt(int index) { return dynamic_cast<YGUIImageButton*>(grid.GetControl(index)); }
  // A grid of three buttons in a row with navigation between them, with focus
  // animations named after them.
  void LoadRow() {
    Load(
        "<Grid>"
        "<ImageButton Id='1' Name='a' x='0' y='0' Width='40' Height='40' NavRight='2' FocusAnimation='fa' "
        "FocusOffAnimation='oa'/>"
        "<ImageButton Id='2' Name='b' x='50' y='0' Width='40' Height='40' NavLeft='1' NavRight='3' "
        "FocusAnimation='fb' FocusOffAnimation='ob'/>"
        "<ImageButton Id='3' Name='c' x='100' y='0' Width='40' Height='40' NavLeft='2' FocusAnimation='fc' "
        "FocusOffAnimation='oc'/>"
        "</Grid>");
  }

  zvtest::TempDir dir;
  ygtest::ScopedTextureManager textures;
  ygtest::RecordingObserver observer;
  YGUIGrid grid{&observer};
};

TEST_F(GridTest, TestLayoutReadsEveryElementAndAttribute) {
  ygtest::ScopedWorkDir work(ygtest::LayoutRoot());
  grid.SetSize(480, 272);
  grid.LoadFromXml("res/UI/Page/TestMenuH.xml");
  EXPECT_EQ(0, grid.mX);
  EXPECT_EQ(480, grid.mWidth);
  EXPECT_EQ(272, grid.mHeight);
  ASSERT_NE(nullptr, grid.mAnimation);
  EXPECT_TRUE(grid.mAnimation->IsAnimationExist("in"));
  // background, ok, back, third, title, logo: the TextButton and the unknown
  // element make nothing.
  ASSERT_EQ(6, grid.GetControlNum());

  YGUIImage* background = dynamic_cast<YGUIImage*>(grid.GetControl(0));
  ASSERT_NE(nullptr, background);
  EXPECT_EQ("background", background->mName);
  EXPECT_EQ(3, background->mRole);
  EXPECT_EQ(480, background->mWidth);
  EXPECT_EQ(48, background->mImage.mWidth);  // "bg.png" found as bg.tga
  EXPECT_EQ(nullptr, background->mAnimation);

  YGUIImageButton* ok = ButtonAt(1);
  ASSERT_NE(nullptr, ok);
  EXPECT_EQ(1, ok->mId);
  EXPECT_EQ(40, ok->mPositionX);
  EXPECT_EQ(100, ok->mPositionY);
  EXPECT_EQ(80, ok->mWidth);
  EXPECT_EQ(80, ok->mHeight);
  EXPECT_EQ(-1, ok->mNavigate.mUp);
  EXPECT_EQ(3, ok->mNavigate.mDown);
  EXPECT_EQ(-1, ok->mNavigate.mLeft);
  EXPECT_EQ(2, ok->mNavigate.mRight);
  EXPECT_EQ("focus", ok->mFocusAnimation);
  EXPECT_EQ("unfocus", ok->mFocusOffAnimation);
  ASSERT_NE(nullptr, ok->mAnimation);
  EXPECT_EQ(5, ok->mAnimation->mAnimeSetIndex);
  for (const char* name : {"in", "loop", "focus", "unfocus", "out"}) EXPECT_TRUE(ok->mAnimation->IsAnimationExist(name));
  YGUIAnimeSet* in = ok->mAnimation->mAnimeSetBuffer[0];
  EXPECT_EQ(-40, in->mKeyFrameBuffer[0]->mX);
  EXPECT_EQ(0, in->mKeyFrameBuffer[0]->mOpacity);
  EXPECT_EQ(2048, in->mKeyFrameBuffer[1]->mTime);
  EXPECT_EQ(80, in->mKeyFrameBuffer[1]->mWidth);  // the element's size in every key
  EXPECT_EQ(80, in->mKeyFrameBuffer[1]->mHeight);
  YGUIAnimeSet* focus = ok->mAnimation->mAnimeSetBuffer[2];
  EXPECT_EQ(4915, focus->mKeyFrameBuffer[1]->mScaleX);
  EXPECT_EQ(410, focus->mKeyFrameBuffer[1]->mTime);
  EXPECT_EQ(1024, grid.mAnimation->mAnimeSetBuffer[0]->mKeyFrameBuffer[1]->mAngle);

  YGUIImageButton* back = ButtonAt(2);
  ASSERT_NE(nullptr, back);
  EXPECT_EQ("back", back->mName);
  EXPECT_NE(nullptr, back->mImages[0].mData);
  EXPECT_NE(nullptr, back->mImages[1].mData);
  EXPECT_EQ(nullptr, back->mImages[2].mData);  // no FocusBackground

  YGUILabel* title = dynamic_cast<YGUILabel*>(grid.GetControl(4));
  ASSERT_NE(nullptr, title);
  EXPECT_EQ("Test menu", title->mContent);
  EXPECT_EQ(4, title->mId);

  YGUIImage* logo = dynamic_cast<YGUIImage*>(grid.GetControl(5));
  ASSERT_NE(nullptr, logo);
  EXPECT_EQ(50, logo->mImage.mWidth);  // put together from its tiles
  EXPECT_EQ(20, logo->mImage.mHeight);
  EXPECT_EQ(nullptr, grid.GetControl(6));
}

TEST_F(GridTest, SelectedBackgroundIsTheFocusImageAndFocusBackgroundTheDisabledOne) {
  ygtest::ScopedWorkDir work(ygtest::LayoutRoot());
  grid.LoadFromXml("res/UI/Page/TestMenuH.xml");
  YGUIImageButton* ok = ButtonAt(1);
  ASSERT_NE(nullptr, ok);
  // Normal: btn_normal.udi (green); Selected: btn_focus.tga (yellow); Focus:
  // btn_disabled.bmp (grey).
  ASSERT_NE(nullptr, ok->mImages[0].mData);
  EXPECT_EQ((zvtest::Bytes{0, 160, 0, 255}), zvtest::Bytes(ok->mImages[0].mData, ok->mImages[0].mData + 4));
  ASSERT_NE(nullptr, ok->mImages[1].mData);
  EXPECT_EQ((zvtest::Bytes{255, 255, 0, 255}), zvtest::Bytes(ok->mImages[1].mData, ok->mImages[1].mData + 4));
  ASSERT_NE(nullptr, ok->mImages[2].mData);
  EXPECT_EQ((zvtest::Bytes{128, 128, 128, 255}), zvtest::Bytes(ok->mImages[2].mData, ok->mImages[2].mData + 4));
}

TEST_F(GridTest, EmptyImageElementGivesAControlAtOriginOfSizeZeroIdMinusOneAndNoImage) {
  Load("<Grid><Image/></Grid>");
  ASSERT_EQ(1, grid.GetControlNum());
  YGUIImage* image = dynamic_cast<YGUIImage*>(grid.GetControl(0));
  ASSERT_NE(nullptr, image);
  EXPECT_EQ(0, image->mPositionX);
  EXPECT_EQ(0, image->mPositionY);
  EXPECT_EQ(0, image->mWidth);
  EXPECT_EQ(0, image->mHeight);
  EXPECT_EQ(-1, image->mId);
  EXPECT_EQ(-1, image->mNavigate.mDown);
  EXPECT_EQ("", image->mName);
  EXPECT_EQ(0, image->mRole);
  EXPECT_EQ(nullptr, image->mImage.mData);
  EXPECT_EQ(nullptr, image->mAnimation);
}

TEST_F(GridTest, RootWithoutSizeEndsWithZeroSize) {
  Load("<Grid x='5' y='7'/>");
  EXPECT_EQ(5, grid.mX);
  EXPECT_EQ(7, grid.mY);
  EXPECT_EQ(0, grid.mWidth);
  EXPECT_EQ(0, grid.mHeight);
  EXPECT_EQ(nullptr, grid.mAnimation);
}

TEST_F(GridTest, ElementWithChildrenButAnimSetNumZeroHasNoAnimation) {
  Load(
      "<Grid><Image AnimSetNum='0'><AnimationSet KeyFrameNum='1' Name='in'><KeyFrame/></AnimationSet></Image>"
      "<Image><AnimationSet KeyFrameNum='1' Name='in'><KeyFrame/></AnimationSet></Image>"
      "<Image AnimSetNum='2'/></Grid>");
  ASSERT_EQ(3, grid.GetControlNum());
  EXPECT_EQ(nullptr, grid.GetControl(0)->mAnimation);
  EXPECT_EQ(nullptr, grid.GetControl(1)->mAnimation);
  EXPECT_EQ(nullptr, grid.GetControl(2)->mAnimation);  // no children
}

TEST_F(GridTest, AnimationWithoutSetsStillExists) {
  Load("<Grid><Image AnimSetNum='2'><Other/></Image></Grid>");
  ASSERT_NE(nullptr, grid.GetControl(0)->mAnimation);
  EXPECT_EQ(0, grid.GetControl(0)->mAnimation->mAnimeSetIndex);
}

TEST_F(GridTest, TextButtonCreatesNothingAndTheFramesBehindItAreStillCreated) {
  Load("<Grid><Image Name='one'/><TextButton Name='t'/><Unknown/><Label Name='two'/></Grid>");
  ASSERT_EQ(2, grid.GetControlNum());
  EXPECT_EQ(nullptr, grid.GetControlByName("t"));
  EXPECT_NE(nullptr, grid.GetControlByName("two"));
  EXPECT_EQ(grid.GetControl(1), grid.GetControlByName("two"));
}

TEST_F(GridTest, ScaleXOfMinusOneGivesMinus4096AndZeroGivesZero) {
  Load(
      "<Grid><Image AnimSetNum='1'><AnimationSet KeyFrameNum='3' Name='s'>"
      "<KeyFrame ScaleX='-1' ScaleY='0'/><KeyFrame ScaleX='-0.0002' Opacity='0.5'/><KeyFrame/>"
      "</AnimationSet></Image></Grid>");
  YGUIAnimeSet* set = grid.GetControl(0)->mAnimation->mAnimeSetBuffer[0];
  EXPECT_EQ(-4096, set->mKeyFrameBuffer[0]->mScaleX);
  EXPECT_EQ(0, set->mKeyFrameBuffer[0]->mScaleY);
  EXPECT_EQ(-1, set->mKeyFrameBuffer[1]->mScaleX);  // -0.82 - 0.5
  EXPECT_EQ(2048, set->mKeyFrameBuffer[1]->mOpacity);
  // Absent: scale and opacity 1, time and angle 0.
  EXPECT_EQ(4096, set->mKeyFrameBuffer[2]->mScaleX);
  EXPECT_EQ(4096, set->mKeyFrameBuffer[2]->mScaleY);
  EXPECT_EQ(4096, set->mKeyFrameBuffer[2]->mOpacity);
  EXPECT_EQ(0, set->mKeyFrameBuffer[2]->mTime);
  EXPECT_EQ(0, set->mKeyFrameBuffer[2]->mAngle);
}

TEST_F(GridTest, ExtraSetsAndKeysAreSilentlyNotStored) {
  Load(
      "<Grid><Image AnimSetNum='1'>"
      "<AnimationSet KeyFrameNum='1' Name='a'><KeyFrame x='1'/><KeyFrame x='2'/></AnimationSet>"
      "<AnimationSet KeyFrameNum='1' Name='b'><KeyFrame/></AnimationSet>"
      "</Image></Grid>");
  YGUIAnimation* animation = grid.GetControl(0)->mAnimation;
  EXPECT_EQ(1, animation->mAnimeSetIndex);
  EXPECT_TRUE(animation->IsAnimationExist("a"));
  EXPECT_FALSE(animation->IsAnimationExist("b"));
  EXPECT_EQ(1, animation->mAnimeSetBuffer[0]->mKeyFrameIndex);
  EXPECT_EQ(1, animation->mAnimeSetBuffer[0]->mKeyFrameBuffer[0]->mX);
}

TEST_F(GridTest, AttributeNamesAreCaseSensitiveAndRoleEmptyLeavesItAlone) {
  Load("<Grid><Image id='3' X='4' Role=''/><Image Role='7'/></Grid>");
  YGUIImage* image = dynamic_cast<YGUIImage*>(grid.GetControl(0));
  EXPECT_EQ(-1, image->mId);
  EXPECT_EQ(0, image->mPositionX);
  EXPECT_EQ(0, image->mRole);
  EXPECT_EQ(7, dynamic_cast<YGUIImage*>(grid.GetControl(1))->mRole);
}

TEST_F(GridTest, MissingLayoutThrowsCannotOpenFile) {
  try {
    grid.LoadFromXml(dir.file("missing.xml"));
    FAIL() << "no exception";
  } catch (const std::runtime_error& error) {
    EXPECT_EQ("cannot open file " + dir.file("missing.xml"), std::string(error.what()));
  }
}

TEST_F(GridTest, SyntaxErrorLeavesThroughTheParsersException) {
  EXPECT_THROW(Load("<Grid><Image></Grid>"), rapidxml::parse_error);
  EXPECT_EQ(0, grid.GetControlNum());
}

TEST_F(GridTest, KeyFrameNumAbsentEndsInTheAssertion) {
  zvtest::WriteText(dir.file("bad.xml"), "<Grid><Image AnimSetNum='1'><AnimationSet Name='a'/></Image></Grid>");
  const std::string path = dir.file("bad.xml");
  EXPECT_DEATH(
      {
        YGUIGrid bad(nullptr);
        bad.LoadFromXml(path);
      },
      "Src/YGUI/YGUIGrid.cpp:[0-9]+: .*CreateAnimationFromXml.*Assertion `NumKeyFrame != 0' failed");
}

TEST_F(GridTest, GetControlBelowOneGivesTheFirstAndPastTheEndNull) {
  YGUIGrid empty(nullptr);
  EXPECT_EQ(nullptr, empty.GetControl(0));
  LoadRow();
  EXPECT_EQ(grid.mFrames[0], grid.GetControl(0));
  EXPECT_EQ(grid.mFrames[0], grid.GetControl(-3));
  EXPECT_EQ(grid.mFrames[1], grid.GetControl(1));
  EXPECT_EQ(grid.mFrames[2], grid.GetControl(2));
  EXPECT_EQ(nullptr, grid.GetControl(3));
}

TEST_F(GridTest, RequestFocusOnADisabledControlKeepsTheOldFocus) {
  LoadRow();
  grid.RequestFocus(ButtonAt(0));
  ButtonAt(1)->Disable();
  grid.RequestFocus(ButtonAt(1));
  EXPECT_EQ(ButtonAt(0), grid.mFocusControl);
  EXPECT_EQ(1, ButtonAt(0)->mFocus);
  grid.FocusOnControlById(2);  // a disabled control isn't found by id either
  EXPECT_EQ(ButtonAt(0), grid.mFocusControl);
}

TEST_F(GridTest, RequestFocusNotifiesLostThenGainedAndQueuesTheFocusAnimations) {
  LoadRow();
  grid.RequestFocus(ButtonAt(0));
  grid.RequestFocus(ButtonAt(2));
  grid.RequestFocus(ButtonAt(2));  // already: nothing
  ASSERT_EQ(3u, observer.reports.size());
  EXPECT_EQ(eNotify_FocusGained, observer.reports[0].type);
  EXPECT_EQ(ButtonAt(0), observer.reports[0].control);
  EXPECT_EQ(eNotify_FocusLost, observer.reports[1].type);
  EXPECT_EQ(ButtonAt(0), observer.reports[1].control);
  EXPECT_EQ(eNotify_FocusGained, observer.reports[2].type);
  EXPECT_EQ(ButtonAt(2), observer.reports[2].control);
  EXPECT_EQ((std::list<std::string>{"fa", "oa", "fc"}), grid.mDelayAnime);
  EXPECT_EQ(0, ButtonAt(0)->mFocus);
  grid.RequestFocus(nullptr);
  EXPECT_EQ(nullptr, grid.mFocusControl);
  EXPECT_EQ(0, ButtonAt(2)->mFocus);
}

TEST_F(GridTest, WithFocusAnimationsDisabledAChangeOfFocusQueuesNothing) {
  LoadRow();
  grid.DisableFuntion(eFunction_FocusAnime);
  grid.RequestFocus(ButtonAt(0));
  grid.RequestFocus(ButtonAt(1));
  EXPECT_TRUE(grid.mDelayAnime.empty());
  EXPECT_EQ(3u, observer.reports.size());  // the notices still come
  grid.EnableFuntion(eFunction_FocusAnime);
  grid.RequestFocus(ButtonAt(2));
  EXPECT_EQ((std::list<std::string>{"ob", "fc"}), grid.mDelayAnime);
}

TEST_F(GridTest, DirectionButtonsMoveFocusWithTheObserversNotificationsInOrder) {
  LoadRow();
  grid.FocusOnControlById(-1);  // the default id 0: no such control
  EXPECT_EQ(nullptr, grid.mFocusControl);
  EXPECT_EQ(1, grid.DealMessage(Button(YGUIMessage::eKey_Right)));  // nobody has focus: nothing
  EXPECT_EQ(nullptr, grid.mHandledControl);
  grid.FocusOnControlById(1);
  observer.reports.clear();
  grid.PreUpdate(0);
  grid.DealMessage(Button(YGUIMessage::eKey_Right));
  EXPECT_EQ(ButtonAt(1), grid.mFocusControl);
  EXPECT_EQ(ButtonAt(0), grid.mHandledControl);
  grid.PreUpdate(0);
  grid.DealMessage(Button(YGUIMessage::eKey_Right));
  EXPECT_EQ(ButtonAt(2), grid.mFocusControl);
  grid.DealMessage(Button(YGUIMessage::eKey_Right));  // c has no right neighbour
  EXPECT_EQ(ButtonAt(2), grid.mFocusControl);
  grid.DealMessage(Button(YGUIMessage::eKey_Left));
  EXPECT_EQ(ButtonAt(1), grid.mFocusControl);

  const std::vector<std::pair<ENotifyEventType, const void*>> expected = {
      {eNotify_FocusLost, ButtonAt(0)},   {eNotify_FocusGained, ButtonAt(1)}, {eNotify_FocusLost, ButtonAt(1)},
      {eNotify_FocusGained, ButtonAt(2)}, {eNotify_FocusLost, ButtonAt(2)},   {eNotify_FocusGained, ButtonAt(1)}};
  ASSERT_EQ(expected.size(), observer.reports.size());
  for (size_t i = 0; i < expected.size(); ++i) {
    EXPECT_EQ(expected[i].first, observer.reports[i].type) << i;
    EXPECT_EQ(expected[i].second, observer.reports[i].control) << i;
  }
  EXPECT_EQ((std::list<std::string>{"fa", "oa", "fb", "ob", "fc", "oc", "fb"}), grid.mDelayAnime);
}

TEST_F(GridTest, DispatchOffersInFileOrderAndTheFirstTakerWins) {
  Load(
      "<Grid><ImageButton Id='1' x='0' y='0' Width='100' Height='100'/>"
      "<ImageButton Id='2' x='0' y='0' Width='100' Height='100'/></Grid>");
  EXPECT_EQ(1, grid.DealMessage(Stylus(4, 10, 10)));
  EXPECT_EQ(ButtonAt(0), grid.mHandledControl);
  EXPECT_EQ(ButtonAt(0), grid.mFocusControl);
  EXPECT_EQ(0, ButtonAt(1)->mFocus);
}

TEST_F(GridTest, MissWithLoseFocusOnMissTakesTheFocusAway) {
  LoadRow();
  grid.RequestFocus(ButtonAt(0));
  EXPECT_EQ(1, grid.DealMessage(Stylus(4, 400, 200)));
  EXPECT_EQ(ButtonAt(0), grid.mFocusControl);
  grid.EnableFuntion(eFunction_LoseFocusOnMiss);
  EXPECT_EQ(1, grid.DealMessage(Stylus(4, 400, 200)));
  EXPECT_EQ(nullptr, grid.mFocusControl);
  grid.RequestFocus(ButtonAt(1));
  EXPECT_EQ(1, grid.DefaultDealMessage(Stylus(4, 0, 0)));
  EXPECT_EQ(nullptr, grid.mFocusControl);
  grid.DisableFuntion(eFunction_LoseFocusOnMiss);
  EXPECT_EQ(0, grid.mLoseFocusOnMiss);
}

TEST_F(GridTest, WithNoFramesPlayAnimeDoesNotNotify) {
  Load("<Grid AnimSetNum='1'><AnimationSet KeyFrameNum='1' Name='in'><KeyFrame Time='1'/></AnimationSet></Grid>");
  grid.PlayAnime("in");
  EXPECT_TRUE(observer.reports.empty());
  EXPECT_FALSE(grid.mAnimation->IsAnimeFinished());  // the grid's own still plays
  EXPECT_EQ("", grid.mCurrentAnime);
}

TEST_F(GridTest, PlayAnimeNotifiesOncePerFrameWithTheName) {
  LoadRow();
  grid.PlayAnime("fa");
  ASSERT_EQ(3u, observer.reports.size());
  for (const Report& report : observer.reports) {
    EXPECT_EQ(eNotify_Message, report.type);
    EXPECT_FALSE(report.isMessage);
    EXPECT_EQ("fa", report.name);
  }
  EXPECT_EQ("fa", grid.mCurrentAnime);
}

TEST_F(GridTest, QueuedAnimationsStartOneAtATimeWhenAllOthersHaveFinished) {
  Load(
      "<Grid><Image Name='i' AnimSetNum='2'>"
      "<AnimationSet KeyFrameNum='1' Name='one'><KeyFrame Time='0.1' x='1'/></AnimationSet>"
      "<AnimationSet KeyFrameNum='1' Name='two'><KeyFrame Time='0.1' x='2'/></AnimationSet>"
      "</Image></Grid>");
  grid.PlayAnime("one");
  grid.PlayDelayAnime("two");
  grid.PlayDelayAnime("one");
  observer.reports.clear();
  grid.Update(0.05f);  // "one" is running: nothing starts
  EXPECT_TRUE(observer.reports.empty());
  EXPECT_EQ(2u, grid.mDelayAnime.size());
  grid.Update(0.05f);  // "one" ends inside this update
  EXPECT_TRUE(observer.reports.empty());
  grid.Update(0.05f);  // all finished: reported, then "two" starts
  ASSERT_EQ(2u, observer.reports.size());
  EXPECT_EQ(eNotify_AnimeFinished, observer.reports[0].type);
  EXPECT_EQ("one", observer.reports[0].name);
  EXPECT_EQ(eNotify_Message, observer.reports[1].type);
  EXPECT_EQ("two", observer.reports[1].name);
  EXPECT_EQ("two", grid.mCurrentAnime);
  EXPECT_EQ(1u, grid.mDelayAnime.size());
  EXPECT_EQ(2, dynamic_cast<YGUIControl*>(grid.GetControl(0))->mAnimeFrame.mX);
}

TEST_F(GridTest, AllFinishedIsReportedOnEveryUpdateWithAnEmptyNameWhenNothingEnded) {
  LoadRow();
  grid.Update(0.01f);
  grid.Update(0.01f);
  ASSERT_EQ(2u, observer.reports.size());
  EXPECT_EQ(eNotify_AnimeFinished, observer.reports[1].type);
  EXPECT_EQ("", observer.reports[1].name);
  EXPECT_TRUE(grid.UpdateAnimation());
}

TEST_F(GridTest, UpdateClearsTheHandledControlAndTakesTheGridAnimationsScale) {
  Load(
      "<Grid Width='480' Height='272' AnimSetNum='1'><AnimationSet KeyFrameNum='2' Name='zoom'>"
      "<KeyFrame Time='0' ScaleX='1'/><KeyFrame Time='1' ScaleX='2' ScaleY='0.5'/></AnimationSet>"
      "<ImageButton Id='1' x='0' y='0' Width='40' Height='40'/></Grid>");
  grid.NotifyMsgIsHandled(*ButtonAt(0));
  grid.PlayAnime("zoom");
  grid.Update(0.5f);
  EXPECT_EQ(nullptr, grid.mHandledControl);
  EXPECT_EQ(6144, grid.mScaleX);
  EXPECT_EQ(3072, grid.mScaleY);
  EXPECT_EQ(60, ButtonAt(0)->mRenderWidth);
  EXPECT_FALSE(grid.IsAnimeFinished());
}

TEST_F(GridTest, NotifyMsgIsHandledKeepsTheFirst) {
  LoadRow();
  grid.NotifyMsgIsHandled(*ButtonAt(1));
  grid.NotifyMsgIsHandled(*ButtonAt(2));
  EXPECT_EQ(ButtonAt(1), grid.mHandledControl);
  grid.PreUpdate(0.0f);
  EXPECT_EQ(nullptr, grid.mHandledControl);
}

TEST_F(GridTest, AnimationExistenceAbleFlagsAndStopping) {
  Load(
      "<Grid AnimSetNum='1'><AnimationSet KeyFrameNum='1' Name='g'><KeyFrame Time='1'/></AnimationSet>"
      "<Image AnimSetNum='1'><AnimationSet KeyFrameNum='1' Name='i'><KeyFrame Time='1'/></AnimationSet></Image>"
      "</Grid>");
  EXPECT_TRUE(grid.IsAnimationExist("g"));
  EXPECT_TRUE(grid.IsAnimationExist("i"));
  EXPECT_FALSE(grid.IsAnimationExist("x"));
  grid.SetAnimeAble(0);
  grid.PlayAnime("i");
  EXPECT_TRUE(grid.IsAnimeFinished());  // the frame wasn't allowed to play
  grid.SetAnimeAble(1);
  grid.PlayAnime("i");
  EXPECT_FALSE(grid.IsAnimeFinished());
  grid.StopCurAnimation();
  EXPECT_TRUE(grid.IsAnimeFinished());
  grid.PlayAnime("g");
  grid.StopCurAnimation();  // the grid's own isn't stopped
  EXPECT_FALSE(grid.IsAnimeFinished());
}

TEST_F(GridTest, AfterScalePointMirrorsThroughThePivot) {
  grid.SetSize(100, 50);
  grid.SetPosition(10, 20);
  const Math3D::vec2 p = {20.0f, 30.0f};
  Math3D::vec2 q = grid.GetAfterScalePoint(p);
  // Pivot (60, 45); scale 1: 60 + 40 and 45 + 15.
  EXPECT_EQ(100.0f, q.x);
  EXPECT_EQ(60.0f, q.y);
  int two = 8192, quarter = 1024;
  grid.SetOriginal(quarter, quarter);
  grid.SetScale(two, two);
  q = grid.GetAfterScalePoint(p);
  // Pivot (35, 33): 35 + 30 and 33 + 6.
  EXPECT_EQ(65.0f, q.x);
  EXPECT_EQ(39.0f, q.y);
  EXPECT_EQ(8192, *grid.GetScaleX());
  EXPECT_EQ(8192, *grid.GetScaleY());
}

TEST_F(GridTest, SetStoresTheTransformAndRecomputesEveryRectangle) {
  LoadRow();
  int scale = 4096, half = 2048;
  grid.Set(30, 40, scale, scale, half, half);
  EXPECT_EQ(30, ButtonAt(0)->GetRenderLeft());
  EXPECT_EQ(40, ButtonAt(0)->GetRenderTop());
  EXPECT_EQ(130, ButtonAt(2)->GetRenderLeft());
  EXPECT_EQ(1, grid.IsButtonUsable());
  EXPECT_EQ(1, grid.IsStylusUsable());
}

}  // namespace
