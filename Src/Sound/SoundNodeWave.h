#ifndef SRC_SOUND_SOUNDNODEWAVE_H
#define SRC_SOUND_SOUNDNODEWAVE_H
// A leaf: one .wav file under "res/Sound/".
#include "Sound/SoundNodeBase.h"

class SoundNodeWave : public SoundNodeBase {
 public:
  explicit SoundNodeWave(SoundCue& cue);

  // Starts the file on the audio device with `params`.
  void parse(SoundParams& params) override;
  std::string getFileName() const override { return mFileName; }
  bool isLeafNode() const override { return true; }
  // "FileName"; a name that doesn't end in ".wav" is cleared.
  void doLoad(rapidxml::xml_node<char>* element) override;

 private:
  std::string mFileName;
};

#endif
