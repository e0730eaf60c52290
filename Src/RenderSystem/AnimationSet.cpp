#include "RenderSystem/AnimationSet.h"

#include <string.h>

#include "Base/File.h"
#include "Base/FileRecords.h"

namespace {
const unsigned kKeySize = 32;
const unsigned kBoxSize = 16;

void ReadKey(File& file, AnimationKeyFrame& key) {
  key.mSpriteIndex = uint16_t(file.readUInt());
  key.mOffsetX = int16_t(file.readUInt());
  key.mOffsetY = int16_t(file.readUInt());
  key.mTime = file.readFloat();
  for (int i = 0; i < eKeyFrameBox_Num; ++i) key.mBoxIndex[i] = file.readUShort();
  key.mEvent = uint8_t(file.readUInt());
  key.mValue = file.readUInt();
}

void ReadAnimation(File& file, unsigned fileSize, AnimationData& anim) {
  anim.mKeyCount = file.readUInt();
  anim.mPlayMode = file.readInt();
  anim.mDuration = file.readFloat();
  if (anim.mDuration == 0.0f) anim.mDuration = 1.0f;
  anim.mScale = file.readFloat();
  file.read(anim.mName, sizeof anim.mName, 1);
  anim.mKeyCount = RecordsLeftInFile(file, fileSize, anim.mKeyCount, kKeySize);
  if (anim.mKeyCount == 0) return;
  anim.mKeys = new AnimationKeyFrame[anim.mKeyCount];
  for (uint32_t k = 0; k < anim.mKeyCount; ++k) ReadKey(file, anim.mKeys[k]);
}

// A name of up to 16 bytes, with or without a terminator, equals `name`.
bool NameIs(const char (&stored)[16], const char* name) {
  const size_t length = strnlen(stored, sizeof stored);
  return strlen(name) == length && memcmp(stored, name, length) == 0;
}
}  // namespace

AnimationSet::AnimationSet() : mAnimCount(0), mAnimations(0), mBoxes(0), mBoxCount(0) {
  memset(mSetName, 0, sizeof mSetName);
  memset(mLayerNames, 0, sizeof mLayerNames);
}

AnimationSet::~AnimationSet() { Clear(); }

void AnimationSet::Clear() {
  delete[] mAnimations;
  mAnimations = 0;
  mAnimCount = 0;
  delete[] mBoxes;
  mBoxes = 0;
  mBoxCount = 0;
}

int AnimationSet::Import0(const char* path) {
  Clear();
  File file(path, "rb");
  if (!file.isOpened()) return 0;
  const unsigned fileSize = file.getFileSize();
  if (file.readUInt() != kMagic) return 0;
  file.readUChar();  // carried by the format, used by nothing
  const uint32_t animCount = file.readUInt();
  if (animCount > kMaxAnimations) return 0;
  memset(mSetName, 0, sizeof mSetName);
  file.read(mSetName, sizeof mSetName, 1);

  if (animCount > 0) mAnimations = new AnimationData[animCount];
  // Counts are trusted only as far as their records begin within the file.
  while (mAnimCount < animCount && file.tell() < long(fileSize)) ReadAnimation(file, fileSize, mAnimations[mAnimCount++]);

  memset(mLayerNames, 0, sizeof mLayerNames);
  file.read(mLayerNames, sizeof mLayerNames, 1);
  mBoxCount = int32_t(RecordsLeftInFile(file, fileSize, file.readUInt(), kBoxSize));
  if (mBoxCount > 0) mBoxes = new AnimationBox[mBoxCount];
  for (int32_t b = 0; b < mBoxCount; ++b) {
    mBoxes[b].mLeft = int16_t(file.readUInt());
    mBoxes[b].mTop = int16_t(file.readUInt());
    mBoxes[b].mRight = int16_t(file.readUInt());
    mBoxes[b].mBottom = int16_t(file.readUInt());
  }
  file.close();
  return 1;
}

int AnimationSet::GetAnimIndexByName(const char* name) const {
  for (uint32_t a = 0; a < mAnimCount; ++a) {
    if (NameIs(mAnimations[a].mName, name)) return int(a);
  }
  return -1;
}

AnimationData* AnimationSet::FindAnimationDataByName(const char* name) {
  const int index = GetAnimIndexByName(name);
  return index < 0 ? 0 : &mAnimations[index];
}

AnimationKeyFrame* AnimationSet::GetKeyframe(unsigned int anim, float time) {
  if (anim >= mAnimCount) return 0;
  return mAnimations[anim].FindKeyFrame(time, 0);
}
