#include "Sound/SoundNodeMixer.h"

SoundNodeMixer::SoundNodeMixer(SoundCue& cue) : SoundNodeBase(cue, 1) {}

void SoundNodeMixer::parse(SoundParams& params) {
  for (size_t i = 0; i < mChildNodes.size(); ++i) {
    if (mChildNodes[i] != 0) mChildNodes[i]->parse(params);
  }
}

void SoundNodeMixer::doLoad(rapidxml::xml_node<char>* /*element*/) {}
