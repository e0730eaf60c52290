#ifndef SRC_RENDERSYSTEM_ANIMATIONDATA_H
#define SRC_RENDERSYSTEM_ANIMATIONDATA_H
// One animation of a sprite: keys on a float time line, with how it plays.
#include <stdint.h>

#include "RenderSystem/AnimationKeyFrame.h"

class AnimationData {
 public:
  AnimationData();
  ~AnimationData();

  // The key that stands at `time`, with its index in `outIndex` (which may be
  // null); null and -1 for an animation without keys.
  AnimationKeyFrame* FindKeyFrame(float time, int* outIndex);

  // The search every caller shares. Since the middle rounds down, it never lands
  // on the last key of two or more: that key only closes the time line. Needs a
  // key at least.
  unsigned SearchKey(float time) const;

  uint32_t mKeyCount;
  int32_t mPlayMode;  // its low byte is the track's mode
  float mDuration;    // seconds; a stored 0.0 plays as 1.0
  float mScale;       // carried, read by nothing
  char mName[16];     // a terminator within them, unless the file had none
  AnimationKeyFrame* mKeys;

 private:
  AnimationData(const AnimationData&);
  AnimationData& operator=(const AnimationData&);
};

#endif
