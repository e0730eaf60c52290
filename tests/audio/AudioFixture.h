#pragma once
// A fresh device on a virtual clock at 0, whose title lives in a temporary
// folder, with its speaker writing a WAV file there.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "CAudioSvc.h"
#include "solva/Audio.h"
#include "solva/Clock.h"
#include "solva/Device.h"
#include "support/TestSupport.h"
#include "support/sound/SoundFiles.h"

class AudioTest : public testing::Test {
 protected:
  void SetUp() override {
    solva::ResetDevice();
    solva::SetClockMode(solva::ClockMode::Virtual, 0);
    solva::SetTitlePath(mTitle.path());
    std::string error;
    ASSERT_TRUE(solva::SetSpeaker(speakerFile(), &error)) << error;
  }
  void TearDown() override {
    solva::CloseSpeaker();
    solva::ResetDevice();
    solva::SetClockMode(solva::ClockMode::Real);
  }

  std::string speakerFile() const { return mTitle.file("speaker.wav"); }
  std::string titleFile(const std::string& name) const { return mTitle.file(name); }

  // Closes the speaker and reads what it wrote.
  zvtest::Sound heard() {
    solva::CloseSpeaker();
    return zvtest::ReadSound(speakerFile());
  }

  static std::vector<solva::AudioEvent> eventsOf(solva::AudioEventKind kind) {
    std::vector<solva::AudioEvent> found;
    for (const solva::AudioEvent& event : solva::AudioEvents()) {
      if (event.kind == kind) found.push_back(event);
    }
    return found;
  }

  // The mixing frames that `ms` of device time make (whole frames only).
  static size_t frameAt(uint64_t ms) { return size_t(ms * solva::kDefaultMixRate / 1000u); }

  zvtest::TempDir mTitle;
};

// The same, with an audio service whose relative paths start at the title's folder.
class AudioServiceTest : public AudioTest {
 protected:
  void SetUp() override {
    AudioTest::SetUp();
    ASSERT_EQ(kNoErr, mSvc.SetAudioResourcePath(mTitle.path()));
  }
  Vantrel::Solva::CAudioSvc mSvc;
};
