#ifndef SRC_SOUND_SOUNDPARAMS_H
#define SRC_SOUND_SOUNDPARAMS_H

// What travels down a cue's graph to each file it plays.
struct SoundParams {
  SoundParams() : mLoopCount(0), mVolume(100), mPan(0) {}

  int mLoopCount;  // 0 plays once, -1 for ever, else that many times
  int mVolume;     // 0 to 100
  int mPan;        // passed on as a signed byte
};

#endif
