#ifndef SRC_RENDERSYSTEM_ANIMATIONCONTROLLER_H
#define SRC_RENDERSYSTEM_ANIMATIONCONTROLLER_H
// Plays one animation of a set at a time: moves its clock, finds the key that
// stands now and tells a handler about the keys it passes. Plain logic: it draws
// nothing and allocates nothing while it plays.
#include <stdint.h>

#include "RenderSystem/AnimationKeyFrame.h"
#include "RenderSystem/AnimationTrack.h"

class AnimationData;
class AnimationPlaybackEventHandler;
class AnimationSet;

class AnimationController {
 public:
  enum EState {
    eState_Stopped = 0,
    eState_Playing = 1,
    eState_Paused = 2,  // the clock stands, keys are still looked up
  };

  static constexpr uint8_t kNoKey = 255;

  explicit AnimationController(AnimationSet* set);
  static AnimationController* CreateAnimationController(AnimationSet* set);

  int GetTrackDesc(AnimationTrack* track);
  int SetTrackDesc(const AnimationTrack* track);
  // Null when the animation or the key is out of range.
  const AnimationKeyFrame* GetKeyFrame(unsigned int anim, unsigned int key) const;
  void ResetTime();
  void Stop();
  // The flag has no effect.
  void AdvanceTime(float seconds, bool);

  AnimationPlaybackEventHandler* mHandler;  // null when none
  AnimationSet* mSet;                       // not owned
  AnimationTrack mTrack;
  AnimationKeyFrame mCurrent;  // the key that stands now, as last copied
  uint8_t mChanged;            // the last AdvanceTime found a key
  uint8_t mNewKey;             // and it differs from the one before
  uint8_t mLastKey;            // the key last reached; kNoKey for none
  AnimationSet* mCurrentSet;   // mSet, from the first key found on
  int32_t mState;              // EState

 private:
  void MoveClock(const AnimationData& anim, float step);
  void VisitKey(const AnimationData& anim, int index);
  void Tell(int code);

  AnimationController(const AnimationController&);
  AnimationController& operator=(const AnimationController&);
};

#endif
