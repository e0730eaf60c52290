#include "YGUI/YGUIAnimation.h"

#include "Base/XAssert.h"
#include "YGUI/YGUIAnimeSet.h"

YGUIAnimation::YGUIAnimation(int numAnimeSet)
    : mNumAnimeSet(numAnimeSet), mAnimeSetBuffer(0), mAnimeSetIndex(0), mState(0), mCurrentAnimeIndex(0) {}

void YGUIAnimation::Initialize() {
  XASSERT(mNumAnimeSet != 0);
  Destroy();
  // Cleared, so that a slot that never got a set reads as empty.
  if (mNumAnimeSet > 0) mAnimeSetBuffer = new YGUIAnimeSet*[mNumAnimeSet]();
  XASSERT(mAnimeSetBuffer);
}

void YGUIAnimation::Destroy() {
  if (mAnimeSetBuffer) {
    for (int i = 0; i < mAnimeSetIndex; ++i) {
      mAnimeSetBuffer[i]->Destroy();
      delete mAnimeSetBuffer[i];
    }
  }
  delete[] mAnimeSetBuffer;
  mAnimeSetBuffer = 0;
  mAnimeSetIndex = 0;
}

int YGUIAnimation::AddAnimeSet(YGUIAnimeSet* set) {
  XASSERT(mAnimeSetIndex >= 0);
  if (!mAnimeSetBuffer || mAnimeSetIndex >= mNumAnimeSet) return 0;
  mAnimeSetBuffer[mAnimeSetIndex++] = set;
  return 1;
}

bool YGUIAnimation::IsAnimationExist(const std::string& name) const {
  for (int i = 0; i < mAnimeSetIndex; ++i) {
    if (mAnimeSetBuffer[i]->mName == name) return true;
  }
  return false;
}

int YGUIAnimation::PlayAnime(const std::string& name) {
  // A running animation isn't interrupted.
  if (mState == 1) return 0;
  if (!mAnimeSetBuffer || mAnimeSetIndex == 0) return 0;
  for (int i = 0; i < mAnimeSetIndex; ++i) {
    if (mAnimeSetBuffer[i]->mName == name) {
      mAnimeSetBuffer[i]->PlayAnime();
      mCurrentAnimeIndex = i;
      mState = 1;
      return 1;
    }
  }
  return 0;
}

void YGUIAnimation::StopAnime() {
  if (mState != 1) return;
  XASSERT(mAnimeSetBuffer[ mCurrentAnimeIndex ]);
  mAnimeSetBuffer[mCurrentAnimeIndex]->StopAnime();
  mState = 0;
}

void YGUIAnimation::Update(float dt) {
  if (mState != 1) return;
  YGUIAnimeSet* set = mAnimeSetBuffer[mCurrentAnimeIndex];
  set->Update(dt);
  if (set->IsAnimeFinished()) StopAnime();
}

YGUIAnimeSet* YGUIAnimation::GetCurrentAnimeSet() const {
  if (!mAnimeSetBuffer || mCurrentAnimeIndex < 0 || mCurrentAnimeIndex >= mNumAnimeSet) return 0;
  return mAnimeSetBuffer[mCurrentAnimeIndex];
}

const YGUIAnimeFrame* YGUIAnimation::GetCurrentFrame() const {
  const YGUIAnimeSet* set = GetCurrentAnimeSet();
  return set ? &set->mCurrentFrame : 0;
}
