#pragma once
// A fresh device on a virtual clock at 0, with a title folder in a temporary
// place holding res/Sound/, and helpers to write sound projects there.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>
#include <vector>

#include "Sound/AudioDevice.h"
#include "Sound/SoundCue.h"
#include "Sound/SoundProject.h"
#include "Sound/TamarinAudioDevice.h"
#include "solva/Audio.h"
#include "solva/Clock.h"
#include "solva/Device.h"
#include "support/TestSupport.h"
#include "support/sound/SoundFiles.h"

// The audio device with its bookkeeping in view.
class ProbedAudioDevice : public TamarinAudioDevice {
 public:
  static ProbedAudioDevice* sCreate() {
    ProbedAudioDevice* device = new ProbedAudioDevice();
    sAudioDevice = device;
    return device;
  }
  static ProbedAudioDevice* sProbe() { return static_cast<ProbedAudioDevice*>(sAudioDevice); }

  int numWave() const { return mNumWave; }
  int numOgg() const { return mNumOgg; }
  int paused() const { return mPaused; }
  tAudioID soundWithoutCue() const { return mSoundWithoutCue; }
  const std::vector<PlayingSoundCue>& playingCues() const { return mPlayingCues; }
  void setVoiceVolumeFloor(bool floor) { mVoiceVolumeFloor = floor; }
  void setCounters(int numWave, int numOgg) {
    mNumWave = numWave;
    mNumOgg = numOgg;
  }
};

class SoundTest : public testing::Test {
 protected:
  void SetUp() override {
    solva::ResetDevice();
    solva::SetClockMode(solva::ClockMode::Virtual, 0);
    solva::SetTitlePath(mTitle.path());
    mkdir(mTitle.file("res").c_str(), 0755);
    mkdir(mTitle.file("res/Sound").c_str(), 0755);
  }
  void TearDown() override {
    AudioDevice::sDestroy();
    solva::CloseSpeaker();
    solva::ResetDevice();
    solva::SetClockMode(solva::ClockMode::Real);
  }

  std::string soundFile(const std::string& name) const { return mTitle.file("res/Sound/" + name); }
  std::string projectPath() const { return mTitle.file("res/Sound/Test.soundproject"); }

  // Writes `body` (the groups) inside a root element as the project file.
  std::string writeProject(const std::string& body) const {
    zvtest::WriteText(projectPath(), "<SoundProject>\n" + body + "</SoundProject>\n");
    return projectPath();
  }

  // A device loaded with `body`.
  ProbedAudioDevice* makeDevice(const std::string& body) {
    ProbedAudioDevice* device = ProbedAudioDevice::sCreate();
    device->Initialize(writeProject(body));
    return device;
  }

  static std::vector<solva::AudioEvent> eventsOf(solva::AudioEventKind kind) {
    std::vector<solva::AudioEvent> found;
    for (const solva::AudioEvent& event : solva::AudioEvents()) {
      if (event.kind == kind) found.push_back(event);
    }
    return found;
  }

  zvtest::TempDir mTitle;
};
