#include "RenderSystem/AnimationData.h"

#include <string.h>

AnimationData::AnimationData() : mKeyCount(0), mPlayMode(0), mDuration(0.0f), mScale(1.0f), mKeys(0) {
  memset(mName, 0, sizeof mName);
}

AnimationData::~AnimationData() { delete[] mKeys; }

unsigned AnimationData::SearchKey(float time) const {
  unsigned lo = 0;
  unsigned hi = mKeyCount - 1;
  unsigned mid = hi / 2;
  while (mid != lo) {
    if (time > mKeys[mid].mTime) {
      lo = mid;
    } else {
      hi = mid;
    }
    mid = (lo + hi) / 2;
  }
  return mid;
}

AnimationKeyFrame* AnimationData::FindKeyFrame(float time, int* outIndex) {
  int index = -1;
  AnimationKeyFrame* key = 0;
  if (mKeyCount > 0) {
    index = mKeyCount - 1 < 2 ? 0 : int(SearchKey(time));
    key = &mKeys[index];
  }
  if (outIndex != 0) *outIndex = index;
  return key;
}
