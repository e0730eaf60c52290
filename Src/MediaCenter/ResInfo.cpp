#include "MediaCenter/ResInfo.h"

#include <string.h>

namespace {
uint8* CopyPixels(const uint8* pixels, int width, int height) {
  if (pixels == 0 || width <= 0 || height <= 0) return 0;
  const size_t size = size_t(width) * size_t(height) * 3;
  uint8* copy = new uint8[size];
  memcpy(copy, pixels, size);
  return copy;
}
}  // namespace

ResInfo::ResInfo()
    : mResType(eRT_Invalid),
      mResId(-1),
      mMediaBuffer(0),
      mThumbBuffer(0),
      mMediaWidth(0),
      mMediaHeight(0),
      mThumbWidth(0),
      mThumbHeight(0),
      mImgWidth(0),
      mImgHeight(0),
      mLength(0.0f),
      mViewMode(0),
      mSSVersion(1) {}

ResInfo::ResInfo(const ResInfo& other)
    : mResType(other.mResType),
      mResId(other.mResId),
      mMediaBuffer(CopyPixels(other.mMediaBuffer, other.mMediaWidth, other.mMediaHeight)),
      mThumbBuffer(CopyPixels(other.mThumbBuffer, other.mThumbWidth, other.mThumbHeight)),
      mMediaWidth(other.mMediaWidth),
      mMediaHeight(other.mMediaHeight),
      mThumbWidth(other.mThumbWidth),
      mThumbHeight(other.mThumbHeight),
      mImgWidth(other.mImgWidth),
      mImgHeight(other.mImgHeight),
      mLength(other.mLength),
      mName(other.mName),
      mAudioSrcName(other.mAudioSrcName),
      mViewMode(other.mViewMode),
      mSSVersion(other.mSSVersion) {}

ResInfo& ResInfo::operator=(const ResInfo& other) {
  if (this == &other) return *this;
  delete[] mMediaBuffer;
  delete[] mThumbBuffer;
  mResType = other.mResType;
  mResId = other.mResId;
  mMediaBuffer = CopyPixels(other.mMediaBuffer, other.mMediaWidth, other.mMediaHeight);
  mThumbBuffer = CopyPixels(other.mThumbBuffer, other.mThumbWidth, other.mThumbHeight);
  mMediaWidth = other.mMediaWidth;
  mMediaHeight = other.mMediaHeight;
  mThumbWidth = other.mThumbWidth;
  mThumbHeight = other.mThumbHeight;
  mImgWidth = other.mImgWidth;
  mImgHeight = other.mImgHeight;
  mLength = other.mLength;
  mName = other.mName;
  mAudioSrcName = other.mAudioSrcName;
  mViewMode = other.mViewMode;
  mSSVersion = other.mSSVersion;
  return *this;
}

ResInfo::~ResInfo() {
  delete[] mMediaBuffer;
  delete[] mThumbBuffer;
}
