#ifndef SRC_SOUND_AUDIODEVICE_H
#define SRC_SOUND_AUDIODEVICE_H
// The system's one point of sound output: cues from the sound project, and a
// plain channel for one file without a cue. The platform's implementation is
// TamarinAudioDevice.
#include <string>

#include "Sound/SoundParams.h"

class SoundCue;
class SoundProject;

class AudioDevice {
 public:
  // The instance; there must be one.
  static AudioDevice* sInstance();
  // Deletes the instance, if there is one.
  static void sDestroy();

  AudioDevice();
  virtual ~AudioDevice();

  virtual void playSoundCue(const std::string& name, float fadeIn = 0.0f) = 0;
  virtual void stopSoundCue(const std::string& name, float fadeOut = 0.0f) = 0;
  virtual void stopSoundCue(const SoundCue* cue) = 0;
  virtual void update(float dt) = 0;
  virtual bool isSoundCuePlaying(const std::string& name) const = 0;
  virtual bool isSoundCuePlaying(const SoundCue* cue) const = 0;
  virtual bool isAnySoundPlaying() const = 0;
  virtual void pauseAll() = 0;
  virtual void unPauseAll() = 0;
  virtual void pauseAllVoice() = 0;
  virtual void unPauseAllVoice() = 0;
  virtual void stopAll() = 0;
  virtual void stopAllFirm() = 0;
  virtual void stopAllWithoutBGM() = 0;
  virtual void stopBGM() = 0;
  // Called by the leaf nodes of a cue being played.
  virtual void playSound(const std::string& file, const SoundParams& params) = 0;
  virtual void playSoundWithoutCue(const std::string& file) = 0;
  virtual void pauseSoundWithoutCue() = 0;
  virtual void unPauseSoundWithoutCue() = 0;
  virtual void stopSoundWithoutCue() = 0;
  virtual bool isSoundWithOutCuePlaying() = 0;
  virtual unsigned int getSoundTime() = 0;
  virtual void setSoundTime(unsigned int time) = 0;

  // Loads the sound project (see SoundProject::loadFromFile for what it throws).
  void Initialize(const std::string& projectFile);
  // Deletes the project.
  void Destroy();

  int getMusicVolume() const { return mMusicVolume; }
  // Held in 0 to 100.
  void setMusicVolume(int volume);
  void setVoiceVolume(int volume);
  // Never below 40 while the floor is set.
  int getVoiceVolume() const;

  const SoundCue* getSoundCue(const std::string& name) const;
  bool existSoundCue(const std::string& name) const;
  std::string getSoundCueNameByHashValue(unsigned int hash) const;

 protected:
  static AudioDevice* sAudioDevice;

  SoundProject* mSoundProject;  // owned
  int mMusicVolume;
  int mVoiceVolume;
  bool mVoiceVolumeFloor;  // nothing here sets it

 private:
  AudioDevice(const AudioDevice&);
  AudioDevice& operator=(const AudioDevice&);
};

#endif
