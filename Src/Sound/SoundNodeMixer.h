#ifndef SRC_SOUND_SOUNDNODEMIXER_H
#define SRC_SOUND_SOUNDNODEMIXER_H
// Plays all its children at once, with the same parameters.
#include "Sound/SoundNodeBase.h"

class SoundNodeMixer : public SoundNodeBase {
 public:
  explicit SoundNodeMixer(SoundCue& cue);

  void parse(SoundParams& params) override;
  // No attributes of its own.
  void doLoad(rapidxml::xml_node<char>* element) override;
};

#endif
