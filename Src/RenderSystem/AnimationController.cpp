#include "RenderSystem/AnimationController.h"

#include "RenderSystem/AnimationPlaybackEventHandler.h"
#include "RenderSystem/AnimationSet.h"

AnimationController::AnimationController(AnimationSet* set)
    : mHandler(0), mSet(set), mChanged(0), mNewKey(0), mLastKey(kNoKey), mCurrentSet(0), mState(eState_Playing) {
  for (int i = 0; i < eKeyFrameBox_Num; ++i) mCurrent.mBoxIndex[i] = 0xFFFF;
  mCurrent.mSpriteIndex = 0xFFFF;
}

AnimationController* AnimationController::CreateAnimationController(AnimationSet* set) {
  return new AnimationController(set);
}

int AnimationController::GetTrackDesc(AnimationTrack* track) {
  *track = mTrack;
  return 1;
}

int AnimationController::SetTrackDesc(const AnimationTrack* track) {
  if (track->mEnable != mTrack.mEnable) {
    if (track->mEnable == 1) {
      mState = eState_Playing;
      Tell(AnimationPlaybackEventHandler::eEvent_Started);
    } else {
      Tell(AnimationPlaybackEventHandler::eEvent_Ended);
    }
  }
  mTrack = *track;
  return 1;
}

const AnimationKeyFrame* AnimationController::GetKeyFrame(unsigned int anim, unsigned int key) const {
  if (mSet == 0 || anim >= mSet->mAnimCount) return 0;
  const AnimationData& data = mSet->mAnimations[anim];
  return key < data.mKeyCount ? &data.mKeys[key] : 0;
}

void AnimationController::ResetTime() {
  if (mTrack.mEnable) mTrack.mPosition = 0.0f;
}

void AnimationController::Stop() {
  if (mTrack.mEnable) {
    mTrack.mEnable = 0;
    mTrack.mPosition = 0.0f;
  }
  mLastKey = uint8_t(0xFFFF);  // 8 bits hold 255: none
  mChanged = 0;
  mState = eState_Stopped;
}

void AnimationController::Tell(int code) {
  if (mHandler != 0) mHandler->OnAnimationPlaybackEvent(code, &mTrack);
}

void AnimationController::MoveClock(const AnimationData& anim, float step) {
  const float d = anim.mDuration;
  float& position = mTrack.mPosition;
  switch (mTrack.mMode) {
    case AnimationTrack::eMode_Loop:
      position += step * mTrack.mSpeed;
      if (position >= d) {
        mLastKey = kNoKey;
        position -= d;
      } else if (position < 0.0f) {
        mLastKey = kNoKey;
        position += d;
      }
      break;
    case AnimationTrack::eMode_Once:
      position += step * mTrack.mSpeed;
      if (position >= d) {
        mTrack.mEnable = 0;
        position = d;
        Tell(AnimationPlaybackEventHandler::eEvent_Ended);
      } else if (position < 0.0f) {
        mTrack.mEnable = 0;
        position = 0.0f;
        Tell(AnimationPlaybackEventHandler::eEvent_Ended);
      }
      break;
    case AnimationTrack::eMode_PingPong:
      position += mTrack.mReverse ? -step * mTrack.mSpeed : step * mTrack.mSpeed;
      if (position >= d) {
        position = d;
        mTrack.mReverse = 1;
      }
      if (position <= 0.0f) {
        position = 0.0f;
        mTrack.mReverse = 0;
      }
      break;
    default:
      break;
  }
}

// A key passed: its event and its value, each to the handler. Either copies the
// key into mCurrent and onto the track, so the handler can read it there.
void AnimationController::VisitKey(const AnimationData& anim, int index) {
  const AnimationKeyFrame& key = anim.mKeys[index];
  mLastKey = uint8_t(index);
  if (key.mEvent != 0) {
    mCurrent = key;
    mTrack.mEvent = key.mEvent;
    mTrack.mEventValue = key.mValue;
    Tell(AnimationPlaybackEventHandler::eEvent_KeyEvent);
  }
  if (key.HasValue()) {
    if (key.mEvent == 0) {
      mCurrent = key;
      mTrack.mEvent = key.mEvent;
      mTrack.mEventValue = key.mValue;
    }
    Tell(AnimationPlaybackEventHandler::eEvent_KeyValue);
  }
}

void AnimationController::AdvanceTime(float seconds, bool) {
  // 1.
  mChanged = 0;
  if (mTrack.mEnable == 0) {
    mState = eState_Stopped;
    return;
  }
  // A track pointing at no animation of the set has no clock to move.
  if (mSet != 0 && mTrack.mAnimIndex < mSet->mAnimCount) {
    const AnimationData& anim = mSet->mAnimations[mTrack.mAnimIndex];
    // 2. Paused, the clock stands.
    MoveClock(anim, mState == eState_Paused ? 0.0f : seconds);
    // 3.
    if (anim.mKeyCount > 0) {
      // 4.
      const int k = int(anim.SearchKey(mTrack.mPosition));
      mChanged = 1;
      mTrack.mEvent = 0;
      mTrack.mEventValue = 0;
      mCurrentSet = mSet;
      if (k == mLastKey) {
        mNewKey = 0;
      } else {
        // 5.
        mCurrent = anim.mKeys[k];
        mCurrent.mEvent = 0;
        mNewKey = 1;
        // 6. Keys compare as plain numbers, so "none" (255) is above any key: in
        // forward play the step after a start or a wrap fires nothing, not even
        // for the key it lands on.
        const int last = mLastKey;
        if (mTrack.mSpeed < 0.0f) {
          const int start = last == kNoKey ? int(anim.mKeyCount) - 1 : last - 1;
          for (int i = start; i >= k; --i) VisitKey(anim, i);
        } else if (last < k) {
          for (int i = last + 1; i <= k; ++i) VisitKey(anim, i);
        }
        mLastKey = uint8_t(k);
      }
    }
  }
  // 7.
  mState = mTrack.mEnable ? eState_Playing : eState_Stopped;
}
