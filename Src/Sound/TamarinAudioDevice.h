#ifndef SRC_SOUND_TAMARINAUDIODEVICE_H
#define SRC_SOUND_TAMARINAUDIODEVICE_H
// The audio device on the platform's audio service: the list of cues that are
// sounding, their fades, the music and voice volumes applied each frame, and
// the plain channel.
#include <string>
#include <vector>

#include "CAudioSvc.h"
#include "Sound/AudioDevice.h"
#include "Sound/SoundParams.h"

// "res/Sound/" followed by `file`.
std::string gGetRelativePathFromSoundCueName(const std::string& file);

class TamarinAudioDevice : public AudioDevice {
 public:
  // A cue that was started and hasn't been removed yet.
  struct PlayingSoundCue {
    PlayingSoundCue(const SoundCue* cue, float fadeInTime);
    // Records move within the playing list, so copies are whole copies.
    PlayingSoundCue(const PlayingSoundCue& other);
    PlayingSoundCue& operator=(const PlayingSoundCue& other);

    const SoundCue* mSoundCue;
    float mFadeInTime;    // seconds; 0 for none
    float mFadeOutStart;  // on the mTime clock; -1 for no fade-out
    float mFadeOutEnd;
    float mTime;  // seconds since the cue started
    SoundParams mParams;
    bool mIsWave;  // kind of the sound last started for the cue
    bool mIsOgg;
    std::vector<tAudioID> mAudioIds;
  };

  // Makes the instance of AudioDevice.
  static TamarinAudioDevice* sCreate();

  TamarinAudioDevice();
  // Resumes everything, stops everything firmly, and lets the service go.
  ~TamarinAudioDevice() override;

  void playSoundCue(const std::string& name, float fadeIn = 0.0f) override;
  void stopSoundCue(const std::string& name, float fadeOut = 0.0f) override;
  void stopSoundCue(const SoundCue* cue) override;
  void update(float dt) override;
  bool isSoundCuePlaying(const std::string& name) const override;
  bool isSoundCuePlaying(const SoundCue* cue) const override;
  bool isAnySoundPlaying() const override;
  void pauseAll() override;
  void unPauseAll() override;
  void pauseAllVoice() override;
  void unPauseAllVoice() override;
  void stopAll() override;
  void stopAllFirm() override;
  void stopAllWithoutBGM() override;
  void stopBGM() override;
  void playSound(const std::string& file, const SoundParams& params) override;
  void playSoundWithoutCue(const std::string& file) override;
  void pauseSoundWithoutCue() override;
  void unPauseSoundWithoutCue() override;
  void stopSoundWithoutCue() override;
  bool isSoundWithOutCuePlaying() override;
  unsigned int getSoundTime() override;
  void setSoundTime(unsigned int time) override;

  // The application's own suspension: a pause the user asked for outlives it.
  void suspend();
  void resume();

  // Points the service at the running title's folder.
  void ResetAudioDefaultPath();

 protected:
  // The volume of a cue now, with its fades and the music or voice volume.
  int computeVolume(const PlayingSoundCue& playing) const;
  // Takes the record's sounds off the wave and Ogg counters.
  void countOff(const PlayingSoundCue& playing);

  Vantrel::Solva::CAudioSvc* mSystem;  // owned
  std::vector<PlayingSoundCue> mPlayingCues;
  PlayingSoundCue* mSoundCueToPlay;  // the record filled while a cue's graph is parsed
  // Signed: a cue stopped by name is counted off twice, which may take them
  // below zero and so leave room for more cues.
  int mNumWave;
  int mNumOgg;
  tAudioID mSoundWithoutCue;
  int mPaused;
};

#endif
