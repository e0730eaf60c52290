#include "Sound/AudioDevice.h"

#include <assert.h>
#include <stddef.h>

#include "Sound/SoundCue.h"
#include "Sound/SoundProject.h"

// One more layer, so that NULL is expanded before the expression is quoted.
#define AUDIO_ASSERT(expr) assert(expr)

AudioDevice* AudioDevice::sAudioDevice = 0;

AudioDevice* AudioDevice::sInstance() {
  AUDIO_ASSERT(sAudioDevice != NULL);
  return sAudioDevice;
}

void AudioDevice::sDestroy() {
  if (sAudioDevice != 0) {
    delete sAudioDevice;
    // Cleared, so that a later sInstance fails its check instead of using freed memory.
    sAudioDevice = 0;
  }
}

// The application sets the volumes at start-up; until then both are full.
AudioDevice::AudioDevice() : mSoundProject(0), mMusicVolume(100), mVoiceVolume(100), mVoiceVolumeFloor(false) {}

AudioDevice::~AudioDevice() {
  // Normally Destroy has deleted it already.
  delete mSoundProject;
}

void AudioDevice::Initialize(const std::string& projectFile) {
  delete mSoundProject;
  mSoundProject = new SoundProject();
  assert(mSoundProject);
  mSoundProject->loadFromFile(projectFile);
}

void AudioDevice::Destroy() {
  delete mSoundProject;
  mSoundProject = 0;
}

void AudioDevice::setMusicVolume(int volume) {
  if (volume < 0) volume = 0;
  if (volume > 100) volume = 100;
  mMusicVolume = volume;
}

void AudioDevice::setVoiceVolume(int volume) {
  if (volume < 0) volume = 0;
  if (volume > 100) volume = 100;
  mVoiceVolume = volume;
}

int AudioDevice::getVoiceVolume() const {
  if (mVoiceVolumeFloor && mVoiceVolume < 40) return 40;
  return mVoiceVolume;
}

const SoundCue* AudioDevice::getSoundCue(const std::string& name) const {
  return mSoundProject != 0 ? mSoundProject->getSoundCueByName(name) : 0;
}

bool AudioDevice::existSoundCue(const std::string& name) const { return getSoundCue(name) != 0; }

std::string AudioDevice::getSoundCueNameByHashValue(unsigned int hash) const {
  return mSoundProject->getSoundCueNameByHashValue(hash);
}
