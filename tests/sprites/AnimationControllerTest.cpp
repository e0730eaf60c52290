// The controller: its clock in each mode, the key that stands, and what it tells
// its handler as it passes keys.
#include <gtest/gtest.h>

#include <memory>

#include "RenderSystem/AnimationController.h"
#include "RenderSystem/AnimationSet.h"
#include "SpriteTestSupport.h"

namespace {

using spritetest::AnimFileLayout;
using spritetest::AnimLayout;
using spritetest::KeysAt;
using spritetest::RecordingHandler;
using Codes = std::vector<int>;

const uint32_t kOnce = 0, kLoop = 1, kPingPong = 2;

class AnimationControllerTest : public testing::Test {
 protected:
  // The set holds `anims`; the controller is made for it, with the handler.
  void Load(const std::vector<AnimLayout>& anims) {
    AnimFileLayout file;
    file.anims = anims;
    const std::string path = dir.file("s.anim");
    zvtest::WriteBytes(path, spritetest::MakeAnim(file));
    ASSERT_EQ(1, set.Import0(path.c_str()));
    controller.reset(AnimationController::CreateAnimationController(&set));
    controller->mHandler = &handler;
  }
  static AnimLayout Anim(uint32_t mode, float duration, std::vector<spritetest::KeyLayout> keys) {
    AnimLayout anim;
    anim.playMode = mode;
    anim.duration = duration;
    anim.keys = std::move(keys);
    return anim;
  }
  // What a model does to start animation `index` from its beginning.
  void Start(unsigned index) {
    AnimationTrack track;
    controller->GetTrackDesc(&track);
    track.mPosition = 0.0f;
    track.mAnimIndex = uint8_t(index);
    track.mEnable = 1;
    track.mDuration = set.mAnimations[index].mDuration;
    track.mMode = uint8_t(set.mAnimations[index].mPlayMode);
    controller->SetTrackDesc(&track);
    controller->ResetTime();
    controller->mState = AnimationController::eState_Playing;
    handler.told.clear();
  }
  void SetSpeed(float speed) {
    AnimationTrack track;
    controller->GetTrackDesc(&track);
    track.mSpeed = speed;
    controller->SetTrackDesc(&track);
  }
  float Position() const { return controller->mTrack.mPosition; }

  zvtest::TempDir dir;
  AnimationSet set;
  RecordingHandler handler;
  std::unique_ptr<AnimationController> controller;
};

// Keys with events 1, 2, ... in order, at the given times.
std::vector<spritetest::KeyLayout> KeysWithEvents(const std::vector<float>& times) {
  std::vector<spritetest::KeyLayout> keys = KeysAt(times);
  for (size_t i = 0; i < keys.size(); ++i) keys[i].event = uint32_t(i + 1);
  return keys;
}

TEST_F(AnimationControllerTest, ANewControllerPlaysNothingYet) {
  Load({Anim(kLoop, 1.0f, KeysAt({0.0f, 1.0f}))});
  EXPECT_EQ(&set, controller->mSet);
  EXPECT_EQ(AnimationController::eState_Playing, controller->mState);
  EXPECT_EQ(1.0f, controller->mTrack.mSpeed);
  EXPECT_EQ(255, controller->mTrack.mAnimIndex);
  EXPECT_EQ(0, controller->mTrack.mEnable);
  EXPECT_EQ(255, controller->mLastKey);
  EXPECT_EQ(0xFFFF, controller->mCurrent.mSpriteIndex);
  for (int i = 0; i < 4; ++i) EXPECT_EQ(0xFFFF, controller->mCurrent.mBoxIndex[i]);
  EXPECT_EQ(nullptr, controller->mCurrentSet);
}

TEST_F(AnimationControllerTest, ATwoKeyAnimationAlwaysStandsOnKeyZero) {
  Load({Anim(kLoop, 1.0f, KeysAt({0.0f, 0.5f}))});
  Start(0);
  for (int step = 0; step < 12; ++step) {
    controller->AdvanceTime(0.125f, false);
    SCOPED_TRACE(Position());
    EXPECT_EQ(1, controller->mChanged);
    EXPECT_EQ(0, controller->mCurrent.mSpriteIndex);
    EXPECT_EQ(0, controller->mLastKey);
  }
  int index = -1;
  EXPECT_EQ(&set.mAnimations[0].mKeys[0], set.mAnimations[0].FindKeyFrame(0.99f, &index));
  EXPECT_EQ(0, index);
}

TEST_F(AnimationControllerTest, ModeOnceEndsWithTheClockAtTheEndOneEndedEventAndStoppedInThatCall) {
  Load({Anim(kOnce, 1.0f, KeysAt({0.0f, 0.5f, 1.0f}))});
  Start(0);
  controller->AdvanceTime(0.5f, false);
  controller->AdvanceTime(0.25f, false);
  EXPECT_EQ(AnimationController::eState_Playing, controller->mState);
  EXPECT_TRUE(handler.told.empty());
  controller->AdvanceTime(0.5f, false);
  EXPECT_EQ(1.0f, Position());
  EXPECT_EQ(Codes({2}), handler.codes());
  EXPECT_EQ(0, controller->mTrack.mEnable);
  EXPECT_EQ(AnimationController::eState_Stopped, controller->mState);
  EXPECT_EQ(1, controller->mChanged);  // the key at the end was still looked up
  EXPECT_EQ(1, controller->mCurrent.mSpriteIndex);
  controller->AdvanceTime(0.5f, false);
  EXPECT_EQ(Codes({2}), handler.codes());
  EXPECT_EQ(0, controller->mChanged);
  EXPECT_EQ(1.0f, Position());
}

TEST_F(AnimationControllerTest, ModeOnceBackwardsEndsAtZero) {
  Load({Anim(kOnce, 1.0f, KeysAt({0.0f, 0.5f, 1.0f}))});
  Start(0);
  SetSpeed(-1.0f);
  controller->AdvanceTime(0.25f, false);
  EXPECT_EQ(0.0f, Position());
  EXPECT_EQ(Codes({2}), handler.codes());
  EXPECT_EQ(AnimationController::eState_Stopped, controller->mState);
}

TEST_F(AnimationControllerTest, ModeLoopSubtractsTheDurationOnlyOnceForALongStep) {
  Load({Anim(kLoop, 1.0f, KeysAt({0.0f, 0.5f, 1.0f}))});
  Start(0);
  controller->AdvanceTime(2.5f, false);
  EXPECT_EQ(1.5f, Position());
  EXPECT_EQ(1, controller->mTrack.mEnable);
  controller->AdvanceTime(0.25f, false);
  EXPECT_EQ(0.75f, Position());
  controller->AdvanceTime(0.25f, false);  // exactly the duration wraps
  EXPECT_EQ(0.0f, Position());
  EXPECT_TRUE(handler.told.empty());
}

TEST_F(AnimationControllerTest, ModePingPongTurnsAtTheEndAndAtZeroWithoutTellingTheHandler) {
  Load({Anim(kPingPong, 1.0f, KeysAt({0.0f, 0.5f, 1.0f}))});
  Start(0);
  const float expected[][2] = {{0.75f, 0}, {1.0f, 1}, {0.25f, 1}, {0.0f, 0}, {0.75f, 0}, {1.0f, 1}};
  for (const auto& e : expected) {
    controller->AdvanceTime(0.75f, false);
    EXPECT_EQ(e[0], Position());
    EXPECT_EQ(e[1], controller->mTrack.mReverse);
    EXPECT_EQ(AnimationController::eState_Playing, controller->mState);
  }
  EXPECT_TRUE(handler.told.empty());
}

TEST_F(AnimationControllerTest, AnUnknownModeKeepsTheClockStill) {
  Load({Anim(7, 1.0f, KeysAt({0.0f, 0.5f, 1.0f}))});
  Start(0);
  controller->AdvanceTime(0.75f, false);
  EXPECT_EQ(0.0f, Position());
  EXPECT_EQ(1, controller->mChanged);
  EXPECT_EQ(AnimationController::eState_Playing, controller->mState);
}

TEST_F(AnimationControllerTest, AKeyWithTheNoValueMarkerFiresNoValueEvent) {
  std::vector<spritetest::KeyLayout> keys = KeysAt({0.0f, 0.25f, 0.5f, 1.0f});
  keys[1].value = 0x2539A7;
  keys[2].value = 7;
  Load({Anim(kLoop, 1.0f, keys)});
  Start(0);
  controller->AdvanceTime(0.125f, false);  // key 0
  controller->AdvanceTime(0.25f, false);   // key 1: no value
  EXPECT_EQ(1, controller->mLastKey);
  EXPECT_TRUE(handler.told.empty());
  controller->AdvanceTime(0.25f, false);   // key 2: value 7
  ASSERT_EQ(Codes({4}), handler.codes());
  EXPECT_EQ(7u, handler.told[0].track.mEventValue);
  EXPECT_EQ(0, handler.told[0].track.mEvent);
  EXPECT_EQ(7u, controller->mCurrent.mValue);
}

TEST_F(AnimationControllerTest, AKeyWithEventAndValueFiresTheEventThenTheValue) {
  std::vector<spritetest::KeyLayout> keys = KeysAt({0.0f, 0.25f, 0.5f, 1.0f});
  keys[1].event = 5;
  keys[1].value = 9;
  Load({Anim(kLoop, 1.0f, keys)});
  Start(0);
  controller->AdvanceTime(0.125f, false);
  controller->AdvanceTime(0.25f, false);
  ASSERT_EQ(Codes({3, 4}), handler.codes());
  for (const spritetest::Told& told : handler.told) {
    EXPECT_EQ(5, told.track.mEvent);
    EXPECT_EQ(9u, told.track.mEventValue);
  }
  EXPECT_EQ(5, controller->mCurrent.mEvent);
  EXPECT_EQ(1, controller->mCurrent.mSpriteIndex);
}

TEST_F(AnimationControllerTest, TheFirstStepAfterAStartLandsOnKeyZeroAndFiresNothingForIt) {
  Load({Anim(kLoop, 1.0f, KeysWithEvents({0.0f, 0.5f, 1.0f}))});
  Start(0);
  controller->AdvanceTime(0.125f, false);
  EXPECT_EQ(0, controller->mLastKey);
  EXPECT_EQ(1, controller->mNewKey);
  EXPECT_EQ(0, controller->mCurrent.mSpriteIndex);
  EXPECT_EQ(0, controller->mCurrent.mEvent);  // the key's event is not copied
  EXPECT_TRUE(handler.told.empty());
  // Keys reached later fire.
  controller->AdvanceTime(0.5f, false);
  ASSERT_EQ(Codes({3}), handler.codes());
  EXPECT_EQ(2, handler.told[0].track.mEvent);
  // A wrap forgets the last key: landing on key 0 again fires nothing either.
  controller->AdvanceTime(0.5f, false);
  EXPECT_EQ(0.125f, Position());
  EXPECT_EQ(0, controller->mLastKey);
  EXPECT_EQ(Codes({3}), handler.codes());
}

TEST_F(AnimationControllerTest, AStepOverSeveralKeysFiresEachInOrder) {
  Load({Anim(kLoop, 1.0f, KeysWithEvents({0.0f, 0.125f, 0.25f, 0.375f, 0.5f, 1.0f}))});
  Start(0);
  controller->AdvanceTime(0.0625f, false);  // key 0
  controller->AdvanceTime(0.375f, false);   // to key 3
  ASSERT_EQ(Codes({3, 3, 3}), handler.codes());
  EXPECT_EQ(2, handler.told[0].track.mEvent);
  EXPECT_EQ(3, handler.told[1].track.mEvent);
  EXPECT_EQ(4, handler.told[2].track.mEvent);
  EXPECT_EQ(3, controller->mLastKey);
  EXPECT_EQ(3, controller->mCurrent.mSpriteIndex);
}

TEST_F(AnimationControllerTest, AtSpeedMinusOneInALoopKeysAreVisitedDownwardAndTheClockWrapsBelowZero) {
  Load({Anim(kLoop, 1.0f, KeysWithEvents({0.0f, 0.25f, 0.5f, 0.75f, 1.0f}))});
  Start(0);
  SetSpeed(-1.0f);
  controller->AdvanceTime(0.125f, false);
  EXPECT_EQ(0.875f, Position());
  // From none, the walk starts at the last key and goes down to key 3.
  ASSERT_EQ(Codes({3, 3}), handler.codes());
  EXPECT_EQ(5, handler.told[0].track.mEvent);
  EXPECT_EQ(4, handler.told[1].track.mEvent);
  EXPECT_EQ(3, controller->mLastKey);
  controller->AdvanceTime(0.25f, false);
  EXPECT_EQ(0.625f, Position());
  ASSERT_EQ(3u, handler.told.size());
  EXPECT_EQ(3, handler.told[2].track.mEvent);
  controller->AdvanceTime(0.5f, false);
  EXPECT_EQ(0.125f, Position());
  ASSERT_EQ(5u, handler.told.size());
  EXPECT_EQ(2, handler.told[3].track.mEvent);
  EXPECT_EQ(1, handler.told[4].track.mEvent);
  EXPECT_EQ(0, controller->mLastKey);
}

TEST_F(AnimationControllerTest, AStoredDurationOfZeroPlaysAsOneSecond) {
  Load({Anim(kLoop, 0.0f, KeysAt({0.0f, 0.5f, 1.0f}))});
  Start(0);
  controller->AdvanceTime(0.5f, false);
  controller->AdvanceTime(0.75f, false);
  EXPECT_EQ(0.25f, Position());
}

TEST_F(AnimationControllerTest, StayingOnAKeyIsNoNewKey) {
  Load({Anim(kLoop, 1.0f, KeysAt({0.0f, 0.5f, 1.0f}))});
  Start(0);
  controller->AdvanceTime(0.125f, false);
  EXPECT_EQ(1, controller->mNewKey);
  controller->AdvanceTime(0.125f, false);
  EXPECT_EQ(1, controller->mChanged);
  EXPECT_EQ(0, controller->mNewKey);
  EXPECT_EQ(&set, controller->mCurrentSet);
}

TEST_F(AnimationControllerTest, APausedClockStandsButTheKeyIsStillLookedUp) {
  Load({Anim(kLoop, 1.0f, KeysAt({0.0f, 0.5f, 1.0f}))});
  Start(0);
  controller->AdvanceTime(0.75f, false);
  controller->mState = AnimationController::eState_Paused;
  controller->AdvanceTime(0.5f, false);
  EXPECT_EQ(0.75f, Position());
  EXPECT_EQ(1, controller->mChanged);
  EXPECT_EQ(1, controller->mLastKey);
  // The call makes it playing again: pausing is the caller's to keep.
  EXPECT_EQ(AnimationController::eState_Playing, controller->mState);
  controller->AdvanceTime(0.125f, false);
  EXPECT_EQ(0.875f, Position());
}

TEST_F(AnimationControllerTest, AnAnimationWithoutKeysMovesItsClockAndReportsNothing) {
  Load({Anim(kOnce, 1.0f, {})});
  Start(0);
  controller->AdvanceTime(0.5f, false);
  EXPECT_EQ(0.5f, Position());
  EXPECT_EQ(0, controller->mChanged);
  EXPECT_EQ(nullptr, controller->mCurrentSet);
  controller->AdvanceTime(0.75f, false);
  EXPECT_EQ(Codes({2}), handler.codes());
}

TEST_F(AnimationControllerTest, SetTrackDescTellsOnlyWhenEnableChanges) {
  Load({Anim(kLoop, 1.0f, KeysAt({0.0f, 1.0f}))});
  AnimationTrack track;
  controller->mState = AnimationController::eState_Stopped;
  track.mEnable = 1;
  track.mAnimIndex = 0;
  EXPECT_EQ(1, controller->SetTrackDesc(&track));
  EXPECT_EQ(Codes({1}), handler.codes());
  EXPECT_EQ(AnimationController::eState_Playing, controller->mState);
  track.mPosition = 0.5f;
  controller->SetTrackDesc(&track);
  EXPECT_EQ(Codes({1}), handler.codes());
  EXPECT_EQ(0.5f, Position());
  track.mEnable = 0;
  controller->SetTrackDesc(&track);
  EXPECT_EQ(Codes({1, 2}), handler.codes());
  // Any value but 1 counts as off.
  track.mEnable = 2;
  controller->SetTrackDesc(&track);
  EXPECT_EQ(Codes({1, 2, 2}), handler.codes());
  AnimationTrack copy;
  EXPECT_EQ(1, controller->GetTrackDesc(&copy));
  EXPECT_EQ(2, copy.mEnable);
  EXPECT_EQ(0.5f, copy.mPosition);
}

TEST_F(AnimationControllerTest, ADisabledTrackStopsTheControllerAndMovesNothing) {
  Load({Anim(kLoop, 1.0f, KeysAt({0.0f, 1.0f}))});
  controller->AdvanceTime(0.5f, false);
  EXPECT_EQ(AnimationController::eState_Stopped, controller->mState);
  EXPECT_EQ(0.0f, Position());
  EXPECT_EQ(0, controller->mChanged);
}

TEST_F(AnimationControllerTest, StopRewindsAndForgetsTheKey) {
  Load({Anim(kLoop, 1.0f, KeysAt({0.0f, 0.5f, 1.0f}))});
  Start(0);
  controller->AdvanceTime(0.75f, false);
  controller->Stop();
  EXPECT_EQ(0, controller->mTrack.mEnable);
  EXPECT_EQ(0.0f, Position());
  EXPECT_EQ(255, controller->mLastKey);
  EXPECT_EQ(0, controller->mChanged);
  EXPECT_EQ(AnimationController::eState_Stopped, controller->mState);
  EXPECT_TRUE(handler.told.empty());  // Stop tells nobody
}

TEST_F(AnimationControllerTest, ResetTimeRewindsOnlyAnEnabledTrack) {
  Load({Anim(kLoop, 1.0f, KeysAt({0.0f, 0.5f, 1.0f}))});
  Start(0);
  controller->AdvanceTime(0.75f, false);
  controller->ResetTime();
  EXPECT_EQ(0.0f, Position());
  AnimationTrack track;
  controller->GetTrackDesc(&track);
  track.mEnable = 0;
  track.mPosition = 0.5f;
  controller->SetTrackDesc(&track);
  controller->ResetTime();
  EXPECT_EQ(0.5f, Position());
}

TEST_F(AnimationControllerTest, GetKeyFrameIsNullOutOfRange) {
  Load({Anim(kLoop, 1.0f, KeysAt({0.0f, 0.5f, 1.0f})), Anim(kLoop, 1.0f, {})});
  EXPECT_EQ(&set.mAnimations[0].mKeys[2], controller->GetKeyFrame(0, 2));
  EXPECT_EQ(nullptr, controller->GetKeyFrame(0, 3));
  EXPECT_EQ(nullptr, controller->GetKeyFrame(1, 0));
  EXPECT_EQ(nullptr, controller->GetKeyFrame(2, 0));
}

TEST_F(AnimationControllerTest, ATrackOnNoAnimationOfTheSetMovesNothing) {
  Load({Anim(kLoop, 1.0f, KeysAt({0.0f, 0.5f, 1.0f}))});
  AnimationTrack track;
  track.mEnable = 1;
  track.mAnimIndex = 3;
  controller->SetTrackDesc(&track);
  controller->AdvanceTime(0.5f, false);
  EXPECT_EQ(0.0f, Position());
  EXPECT_EQ(0, controller->mChanged);
  EXPECT_EQ(AnimationController::eState_Playing, controller->mState);
}

}  // namespace
