#ifndef SRC_RENDERSYSTEM_ANIMATIONTRACK_H
#define SRC_RENDERSYSTEM_ANIMATIONTRACK_H
// The playing state of an animation controller, as callers read and set it whole.
#include <stdint.h>

struct AnimationTrack {
  enum EMode {
    eMode_Once = 0,
    eMode_Loop = 1,
    eMode_PingPong = 2,  // there and back
  };

  AnimationTrack()
      : mEnable(0), mSpeed(1.0f), mPosition(0.0f), mDuration(0.0f), mAnimIndex(255), mMode(0), mReverse(0),
        mEvent(0), mEventValue(0) {}

  int mEnable;          // 1 while playing
  float mSpeed;         // time multiplier
  float mPosition;      // the clock, in seconds
  float mDuration;      // for callers; the clock runs on the animation's own
  uint8_t mAnimIndex;   // 255 for none
  uint8_t mMode;        // EMode
  uint8_t mReverse;     // running backwards, in mode 2
  uint8_t mEvent;       // the event being reported
  uint32_t mEventValue; // the value being reported
};

#endif
