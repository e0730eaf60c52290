#ifndef SRC_SOUND_SOUNDNODELOOP_H
#define SRC_SOUND_SOUNDNODELOOP_H
// Sets how often the files below it play.
#include "Sound/SoundNodeBase.h"

class SoundNodeLoop : public SoundNodeBase {
 public:
  explicit SoundNodeLoop(SoundCue& cue);

  // Sets the loop count of `params`, then plays the children with them.
  void parse(SoundParams& params) override;
  // "LoopCount", 0 when absent; -1 is for ever.
  void doLoad(rapidxml::xml_node<char>* element) override;

  int getLoopCount() const { return mLoopCount; }

 private:
  int mLoopCount;
};

#endif
