#ifndef SRC_RENDERSYSTEM_ANIMATIONPLAYBACKEVENTHANDLER_H
#define SRC_RENDERSYSTEM_ANIMATIONPLAYBACKEVENTHANDLER_H
// Told by an animation controller what happens while it plays. It is called inside
// the controller's calls, on their thread, and must not destroy the controller.
struct AnimationTrack;

class AnimationPlaybackEventHandler {
 public:
  enum EEventCode {
    eEvent_Started = 1,   // the track was enabled through SetTrackDesc
    eEvent_Ended = 2,     // play ended, or the track was disabled through SetTrackDesc
    eEvent_KeyEvent = 3,  // a key with an event was passed; see the track's mEvent
    eEvent_KeyValue = 4,  // a key with a value was passed; see the track's mEventValue
  };

  virtual ~AnimationPlaybackEventHandler() {}
  virtual void OnAnimationPlaybackEvent(int code, AnimationTrack* track) = 0;
};

#endif
