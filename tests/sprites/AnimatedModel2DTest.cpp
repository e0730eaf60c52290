// Animated models without drawing: loading through the sprite manager, playing,
// facing, boxes, and the clocks of the three effects.
#include "RenderSystem/AnimatedModel2D.h"

#include <gtest/gtest.h>

#include "RenderSystem/AnimatedSpriteDataManager.h"
#include "RenderSystem/AnimationController.h"
#include "RenderSystem/AnimationSet.h"
#include "SpriteFolder.h"

namespace {

using spritetest::AnimFileLayout;
using spritetest::KeysAt;

// A title's folder with sprite "hero" (no atlas: these tests draw nothing) and
// the sprite manager up.
class AnimatedModel2DTest : public testing::Test {
 protected:
  void SetUp() override {
    AnimFileLayout file;
    file.anims.resize(3);
    file.anims[0].name = "walk";
    file.anims[0].playMode = 1;
    file.anims[0].duration = 1.0f;
    file.anims[0].keys = KeysAt({0.0f, 0.5f, 1.0f});
    file.anims[0].keys[0].box[0] = 0;
    file.anims[0].keys[1].box[0] = 1;
    file.anims[0].keys[1].box[1] = 2;
    file.anims[0].keys[1].offsetX = 5;
    file.anims[0].keys[1].offsetY = uint32_t(-3);
    file.anims[0].keys[0].box[1] = 7;  // past the table
    file.anims[1].name = "jump";
    file.anims[1].playMode = 0x100;  // the low byte: once
    file.anims[1].duration = 2.0f;
    file.anims[1].keys = KeysAt({0.0f, 2.0f});
    file.anims[2].name = "idle";
    file.layers[0] = "base";
    file.boxes = {{uint32_t(-4), uint32_t(-10), 4, 0}, {uint32_t(-1), uint32_t(-12), 7, 2}, {2, 3, 10, 9}};
    folder.WriteAnim("hero", file);
    folder.WriteList("hero\n");
    AnimatedSpriteDataManager::sCreate();
  }
  void TearDown() override {
    delete AnimatedSpriteDataManager::instance_;
    AnimatedSpriteDataManager::instance_ = nullptr;
  }
  AnimatedSpriteDataManager& Manager() { return AnimatedSpriteDataManager::sInstance(); }
  float Clock(const AnimatedModel2DCore& model) { return model.mController->mTrack.mPosition; }

  spritetest::SpriteFolder folder;
};

void ExpectBox(const Math3D::Aabb2D& box, float left, float top, float right, float bottom) {
  EXPECT_FLOAT_EQ(left, box.mMinX);
  EXPECT_FLOAT_EQ(top, box.mMinY);
  EXPECT_FLOAT_EQ(right, box.mMaxX);
  EXPECT_FLOAT_EQ(bottom, box.mMaxY);
  EXPECT_FLOAT_EQ(-right, box.mMirrorMinX);
  EXPECT_FLOAT_EQ(-left, box.mMirrorMaxX);
}

// ---- loading

TEST_F(AnimatedModel2DTest, LoadTakesTheSpriteFromTheManagerAndReleaseGivesItBack) {
  AnimatedModel2D a, b;
  ASSERT_EQ(1, a.load("hero", 0, 0));
  ASSERT_EQ(1, b.load("hero", 0, 0));
  EXPECT_EQ(a.mSpriteData, b.mSpriteData);
  EXPECT_EQ(2, a.mSpriteData->mRefCount);
  EXPECT_EQ(a.mSpriteData->mAnimationSet, a.mHostAnimationSet);
  ASSERT_NE(nullptr, a.mController);
  EXPECT_EQ(a.mHostAnimationSet, a.mController->mSet);
  a.release();
  EXPECT_EQ(nullptr, a.mController);
  EXPECT_EQ(1u, Manager().mItems.size());
  b.release();
  EXPECT_TRUE(Manager().mItems.empty());
}

TEST_F(AnimatedModel2DTest, TheDestructorGivesTheSpriteBack) {
  {
    AnimatedModel2DLit lit;
    ASSERT_EQ(1, lit.load("hero", 0, 0));
    EXPECT_EQ(1u, Manager().mItems.size());
  }
  EXPECT_TRUE(Manager().mItems.empty());
}

TEST_F(AnimatedModel2DTest, ASpriteThatCannotLoadGivesZeroAndKeepsTheModelAsItWas) {
  AnimatedModel2D model;
  EXPECT_EQ(0, model.load("nobody", 0, 0));
  EXPECT_EQ(nullptr, model.mController);
  ASSERT_EQ(1, model.load("hero", 0, 0));
  EXPECT_EQ(0, model.load("nobody", 0, 0));
  EXPECT_NE(nullptr, model.mController);
  EXPECT_EQ(1, model.startAnimation(0, 0));
}

TEST_F(AnimatedModel2DTest, LoadFromIDTakesTheNameFromTheSpriteList) {
  AnimatedModel2D model;
  EXPECT_EQ(0, model.loadFromID(1, 0, 0));
  ASSERT_EQ(1, model.loadFromID(0, 0, 0));
  EXPECT_EQ("hero", model.mSpriteData->mName);
}

TEST_F(AnimatedModel2DTest, LoadingAnotherSpriteGivesTheFirstBack) {
  AnimatedModel2D model;
  ASSERT_EQ(1, model.load("hero", 0, 0));
  ASSERT_EQ(1, model.load("hero", 0, 0));
  EXPECT_EQ(1, model.mSpriteData->mRefCount);
}

TEST_F(AnimatedModel2DTest, TheHandlerReachesTheControllerBeforeAndAfterLoad) {
  spritetest::RecordingHandler handler;
  AnimatedModel2D model;
  model.setAnimationPlaybackEventHandler(&handler);
  ASSERT_EQ(1, model.load("hero", 0, 0));
  EXPECT_EQ(&handler, model.mController->mHandler);
  model.startAnimation(1, 0);
  model.update(3.0f, false);  // "jump" plays once and ends
  EXPECT_EQ((std::vector<int>{1, 2}), handler.codes());
}

// ---- playing

TEST_F(AnimatedModel2DTest, StartAnimationSetsTheTrackGoingFromZero) {
  AnimatedModel2D model;
  ASSERT_EQ(1, model.load("hero", 0, 0));
  EXPECT_EQ(-1, model.getCurrentAnimationID());
  ASSERT_EQ(1, model.startAnimation(1, 0));
  const AnimationTrack& track = model.mController->mTrack;
  EXPECT_EQ(1, track.mEnable);
  EXPECT_EQ(1, track.mAnimIndex);
  EXPECT_EQ(0, track.mMode);  // the low byte of 0x100
  EXPECT_FLOAT_EQ(2.0f, track.mDuration);
  EXPECT_FLOAT_EQ(0.0f, track.mPosition);
  EXPECT_EQ(1, model.mController->mState);
  EXPECT_EQ(1, model.getCurrentAnimationID());
  EXPECT_EQ(1, model.isPlaying());
  EXPECT_FLOAT_EQ(2.0f, model.getActionTime(1));
  EXPECT_EQ(0, model.isInActionTransition());
}

TEST_F(AnimatedModel2DTest, StartAnimationOfTheRunningIndexWithRestartZeroReturnsZero) {
  AnimatedModel2D model;
  ASSERT_EQ(1, model.load("hero", 0, 0));
  ASSERT_EQ(1, model.startAnimation(0, 0));
  model.update(0.25f, false);
  EXPECT_EQ(0, model.startAnimation(0, 0));
  EXPECT_FLOAT_EQ(0.25f, Clock(model));
}

TEST_F(AnimatedModel2DTest, StartAnimationOfTheRunningIndexWithRestartOneRestartsTheClock) {
  AnimatedModel2D model;
  ASSERT_EQ(1, model.load("hero", 0, 0));
  ASSERT_EQ(1, model.startAnimation(0, 0));
  model.update(0.6f, false);
  ASSERT_EQ(1, model.mFrame.mSpriteIndex);
  EXPECT_EQ(1, model.startAnimation(0, 1));
  EXPECT_FLOAT_EQ(0.0f, Clock(model));
  model.update(0.1f, false);
  EXPECT_EQ(0, model.mFrame.mSpriteIndex);
}

TEST_F(AnimatedModel2DTest, StartAnimationOutOfRangeOrWithoutAnimationsReturnsZero) {
  AnimatedModel2D model;
  EXPECT_EQ(0, model.startAnimation(0, 0));  // nothing loaded
  ASSERT_EQ(1, model.load("hero", 0, 0));
  EXPECT_EQ(0, model.startAnimation(3, 0));
  EXPECT_EQ(0, model.startAnimation(unsigned(-1), 1));
  EXPECT_EQ(0, model.isAnimationExists(3));
  EXPECT_EQ(1, model.isAnimationExists(2));
}

TEST_F(AnimatedModel2DTest, AnEndedAnimationStartsAgainWithoutRestart) {
  AnimatedModel2D model;
  ASSERT_EQ(1, model.load("hero", 0, 0));
  ASSERT_EQ(1, model.startAnimation(1, 0));
  model.update(2.5f, false);
  EXPECT_EQ(-1, model.getCurrentAnimationID());
  EXPECT_EQ(0, model.isPlaying());
  EXPECT_EQ(1, model.startAnimation(1, 0));
}

TEST_F(AnimatedModel2DTest, StartAnimationByNameFindsTheAnimation) {
  AnimatedModel2D model;
  ASSERT_EQ(1, model.load("hero", 0, 0));
  EXPECT_EQ(1, model.startAnimationByName("jump"));
  EXPECT_EQ(1, model.getCurrentAnimationID());
  EXPECT_EQ(0, model.startAnimationByName("fly"));
}

TEST_F(AnimatedModel2DTest, SwitchToActionKeepsTheClockAndFrameTime) {
  AnimatedModel2D model;
  ASSERT_EQ(1, model.load("hero", 0, 0));
  ASSERT_EQ(1, model.startAnimation(0, 0));
  model.update(0.75f, false);
  ASSERT_FLOAT_EQ(0.5f, model.mFrame.mTime);
  EXPECT_EQ(1, model.switchToAction(2));
  EXPECT_EQ(2, model.getCurrentAnimationID());
  EXPECT_FLOAT_EQ(0.75f, Clock(model));
  EXPECT_FLOAT_EQ(0.5f, model.mFrame.mTime);
  EXPECT_EQ(1, model.switchToAction(2));  // already plays
  EXPECT_EQ(0, model.switchToAction(9));
}

TEST_F(AnimatedModel2DTest, StopEndsPlay) {
  AnimatedModel2D model;
  ASSERT_EQ(1, model.load("hero", 0, 0));
  ASSERT_EQ(1, model.startAnimation(0, 0));
  model.stop();
  EXPECT_EQ(0, model.isPlaying());
  EXPECT_EQ(-1, model.getCurrentAnimationID());
}

TEST_F(AnimatedModel2DTest, UpdateWithoutASpriteDoesNothing) {
  AnimatedModel2D model;
  AnimatedModel2DLit lit;
  model.update(1.0f, false);
  lit.update(1.0f, false);
  EXPECT_EQ(0xFFFF, model.mFrame.mSpriteIndex);
  EXPECT_EQ(0xFFFF, lit.mFrame.mSpriteIndex);
}

TEST_F(AnimatedModel2DTest, UpdateCopiesTheControllersKeyAndFlags) {
  AnimatedModel2D model;
  ASSERT_EQ(1, model.load("hero", 0, 0));
  ASSERT_EQ(1, model.startAnimation(0, 0));
  model.update(0.6f, false);
  EXPECT_EQ(1, model.mFrame.mSpriteIndex);
  EXPECT_EQ(5, model.mFrame.mOffsetX);
  EXPECT_EQ(-3, model.mFrame.mOffsetY);
  EXPECT_EQ(1, model.mFrame.mChanged);
  EXPECT_EQ(1, model.mFrame.mNewKey);
  model.update(0.1f, false);
  EXPECT_EQ(0, model.mFrame.mNewKey);
}

TEST_F(AnimatedModel2DTest, TheLitModelLoadsPlaysAndCopiesTheFrame) {
  AnimatedModel2DLit lit;
  ASSERT_EQ(1, lit.load("hero", 0, 0));
  ASSERT_EQ(1, lit.startAnimation(0, 0));
  EXPECT_EQ(0, lit.startAnimation(0, 0));
  lit.update(0.6f, false);
  EXPECT_EQ(1, lit.mFrame.mSpriteIndex);
  EXPECT_EQ(1, lit.startAnimation(0, 1));
  EXPECT_FLOAT_EQ(0.0f, Clock(lit));
}

// ---- facing and boxes

TEST_F(AnimatedModel2DTest, AModelFacesItsDefaultAndFlipsWhenTurnedAway) {
  AnimatedModel2D model;
  EXPECT_EQ(4, model.mDirection);
  EXPECT_EQ(4, model.mDefaultDirection);
  EXPECT_EQ(0, model.mFlip);
  model.changeDirection(2);
  EXPECT_EQ(2, model.mDirection);
  EXPECT_EQ(1, model.mFlip);
  model.changeDirection(4);
  EXPECT_EQ(0, model.mFlip);
}

TEST_F(AnimatedModel2DTest, BoxesAreReadFromTheCurrentKeyAndPlacedMirroredUnderFlip) {
  AnimatedModel2D model;
  ASSERT_EQ(1, model.load("hero", 0, 0));
  ASSERT_EQ(1, model.startAnimation(0, 0));
  model.update(0.6f, false);
  Math3D::Aabb2D box;
  model.getCurrentLocalBoxNoAlign(box, eKeyFrameBox_Align);
  ExpectBox(box, -1, -12, 7, 2);
  model.mPosition = {100, 50, 0};
  model.getCurrentBoxNoAlign(box, eKeyFrameBox_Collision);
  ExpectBox(box, 102, 53, 110, 59);
  model.changeDirection(0);
  model.getCurrentBoxNoAlign(box, eKeyFrameBox_Collision);
  ExpectBox(box, 90, 53, 98, 59);
}

TEST_F(AnimatedModel2DTest, ABoxIndexPastTheTableGivesAnEmptyBox) {
  AnimatedModel2D model;
  ASSERT_EQ(1, model.load("hero", 0, 0));
  Math3D::Aabb2D box;
  model.getCurrentLocalBoxNoAlign(box, eKeyFrameBox_Align);  // no key yet: index 0xFFFF
  ExpectBox(box, 0, 0, 0, 0);
  ASSERT_EQ(1, model.startAnimation(0, 0));
  model.update(0.1f, false);
  model.getCurrentCollisionBoxNoAlign(box);  // key 0 names box 7 of 3
  ExpectBox(box, 0, 0, 0, 0);
}

TEST_F(AnimatedModel2DTest, FrameBoxesOfKeysThatDoNotExistGiveZero) {
  AnimatedModel2D model;
  Math3D::Aabb2D box;
  EXPECT_EQ(0, model.getFrameBoxNoAlign(box, 0, 0, eKeyFrameBox_Align));
  ASSERT_EQ(1, model.load("hero", 0, 0));
  EXPECT_EQ(1, model.getFrameBoxNoAlign(box, 0, 1, eKeyFrameBox_Collision));
  ExpectBox(box, 2, 3, 10, 9);
  EXPECT_EQ(0, model.getFrameBoxNoAlign(box, 0, 3, eKeyFrameBox_Align));
  EXPECT_EQ(0, model.getFrameBoxNoAlign(box, 5, 0, eKeyFrameBox_Align));
}

TEST_F(AnimatedModel2DTest, TheAlignmentBoxsMoveSinceTheStartIsMeasuredAndTakenFromTheCollisionBox) {
  AnimatedModel2D model;
  ASSERT_EQ(1, model.load("hero", 0, 0));
  ASSERT_EQ(1, model.startAnimation(0, 0));
  model.update(0.1f, false);
  ASSERT_EQ(1, model.startAnimation(0, 1));  // the start keeps key 0's box (-4, -10)
  ExpectBox(model.mLastLocalBox, -4, -10, 4, 0);
  model.update(0.6f, false);  // key 1's box starts at (-1, -12)
  EXPECT_FLOAT_EQ(3.0f, model.mBoxDelta.x);
  EXPECT_FLOAT_EQ(-2.0f, model.mBoxDelta.y);
  Math3D::Aabb2D box;
  model.getCurrentLocalCollisionBox(box);
  ExpectBox(box, -1, 5, 7, 11);
  model.mPosition = {10, 20, 0};
  model.getCurrentCollisionBox(box);
  ExpectBox(box, 9, 25, 17, 31);
}

TEST(AnimatedModel2DDeathTest, ReadingABoxWithoutASpriteFailsTheAssertion) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  AnimatedModel2D model;
  Math3D::Aabb2D box;
  EXPECT_DEATH(model.getCurrentLocalBoxNoAlign(box, eKeyFrameBox_Align), "mHostAnimationSet != NULL");
}

// ---- the effects' clocks

TEST_F(AnimatedModel2DTest, TheBlendRampsOnceInMode0AndHoldsAtTheDuration) {
  AnimatedModel2D model;
  ASSERT_EQ(1, model.load("hero", 0, 0));
  AnimatedModel2DBlendEffectInfo info = {{1, 1, 1, 1}, {0, 0.5f, 1, 0}, 2.0f, 3.0f, 0};
  model.setBlendEffect(info);
  EXPECT_EQ(1, model.mBlendOn);
  EXPECT_FLOAT_EQ(1.0f, model.mBlendColor.g);
  model.update(0.5f, false);
  EXPECT_FLOAT_EQ(0.75f, model.mBlendColor.r);
  EXPECT_FLOAT_EQ(0.875f, model.mBlendColor.g);
  EXPECT_FLOAT_EQ(1.0f, model.mBlendColor.b);
  EXPECT_FLOAT_EQ(0.75f, model.mBlendColor.a);
  model.update(5.0f, false);
  EXPECT_FLOAT_EQ(3.0f, model.mBlendElapsed);
  EXPECT_FLOAT_EQ(1.0f - 1.5f, model.mBlendColor.r);  // past "to": the ramp runs on
}

TEST_F(AnimatedModel2DTest, TheBlendRampsAgainEachPeriodInMode1) {
  AnimatedModel2D model;
  ASSERT_EQ(1, model.load("hero", 0, 0));
  AnimatedModel2DBlendEffectInfo info = {{0, 0, 0, 0}, {1, 1, 1, 1}, 1.0f, 0.0f, 1};
  model.setBlendEffect(info);
  model.update(2.25f, false);
  EXPECT_FLOAT_EQ(0.25f, model.mBlendColor.r);
  model.update(100.0f, false);  // no duration: no end
  EXPECT_FLOAT_EQ(102.25f, model.mBlendElapsed);
}

TEST_F(AnimatedModel2DTest, TheBlendRunsThereAndBackInMode2) {
  AnimatedModel2D model;
  ASSERT_EQ(1, model.load("hero", 0, 0));
  AnimatedModel2DBlendEffectInfo info = {{0, 0, 0, 0}, {1, 1, 1, 1}, 1.0f, 0.0f, 2};
  model.setBlendEffect(info);
  model.update(0.25f, false);
  EXPECT_FLOAT_EQ(0.25f, model.mBlendColor.r);
  EXPECT_EQ(0, model.mBlendParity);
  model.update(1.0f, false);  // 1.25: the odd period runs back from "to"
  EXPECT_FLOAT_EQ(0.75f, model.mBlendColor.r);
  EXPECT_EQ(1, model.mBlendParity);
  model.update(1.0f, false);  // 2.25
  EXPECT_FLOAT_EQ(0.25f, model.mBlendColor.r);
}

TEST_F(AnimatedModel2DTest, ATrailListAlwaysHas20Records) {
  AnimatedModel2D model;
  EXPECT_EQ(20u, model.mTrailFrames.size());
  ASSERT_EQ(1, model.load("hero", 0, 0));
  model.setTrailEffect(AnimatedModel2DTrailEffectInfo());
  EXPECT_EQ(20u, model.mTrailFrames.size());
  for (const TrailFrameInfo& record : model.mTrailFrames) EXPECT_EQ(0.0f, record.mTime);
  model.reset(0);
  EXPECT_EQ(20u, model.mTrailFrames.size());
  // Drawing the trail drops the oldest and adds one: see the pixel tests.
}

TEST_F(AnimatedModel2DTest, TheTrailsDefaultsAndClock) {
  AnimatedModel2DTrailEffectInfo info;
  uint32_t bits;
  memcpy(&bits, &info.mSpacing, 4);
  EXPECT_EQ(0x3D088880u, bits);
  EXPECT_EQ(1.0f, info.mSpacingFactor);
  EXPECT_EQ(0.0f, info.mSpacingAddend);
  AnimatedModel2D model;
  ASSERT_EQ(1, model.load("hero", 0, 0));
  model.setTrailEffect(info);
  memcpy(&bits, &model.mTrailTimeLeft, 4);
  EXPECT_EQ(0x48FFFFE0u, bits);
  model.update(0.5f, false);
  EXPECT_FLOAT_EQ(0.5f, model.mTrailClock);
  EXPECT_FLOAT_EQ(524286.5f, model.mTrailTimeLeft);
  model.update(524287.0f, false);  // the time left runs out: off, both reset
  EXPECT_EQ(0, model.mTrailOn);
  EXPECT_EQ(0.0f, model.mTrailClock);
  EXPECT_EQ(524287.0f, model.mTrailTimeLeft);
}

TEST_F(AnimatedModel2DTest, TheEdgePulseRunsUpAndDownWithoutEnd) {
  AnimatedModel2D model;
  ASSERT_EQ(1, model.load("hero", 0, 0));
  AnimatedModel2DEadgeEffectInfo info = {{1, 1, 1, 1}, 4.0f, 1.0f, 0.0f, 2.0f};
  model.setEadgeEffect(info);
  model.update(0.5f, false);
  EXPECT_FLOAT_EQ(0.25f, model.mEadgePulse.mValue);
  model.update(2.0f, false);  // held at the top, then turns
  EXPECT_FLOAT_EQ(1.0f, model.mEadgePulse.mValue);
  model.update(1.5f, false);
  EXPECT_FLOAT_EQ(0.25f, model.mEadgePulse.mValue);
  model.update(1.0f, false);
  EXPECT_FLOAT_EQ(0.0f, model.mEadgePulse.mValue);
  model.update(0.5f, false);
  EXPECT_FLOAT_EQ(0.25f, model.mEadgePulse.mValue);
}

TEST_F(AnimatedModel2DTest, ResetTurnsTheEffectsOffAndCanRestartTheClock) {
  AnimatedModel2D model;
  ASSERT_EQ(1, model.load("hero", 0, 0));
  ASSERT_EQ(1, model.startAnimation(0, 0));
  model.setBlendEffect(AnimatedModel2DBlendEffectInfo());
  model.setTrailEffect(AnimatedModel2DTrailEffectInfo());
  model.update(0.3f, false);
  model.reset(0);
  EXPECT_EQ(0, model.mBlendOn);
  EXPECT_EQ(0, model.mTrailOn);
  EXPECT_EQ(0, model.mEadgeOn);
  EXPECT_FLOAT_EQ(0.3f, Clock(model));
  model.reset(1);
  EXPECT_FLOAT_EQ(0.0f, Clock(model));
}

}  // namespace
