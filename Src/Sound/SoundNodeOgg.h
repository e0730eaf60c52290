#ifndef SRC_SOUND_SOUNDNODEOGG_H
#define SRC_SOUND_SOUNDNODEOGG_H
// A leaf: one .ogg file under "res/Sound/".
#include "Sound/SoundNodeBase.h"

class SoundNodeOgg : public SoundNodeBase {
 public:
  explicit SoundNodeOgg(SoundCue& cue);

  // Starts the file on the audio device with `params`.
  void parse(SoundParams& params) override;
  std::string getFileName() const override { return mFileName; }
  bool isLeafNode() const override { return true; }
  // "FileName"; a name that doesn't end in ".ogg" is cleared.
  void doLoad(rapidxml::xml_node<char>* element) override;

 private:
  std::string mFileName;
};

#endif
