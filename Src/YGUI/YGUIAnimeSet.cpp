#include "YGUI/YGUIAnimeSet.h"

#include "Base/XAssert.h"
#include "YGUI/YGUITypes.h"

YGUIAnimeSet::YGUIAnimeSet(int numKeyFrame)
    : mNumKeyFrame(numKeyFrame),
      mKeyFrameBuffer(0),
      mKeyFrameIndex(0),
      mCurrentTime(0),
      mTotalTime(0),
      mCurrentAnimeSetState(EAS_Idle) {}

void YGUIAnimeSet::Initialize() {
  XASSERT(mNumKeyFrame != 0);
  if (mNumKeyFrame > 0) mKeyFrameBuffer = new YGUIAnimeFrame*[mNumKeyFrame]();
  XASSERT(mKeyFrameBuffer);
}

void YGUIAnimeSet::Destroy() {
  if (mKeyFrameBuffer) {
    for (int i = 0; i < mKeyFrameIndex; ++i) delete mKeyFrameBuffer[i];
  }
  delete[] mKeyFrameBuffer;
  mKeyFrameBuffer = 0;
  mKeyFrameIndex = 0;
}

int YGUIAnimeSet::AddKeyFrame(YGUIAnimeFrame* frame) {
  if (!mKeyFrameBuffer || mKeyFrameIndex >= mNumKeyFrame) return 0;
  mKeyFrameBuffer[mKeyFrameIndex++] = frame;
  return 1;
}

void YGUIAnimeSet::PlayAnime() {
  if (mCurrentAnimeSetState == EAS_DoingAnime) return;
  mCurrentAnimeSetState = EAS_DoingAnime;
  mCurrentTime = 0;
  // The length only ever grows: a key added later with a later time counts from
  // the next start on.
  for (int i = 0; i < mKeyFrameIndex; ++i) {
    if (mKeyFrameBuffer[i]->mTime > mTotalTime) mTotalTime = mKeyFrameBuffer[i]->mTime;
  }
}

void YGUIAnimeSet::StopAnime() {
  if (mCurrentAnimeSetState != EAS_DoingAnime) return;
  mCurrentTime = 0;
  mCurrentAnimeSetState = EAS_Idle;
  // A set always rests on its last pose, also when stopped half-way.
  if (mKeyFrameIndex > 0) mCurrentFrame = *mKeyFrameBuffer[mKeyFrameIndex - 1];
}

void YGUIAnimeSet::Update(float dt) {
  if (mCurrentAnimeSetState == EAS_DoingAnime) CapculateSweepFrame(dt);
}

void YGUIAnimeSet::CapculateSweepFrame(float dt) {
  XASSERT(mCurrentAnimeSetState == EAS_DoingAnime);
  mCurrentTime += YGUIToFixed(dt);
  if (mCurrentTime >= mTotalTime) {
    StopAnime();
    return;
  }
  if (mKeyFrameIndex == 0) return;
  const YGUIAnimeFrame& first = *mKeyFrameBuffer[0];
  if (mCurrentTime >= first.mTime) {
    for (int i = 1; i < mKeyFrameIndex; ++i) {
      const YGUIAnimeFrame& b = *mKeyFrameBuffer[i];
      // Strictly below: keys with equal times are passed over.
      if (mCurrentTime < b.mTime) {
        const YGUIAnimeFrame& a = *mKeyFrameBuffer[i - 1];
        const long long t = ((long long)(mCurrentTime - a.mTime) << 12) / (b.mTime - a.mTime);
        mCurrentFrame.mX = a.mX + (int)(((long long)(b.mX - a.mX) * t + 2048) >> 12);
        mCurrentFrame.mY = a.mY + (int)(((long long)(b.mY - a.mY) * t + 2048) >> 12);
        mCurrentFrame.mAngle = a.mAngle + (int)(((long long)(b.mAngle - a.mAngle) * t + 2048) >> 12);
        mCurrentFrame.mScaleX = a.mScaleX + (int)(((long long)(b.mScaleX - a.mScaleX) * t + 2048) >> 12);
        mCurrentFrame.mScaleY = a.mScaleY + (int)(((long long)(b.mScaleY - a.mScaleY) * t + 2048) >> 12);
        mCurrentFrame.mOpacity = a.mOpacity + (int)(((long long)(b.mOpacity - a.mOpacity) * t + 2048) >> 12);
        return;
      }
    }
  }
  // Before the first key, or past the last one: the first key's pose.
  mCurrentFrame.mX = first.mX;
  mCurrentFrame.mY = first.mY;
  mCurrentFrame.mAngle = first.mAngle;
  mCurrentFrame.mScaleX = first.mScaleX;
  mCurrentFrame.mScaleY = first.mScaleY;
  mCurrentFrame.mOpacity = first.mOpacity;
}
