#include "Sound/TamarinAudioDevice.h"

#include <assert.h>
#include <stdio.h>

#include "CSystemData.h"
#include "Sound/SoundCue.h"
#include "Sound/SoundNodeBase.h"

namespace {

// A new cue starts only while fewer wave sounds and fewer Ogg sounds count.
const int kMaxWaveSounds = 16;
const int kMaxOggSounds = 3;

// The payload that stands for "for ever".
const U32 kLoopForever = 0x40000000;

}  // namespace

std::string gGetRelativePathFromSoundCueName(const std::string& file) { return "res/Sound/" + file; }

TamarinAudioDevice::PlayingSoundCue::PlayingSoundCue(const SoundCue* cue, float fadeInTime)
    : mSoundCue(cue),
      mFadeInTime(fadeInTime),
      mFadeOutStart(-1.0f),
      mFadeOutEnd(-1.0f),
      mTime(0.0f),
      mIsWave(false),
      mIsOgg(false) {}

TamarinAudioDevice::PlayingSoundCue::PlayingSoundCue(const PlayingSoundCue& other)
    : mSoundCue(other.mSoundCue),
      mFadeInTime(other.mFadeInTime),
      mFadeOutStart(other.mFadeOutStart),
      mFadeOutEnd(other.mFadeOutEnd),
      mTime(other.mTime),
      mParams(other.mParams),
      mIsWave(other.mIsWave),
      mIsOgg(other.mIsOgg),
      mAudioIds(other.mAudioIds) {}

TamarinAudioDevice::PlayingSoundCue& TamarinAudioDevice::PlayingSoundCue::operator=(const PlayingSoundCue& other) {
  if (this != &other) {
    mSoundCue = other.mSoundCue;
    mFadeInTime = other.mFadeInTime;
    mFadeOutStart = other.mFadeOutStart;
    mFadeOutEnd = other.mFadeOutEnd;
    mTime = other.mTime;
    mParams = other.mParams;
    mIsWave = other.mIsWave;
    mIsOgg = other.mIsOgg;
    mAudioIds = other.mAudioIds;
  }
  return *this;
}

TamarinAudioDevice* TamarinAudioDevice::sCreate() {
  TamarinAudioDevice* device = new TamarinAudioDevice();
  sAudioDevice = device;
  return device;
}

TamarinAudioDevice::TamarinAudioDevice()
    : mSystem(new Vantrel::Solva::CAudioSvc(NULL)),
      mSoundCueToPlay(0),
      mNumWave(0),
      mNumOgg(0),
      mSoundWithoutCue(kNoAudioID),
      mPaused(0) {
  ResetAudioDefaultPath();
}

TamarinAudioDevice::~TamarinAudioDevice() {
  mSystem->ResumeAllAudio();
  mPaused = 0;
  stopAllFirm();
  delete mSystem;
  mSystem = 0;
}

void TamarinAudioDevice::ResetAudioDefaultPath() {
  assert(mSystem);
  mSystem->SetAudioResourcePath(CSystemData::Instance()->GetCurrentTitlePath());
}

int TamarinAudioDevice::computeVolume(const PlayingSoundCue& playing) const {
  const SoundCue* cue = playing.mSoundCue;
  const float c = cue->isMusic() == 1 ? getMusicVolume() / 100.0f : getVoiceVolume() / 100.0f;
  float f = 1.0f;
  if (playing.mFadeInTime != 0.0f && playing.mFadeInTime >= playing.mTime) f = playing.mTime / playing.mFadeInTime;
  float g = 1.0f;
  if (playing.mFadeOutStart != -1.0f && playing.mFadeOutEnd != -1.0f && playing.mFadeOutStart <= playing.mTime &&
      playing.mTime <= playing.mFadeOutEnd) {
    const float length = playing.mFadeOutEnd - playing.mFadeOutStart;
    // A fade of no length is over at once (0 / 0 would be no volume at all).
    g = length > 0.0f ? 1.0f - (playing.mTime - playing.mFadeOutStart) / length : 0.0f;
  }
  return (int)(cue->getVolume() * f * g * c);
}

void TamarinAudioDevice::countOff(const PlayingSoundCue& playing) {
  for (size_t i = 0; i < playing.mAudioIds.size(); ++i) {
    if (playing.mIsWave) --mNumWave;
    if (playing.mIsOgg) --mNumOgg;
  }
}

void TamarinAudioDevice::playSoundCue(const std::string& name, float fadeIn) {
  // Over the limits the cue is dropped without a word.
  if (!(mNumWave < kMaxWaveSounds && mNumOgg < kMaxOggSounds)) return;
  const SoundCue* cue = getSoundCue(name);
  if (cue == 0) {
    if (!name.empty()) printf("\nSoundCue: %s is not found!\n", name.c_str());
    return;
  }
  if (cue->getFirstNode() == 0) return;

  SoundParams params;
  PlayingSoundCue playing(cue, fadeIn);
  params.mVolume = computeVolume(playing);

  mSoundCueToPlay = &playing;
  cue->getFirstNode()->parse(params);
  mSoundCueToPlay = 0;

  // Kept even when no sound started; the next update removes it.
  mPlayingCues.push_back(playing);
}

void TamarinAudioDevice::playSound(const std::string& file, const SoundParams& params) {
  if (file.empty()) return;
  const std::string::size_type dot = file.rfind('.');
  const std::string ending = dot != std::string::npos ? file.substr(dot) : std::string();
  std::string path;
  if (ending == ".wav") {
    path = "res/Sound/" + file;
    assert(mSoundCueToPlay != 0);
    mSoundCueToPlay->mIsWave = true;
    mSoundCueToPlay->mIsOgg = false;
    ++mNumWave;
  } else if (ending == ".ogg") {
    path = gGetRelativePathFromSoundCueName(file);
    assert(mSoundCueToPlay != 0);
    mSoundCueToPlay->mIsWave = false;
    mSoundCueToPlay->mIsOgg = true;
    ++mNumOgg;
  }

  U32 payload = 0;
  U32 flags = 0;
  if (params.mLoopCount == -1) {
    payload = kLoopForever;
    flags = kAudioRepeat;
  } else if (params.mLoopCount != 0) {
    payload = (U32)params.mLoopCount;
    flags = kAudioRepeat;
  }
  const tAudioID id = mSystem->StartAudio(path, (U8)params.mVolume, 0, (S8)params.mPan, NULL, payload, flags);
  // Only a leaf of a cue being played calls here; a call from elsewhere has no record to fill.
  if (mSoundCueToPlay != 0) mSoundCueToPlay->mAudioIds.push_back(id);
}

void TamarinAudioDevice::update(float dt) {
  for (size_t i = 0; i < mPlayingCues.size();) {
    PlayingSoundCue& playing = mPlayingCues[i];
    playing.mTime += dt;

    if (playing.mFadeOutStart != -1.0f && playing.mFadeOutEnd != -1.0f && playing.mTime > playing.mFadeOutEnd) {
      for (size_t k = 0; k < playing.mAudioIds.size(); ++k) mSystem->StopAudio(playing.mAudioIds[k], 0);
      countOff(playing);
      mPlayingCues.erase(mPlayingCues.begin() + i);
      continue;
    }

    const int volume = computeVolume(playing);
    bool sounding = false;
    for (size_t k = 0; k < playing.mAudioIds.size(); ++k) {
      const tAudioID id = playing.mAudioIds[k];
      if (!mSystem->IsAudioPlaying(id)) {
        mSystem->StopAudio(id, 1);
      } else {
        mSystem->SetAudioVolume(id, (U8)(volume & 255));
        sounding = true;
      }
    }
    if (!sounding) {
      countOff(playing);
      mPlayingCues.erase(mPlayingCues.begin() + i);
      continue;
    }
    ++i;
  }

  if (mSoundWithoutCue != kNoAudioID && !mSystem->IsAudioPlaying(mSoundWithoutCue)) {
    mSystem->StopAudio(mSoundWithoutCue, 0);
    mSoundWithoutCue = kNoAudioID;
  }
}

void TamarinAudioDevice::stopSoundCue(const std::string& name, float fadeOut) {
  for (size_t i = 0; i < mPlayingCues.size(); ++i) {
    PlayingSoundCue& playing = mPlayingCues[i];
    if (playing.mSoundCue->getName() != name) continue;
    playing.mFadeOutStart = playing.mTime;
    playing.mFadeOutEnd = playing.mTime + fadeOut;
    // Counted off now, and again when update removes the record.
    if (playing.mIsOgg) --mNumOgg;
    if (playing.mIsWave) --mNumWave;
    return;
  }
}

void TamarinAudioDevice::stopSoundCue(const SoundCue* cue) { stopSoundCue(cue->getName(), 0.0f); }

bool TamarinAudioDevice::isSoundCuePlaying(const std::string& name) const {
  for (size_t i = 0; i < mPlayingCues.size(); ++i) {
    if (mPlayingCues[i].mSoundCue->getName() == name) return true;
  }
  return false;
}

bool TamarinAudioDevice::isSoundCuePlaying(const SoundCue* cue) const { return isSoundCuePlaying(cue->getName()); }

bool TamarinAudioDevice::isAnySoundPlaying() const { return false; }

void TamarinAudioDevice::pauseAll() {
  mSystem->PauseAllAudio();
  mPaused = 1;
}

void TamarinAudioDevice::unPauseAll() {
  mSystem->ResumeAllAudio();
  mPaused = 0;
}

void TamarinAudioDevice::pauseAllVoice() {
  for (size_t i = 0; i < mPlayingCues.size(); ++i) {
    if (mPlayingCues[i].mSoundCue->isMusic() != 0) continue;
    for (size_t k = 0; k < mPlayingCues[i].mAudioIds.size(); ++k) mSystem->PauseAudio(mPlayingCues[i].mAudioIds[k]);
  }
}

void TamarinAudioDevice::unPauseAllVoice() {
  for (size_t i = 0; i < mPlayingCues.size(); ++i) {
    if (mPlayingCues[i].mSoundCue->isMusic() != 0) continue;
    for (size_t k = 0; k < mPlayingCues[i].mAudioIds.size(); ++k) mSystem->ResumeAudio(mPlayingCues[i].mAudioIds[k]);
  }
}

void TamarinAudioDevice::stopAll() {
  for (size_t i = 0; i < mPlayingCues.size(); ++i) {
    for (size_t k = 0; k < mPlayingCues[i].mAudioIds.size(); ++k) mSystem->StopAudio(mPlayingCues[i].mAudioIds[k], 0);
  }
  if (mSoundWithoutCue != kNoAudioID) {
    mSystem->StopAudio(mSoundWithoutCue, 0);
    mSoundWithoutCue = kNoAudioID;
  }
  mSystem->StopAllAudio();
}

void TamarinAudioDevice::stopAllFirm() {
  puts("TamarinAudioDevice::stopAllFirm()");
  stopAll();
  while (!mPlayingCues.empty()) update(0.0f);
}

void TamarinAudioDevice::stopAllWithoutBGM() {
  for (size_t i = 0; i < mPlayingCues.size(); ++i) {
    if (mPlayingCues[i].mSoundCue->isMusic() == 1) continue;
    for (size_t k = 0; k < mPlayingCues[i].mAudioIds.size(); ++k) mSystem->StopAudio(mPlayingCues[i].mAudioIds[k], 0);
  }
  stopSoundWithoutCue();
}

void TamarinAudioDevice::stopBGM() {
  for (size_t i = 0; i < mPlayingCues.size(); ++i) {
    if (mPlayingCues[i].mSoundCue->isMusic() != 1) continue;
    for (size_t k = 0; k < mPlayingCues[i].mAudioIds.size(); ++k) mSystem->StopAudio(mPlayingCues[i].mAudioIds[k], 0);
  }
}

void TamarinAudioDevice::suspend() {
  if (mPaused == 0) {
    pauseAll();
    // The flag stays clear: this pause is not the user's.
    mPaused = 0;
  }
}

void TamarinAudioDevice::resume() {
  if (mPaused == 0) unPauseAll();
}

void TamarinAudioDevice::playSoundWithoutCue(const std::string& file) {
  stopSoundWithoutCue();
  mSoundWithoutCue = mSystem->StartAudio(file, 100, 255, 0, NULL, 0, 0);
}

void TamarinAudioDevice::pauseSoundWithoutCue() {
  if (mSoundWithoutCue != kNoAudioID) mSystem->PauseAudio(mSoundWithoutCue);
}

void TamarinAudioDevice::unPauseSoundWithoutCue() {
  if (mSoundWithoutCue != kNoAudioID) mSystem->ResumeAudio(mSoundWithoutCue);
}

void TamarinAudioDevice::stopSoundWithoutCue() {
  if (mSoundWithoutCue == kNoAudioID) return;
  mSystem->StopAudio(mSoundWithoutCue, 0);
  mSoundWithoutCue = kNoAudioID;
}

bool TamarinAudioDevice::isSoundWithOutCuePlaying() {
  if (mSoundWithoutCue == kNoAudioID) return false;
  return mSystem->IsAudioPlaying(mSoundWithoutCue);
}

unsigned int TamarinAudioDevice::getSoundTime() {
  if (mSoundWithoutCue == kNoAudioID) return 0;
  return mSystem->GetAudioTime(mSoundWithoutCue);
}

void TamarinAudioDevice::setSoundTime(unsigned int time) {
  if (mSoundWithoutCue != kNoAudioID) mSystem->SeekAudioTime(mSoundWithoutCue, time);
}
