#ifndef SRC_SOUND_SOUNDNODERANDOM_H
#define SRC_SOUND_SOUNDNODERANDOM_H
// Plays one of its children, drawn at random, never the same one twice in a
// row. The weights are read and kept, but the draw is uniform: they only tell
// how many children there are. A Random node wants two children at least: with
// one, its second play draws for ever.
#include <vector>

#include "Sound/SoundNodeBase.h"

class SoundNodeRandom : public SoundNodeBase {
 public:
  explicit SoundNodeRandom(SoundCue& cue);

  void parse(SoundParams& params) override;
  // "Weights": one float per child, ";" between them; missing ones are 1.0.
  void doLoad(rapidxml::xml_node<char>* element) override;

  const std::vector<float>& getWeights() const { return mWeights; }
  int getLastIndex() const { return mLastIndex; }

 private:
  std::vector<float> mWeights;
  int mLastIndex;
};

#endif
