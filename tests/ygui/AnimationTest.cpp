// Key-frame sets and the animation that plays them.
#include <gtest/gtest.h>

#include "YGUI/YGUIAnimation.h"
#include "YGUI/YGUIAnimeFrame.h"
#include "YGUI/YGUIAnimeSet.h"
#include "YGUI/YGUITypes.h"
#include "support/TestSupport.h"

namespace {

YGUIAnimeFrame* Key(float time, int x = 0, float opacity = 1.0f) {
  YGUIAnimeFrame* frame = new YGUIAnimeFrame();
  frame->mTime = YGUIToFixed(time);
  frame->mX = x;
  frame->mOpacity = YGUIToFixed(opacity);
  frame->mWidth = 30;
  frame->mHeight = 40;
  return frame;
}

class AnimeSetTest : public testing::Test {
 protected:
  void TearDown() override {
    if (set) {
      set->Destroy();
      delete set;
    }
  }
  YGUIAnimeSet* Make(int capacity) {
    set = new YGUIAnimeSet(capacity);
    set->Initialize();
    return set;
  }
  YGUIAnimeSet* set = nullptr;
};

TEST(FixedPointTest, FloatsBecomeTwentyTwelveRoundedAwayFromZero) {
  EXPECT_EQ(4096, YGUIToFixed(1.0f));
  EXPECT_EQ(2048, YGUIToFixed(0.5f));
  EXPECT_EQ(-4096, YGUIToFixed(-1.0f));
  EXPECT_EQ(0, YGUIToFixed(0.0f));  // -0.5 cut to 0
  EXPECT_EQ(136, YGUIToFixed(0.0333f));  // 136.396...
  EXPECT_EQ(1, YGUIToFixed(0.0002f));   // 0.82 + 0.5
  EXPECT_EQ(-1, YGUIToFixed(-0.0002f));
  EXPECT_EQ(4915, YGUIToFixed(1.2f));   // 4915.2
}

TEST_F(AnimeSetTest, SingleKeyAtOneSecondHoldsItsPoseUntilTheSetEndsOnIt) {
  Make(1);
  ASSERT_EQ(1, set->AddKeyFrame(Key(1.0f, 70, 0.5f)));
  set->PlayAnime();
  EXPECT_EQ(4096, set->mTotalTime);
  set->Update(0.25f);
  EXPECT_FALSE(set->IsAnimeFinished());
  EXPECT_EQ(70, set->mCurrentFrame.mX);
  EXPECT_EQ(2048, set->mCurrentFrame.mOpacity);
  set->Update(0.5f);
  EXPECT_EQ(70, set->mCurrentFrame.mX);
  set->Update(0.25f);  // exactly 1.0
  EXPECT_TRUE(set->IsAnimeFinished());
  EXPECT_EQ(70, set->mCurrentFrame.mX);
  EXPECT_EQ(4096, set->mCurrentFrame.mTime);
}

TEST_F(AnimeSetTest, KeysAtZeroAndOneWithXZeroAndHundredGiveFiftyAtHalfTime) {
  Make(2);
  set->AddKeyFrame(Key(0.0f, 0));
  set->AddKeyFrame(Key(1.0f, 100));
  set->PlayAnime();
  set->Update(0.5f);
  EXPECT_EQ(50, set->mCurrentFrame.mX);
}

TEST_F(AnimeSetTest, InterpolatesAtAndBetweenKeysInFixedPoint) {
  Make(3);
  set->AddKeyFrame(Key(0.0f, 0, 0.0f));
  set->AddKeyFrame(Key(0.5f, 10, 1.0f));
  set->AddKeyFrame(Key(1.5f, -10, 0.5f));
  set->PlayAnime();
  set->Update(0.0f);
  // At the first key: t 0 of the first segment.
  EXPECT_EQ(0, set->mCurrentFrame.mX);
  EXPECT_EQ(0, set->mCurrentFrame.mOpacity);
  set->Update(0.25f);  // 1024 of 2048: t = 2048
  EXPECT_EQ(5, set->mCurrentFrame.mX);
  EXPECT_EQ(2048, set->mCurrentFrame.mOpacity);
  set->Update(0.25f);  // at the second key: the second segment with t 0
  EXPECT_EQ(10, set->mCurrentFrame.mX);
  EXPECT_EQ(4096, set->mCurrentFrame.mOpacity);
  set->Update(0.1f);  // 410 of 4096 into the segment: t = 410
  // 10 + ((-20 * 410 + 2048) >> 12) = 10 + (-6152 >> 12) = 10 - 2
  EXPECT_EQ(8, set->mCurrentFrame.mX);
  // 4096 + ((-2048 * 410 + 2048) >> 12) = 4096 - 205
  EXPECT_EQ(3891, set->mCurrentFrame.mOpacity);
}

TEST_F(AnimeSetTest, BeforeTheFirstKeyThePoseIsTheFirstKeys) {
  Make(2);
  set->AddKeyFrame(Key(0.5f, 20));
  set->AddKeyFrame(Key(1.0f, 40));
  set->PlayAnime();
  set->Update(0.1f);
  EXPECT_EQ(20, set->mCurrentFrame.mX);
}

TEST_F(AnimeSetTest, KeysWithEqualTimesArePassedOver) {
  Make(3);
  set->AddKeyFrame(Key(0.0f, 0));
  set->AddKeyFrame(Key(0.0f, 100));
  set->AddKeyFrame(Key(1.0f, 200));
  set->PlayAnime();
  set->Update(0.5f);
  EXPECT_EQ(150, set->mCurrentFrame.mX);
}

TEST_F(AnimeSetTest, StopHalfWaySetsTheLastKeysPose) {
  Make(2);
  set->AddKeyFrame(Key(0.0f, 0));
  set->AddKeyFrame(Key(1.0f, 100, 0.25f));
  set->PlayAnime();
  set->Update(0.5f);
  ASSERT_EQ(50, set->mCurrentFrame.mX);
  set->StopAnime();
  EXPECT_TRUE(set->IsAnimeFinished());
  EXPECT_EQ(100, set->mCurrentFrame.mX);
  EXPECT_EQ(1024, set->mCurrentFrame.mOpacity);
  EXPECT_EQ(0, set->mCurrentTime);
}

TEST_F(AnimeSetTest, TotalTimeNeverShrinksAndGrowsAtTheNextPlayAfterALongerKey) {
  Make(3);
  set->AddKeyFrame(Key(1.0f));
  set->PlayAnime();
  EXPECT_EQ(4096, set->mTotalTime);
  set->AddKeyFrame(Key(2.0f));
  EXPECT_EQ(4096, set->mTotalTime);  // not before the next start
  set->StopAnime();
  set->PlayAnime();
  EXPECT_EQ(8192, set->mTotalTime);
  set->mTotalTime = 12288;  // longer than any key: stays
  set->StopAnime();
  set->PlayAnime();
  EXPECT_EQ(12288, set->mTotalTime);
}

TEST_F(AnimeSetTest, ZeroDtMovesNoTimeAndDoesNotEndTheSet) {
  Make(2);
  set->AddKeyFrame(Key(0.0f));
  set->AddKeyFrame(Key(1.0f));
  set->PlayAnime();
  for (int i = 0; i < 5; ++i) set->Update(0.0f);
  EXPECT_EQ(0, set->mCurrentTime);
  EXPECT_FALSE(set->IsAnimeFinished());
}

TEST_F(AnimeSetTest, SetOfTotalTimeZeroEndsAtItsFirstUpdate) {
  Make(1);
  set->AddKeyFrame(Key(0.0f, 9));
  set->PlayAnime();
  EXPECT_EQ(0, set->mTotalTime);
  set->Update(0.0f);
  EXPECT_TRUE(set->IsAnimeFinished());
  EXPECT_EQ(9, set->mCurrentFrame.mX);
}

TEST_F(AnimeSetTest, WidthAndHeightOfThePoseStayZeroUntilTheLastKeyIsCopied) {
  Make(2);
  set->AddKeyFrame(Key(0.0f));
  set->AddKeyFrame(Key(1.0f));
  set->PlayAnime();
  set->Update(0.5f);
  EXPECT_EQ(0, set->mCurrentFrame.mWidth);
  EXPECT_EQ(0, set->mCurrentFrame.mHeight);
  set->Update(0.5f);
  EXPECT_TRUE(set->IsAnimeFinished());
  EXPECT_EQ(30, set->mCurrentFrame.mWidth);
  EXPECT_EQ(40, set->mCurrentFrame.mHeight);
}

TEST_F(AnimeSetTest, AddKeyFrameIsRefusedWhenFull) {
  Make(1);
  EXPECT_EQ(1, set->AddKeyFrame(Key(0.0f)));
  YGUIAnimeFrame* extra = Key(1.0f);
  EXPECT_EQ(0, set->AddKeyFrame(extra));
  delete extra;
  EXPECT_EQ(1, set->mKeyFrameIndex);
}

TEST(AnimeSetAssertTest, InitializeWithNoRoomForKeysEndsInTheAssertion) {
  zvtest::ChildResult result = zvtest::RunInChild([] {
    YGUIAnimeSet set(0);
    set.Initialize();
  });
  EXPECT_TRUE(result.died());
  EXPECT_EQ("Assertion failed: mNumKeyFrame != 0\n", result.out);
}

TEST(AnimeSetAssertTest, SweepingAnIdleSetEndsInTheAssertion) {
  zvtest::ChildResult result = zvtest::RunInChild([] {
    YGUIAnimeSet set(1);
    set.Initialize();
    set.CapculateSweepFrame(0.1f);
  });
  EXPECT_TRUE(result.died());
  EXPECT_EQ("Assertion failed: mCurrentAnimeSetState == EAS_DoingAnime\n", result.out);
}

class AnimationTest : public testing::Test {
 protected:
  void SetUp() override {
    animation = new YGUIAnimation(2);
    animation->Initialize();
    YGUIAnimeSet* in = new YGUIAnimeSet(2);
    in->Initialize();
    in->mName = "in";
    in->AddKeyFrame(Key(0.0f, 0));
    in->AddKeyFrame(Key(1.0f, 100));
    animation->AddAnimeSet(in);
    YGUIAnimeSet* out = new YGUIAnimeSet(1);
    out->Initialize();
    out->mName = "out";
    out->AddKeyFrame(Key(0.5f, -5));
    animation->AddAnimeSet(out);
  }
  void TearDown() override {
    animation->Destroy();
    delete animation;
  }
  YGUIAnimation* animation = nullptr;
};

TEST_F(AnimationTest, PlayDuringARunningAnimationReturnsZeroAndLeavesItRunning) {
  EXPECT_EQ(1, animation->PlayAnime("in"));
  animation->Update(0.5f);
  EXPECT_EQ(0, animation->PlayAnime("out"));
  EXPECT_EQ(0, animation->mCurrentAnimeIndex);
  EXPECT_FALSE(animation->IsAnimeFinished());
  animation->Update(0.25f);
  EXPECT_EQ(75, animation->GetCurrentFrame()->mX);
}

TEST_F(AnimationTest, UnknownNameIsNoErrorAndReturnsZero) {
  EXPECT_EQ(0, animation->PlayAnime("loop"));
  EXPECT_TRUE(animation->IsAnimeFinished());
  EXPECT_TRUE(animation->IsAnimationExist("out"));
  EXPECT_FALSE(animation->IsAnimationExist("Out"));
}

TEST_F(AnimationTest, FinishedSetStaysCurrentWithItsLastPose) {
  animation->PlayAnime("out");
  animation->Update(0.6f);
  EXPECT_TRUE(animation->IsAnimeFinished());
  EXPECT_EQ(1, animation->mCurrentAnimeIndex);
  EXPECT_EQ(-5, animation->GetCurrentFrame()->mX);
  // And can be played again.
  EXPECT_EQ(1, animation->PlayAnime("in"));
}

TEST_F(AnimationTest, StopHalfWayRestsOnTheLastKey) {
  animation->PlayAnime("in");
  animation->Update(0.3f);
  animation->StopAnime();
  EXPECT_TRUE(animation->IsAnimeFinished());
  EXPECT_EQ(100, animation->GetCurrentFrame()->mX);
}

TEST_F(AnimationTest, AddAnimeSetIsRefusedWhenFull) {
  YGUIAnimeSet* extra = new YGUIAnimeSet(1);
  extra->Initialize();
  EXPECT_EQ(0, animation->AddAnimeSet(extra));
  extra->Destroy();
  delete extra;
}

TEST(AnimationEmptyTest, EmptySlotsReadAsNothing) {
  YGUIAnimation animation(3);
  animation.Initialize();
  EXPECT_EQ(nullptr, animation.GetCurrentFrame());
  EXPECT_EQ(0, animation.PlayAnime("in"));
  animation.Update(0.1f);
  animation.Destroy();
}

TEST(AnimationAssertTest, InitializeWithNoRoomForSetsEndsInTheAssertion) {
  zvtest::ChildResult result = zvtest::RunInChild([] {
    YGUIAnimation animation(0);
    animation.Initialize();
  });
  EXPECT_TRUE(result.died());
  EXPECT_EQ("Assertion failed: mNumAnimeSet != 0\n", result.out);
}

}  // namespace
