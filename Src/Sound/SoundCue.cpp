#include "Sound/SoundCue.h"

#include <assert.h>

#include "Sound/SoundNodeBase.h"

SoundCue::SoundCue() : mVolume(100), mPan(0), mFirstNode(0), mIsMusic(0), mIsBenSpeaking(0) {}

SoundCue::~SoundCue() {
  for (size_t i = 0; i < mNodes.size(); ++i) delete mNodes[i];
}

void SoundCue::setVolume(int volume) {
  if (volume < 0) volume = 0;
  if (volume > 100) volume = 100;
  mVolume = volume;
}

SoundNodeBase* SoundCue::getNodeByIndex(int index) const {
  if (index < 0 || index >= (int)mNodes.size()) return 0;
  return mNodes[index];
}

int SoundCue::getNodeIndex(SoundNodeBase* node) const {
  for (size_t i = 0; i < mNodes.size(); ++i) {
    if (mNodes[i] == node) return (int)i;
  }
  return -1;
}

std::string SoundCue::getFileName() const {
  for (size_t i = 0; i < mNodes.size(); ++i) {
    if (mNodes[i]->isLeafNode()) return mNodes[i]->getFileName();
  }
  assert(!"This is not a vaild sound cue, please check the sound project!");
  return std::string();
}
