#ifndef SRC_RENDERSYSTEM_ANIMATIONKEYFRAME_H
#define SRC_RENDERSYSTEM_ANIMATIONKEYFRAME_H
// One key of a sprite animation: which atlas frame shows from `mTime` on, where,
// with which boxes, and the event and value it reports when play passes it.
#include <stdint.h>

// A keyframe's four boxes. Box 0 anchors the frame, so that frames of different
// sizes stay in place; the other three are the title's to use.
enum eKeyFrameBoxIndex {
  eKeyFrameBox_Align = 0,
  eKeyFrameBox_Collision = 1,
  eKeyFrameBox_Attack = 2,
  eKeyFrameBox_Extra = 3,
  eKeyFrameBox_Num = 4,
};

struct AnimationKeyFrame {
  // Both mean "no value": a key with either reports none.
  static constexpr uint32_t kNoValue = 0x2539A7;
  static constexpr uint16_t kNoSprite = 0xFFFF;

  AnimationKeyFrame() : mSpriteIndex(kNoSprite), mOffsetX(0), mOffsetY(0), mTime(0.0f), mEvent(0), mValue(0) {
    for (int i = 0; i < eKeyFrameBox_Num; ++i) mBoxIndex[i] = 0;
  }

  bool HasValue() const { return mValue != 0 && mValue != kNoValue; }

  uint16_t mBoxIndex[eKeyFrameBox_Num];  // into the set's box table
  uint16_t mSpriteIndex;                 // frame in the atlas
  int16_t mOffsetX;                      // pixels
  int16_t mOffsetY;
  float mTime;                           // seconds from the start of the animation
  uint8_t mEvent;                        // 0 for none
  uint32_t mValue;
};

#endif
