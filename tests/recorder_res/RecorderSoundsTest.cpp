// The recorder's sound project: every cue the scenes play is there and names a
// WAV file that libsndfile reads as 16-bit mono at the mixer's rate; and the
// spoken sample that the headless microphone plays.
#include <gtest/gtest.h>
#include <sndfile.h>

#include <string>

#include "RecorderResSupport.h"
#include "Sound/SoundCue.h"
#include "Sound/SoundProject.h"

namespace {

struct WavFacts {
  bool open = false;
  int channels = 0, rate = 0, format = 0;
  double seconds = 0;
};

WavFacts Inspect(const std::string& path) {
  WavFacts facts;
  SF_INFO info = {};
  SNDFILE* f = sf_open(path.c_str(), SFM_READ, &info);
  if (!f) return facts;
  facts.open = true;
  facts.channels = info.channels;
  facts.rate = info.samplerate;
  facts.format = info.format;
  facts.seconds = info.samplerate ? double(info.frames) / info.samplerate : 0;
  sf_close(f);
  return facts;
}

const char* const kHints[] = {"HL_ToRecord", "HL_ToSave", "h_BN_OopsYrOtOfMmryVstYrGllryT_3"};
const char* const kEffects[] = {"SFX_RECORD", "SFX_STOP", "SFX_PLAY", "SFX_PAUSE", "SFX_BACK"};

class RecorderSoundsTest : public testing::Test {
 protected:
  void SetUp() override { project.loadFromFile(restest::TitleRoot() + "/res/Sound/MicrophoneWidget.soundproject"); }
  // The cue's file, checked: present, WAV, 16-bit mono at 22050 Hz.
  WavFacts CueFile(const char* name) {
    SoundCue* cue = project.getSoundCueByName(name);
    EXPECT_NE(nullptr, cue) << name;
    if (!cue) return WavFacts();
    EXPECT_NE(nullptr, cue->getFirstNode()) << name;
    const std::string file = cue->getFileName();
    EXPECT_FALSE(file.empty()) << name;
    const WavFacts facts = Inspect(restest::TitleRoot() + "/res/Sound/" + file);
    EXPECT_TRUE(facts.open) << name << ": " << file;
    EXPECT_EQ(1, facts.channels) << name;
    EXPECT_EQ(22050, facts.rate) << name;
    EXPECT_EQ(SF_FORMAT_WAV | SF_FORMAT_PCM_16, facts.format) << name;
    return facts;
  }
  SoundProject project;
};

TEST_F(RecorderSoundsTest, EveryHintIsASpokenWavOfAFewSeconds) {
  for (const char* name : kHints) {
    const WavFacts facts = CueFile(name);
    EXPECT_GT(facts.seconds, 1.0) << name;
    EXPECT_LT(facts.seconds, 6.0) << name;
  }
}

// Capture starts only when "SFX_RECORD" has ended, and back ends the title only
// after "SFX_BACK": the effects are short.
TEST_F(RecorderSoundsTest, EveryEffectIsAShortWav) {
  for (const char* name : kEffects) {
    const WavFacts facts = CueFile(name);
    EXPECT_GT(facts.seconds, 0.05) << name;
    EXPECT_LT(facts.seconds, 0.8) << name;
  }
}

TEST_F(RecorderSoundsTest, HintsFollowTheVoiceVolumeAndNoCueIsQuietened) {
  for (const char* name : kHints) {
    SoundCue* cue = project.getSoundCueByName(name);
    ASSERT_NE(nullptr, cue) << name;
    EXPECT_EQ(0, cue->isMusic()) << name;
    EXPECT_EQ(100, cue->getVolume()) << name;
  }
  for (const char* name : kEffects) {
    SoundCue* cue = project.getSoundCueByName(name);
    ASSERT_NE(nullptr, cue) << name;
    EXPECT_GE(cue->getVolume(), 80) << name;
  }
}

TEST(RecorderVoiceSample, IsASpokenWavOfAFewSecondsAtTheMixersRate) {
  const WavFacts facts = Inspect(restest::TitleRoot() + "/host/demo/voice-sample.wav");
  ASSERT_TRUE(facts.open);
  EXPECT_EQ(1, facts.channels);
  EXPECT_EQ(22050, facts.rate);
  EXPECT_EQ(SF_FORMAT_WAV | SF_FORMAT_PCM_16, facts.format);
  EXPECT_GT(facts.seconds, 3.0);
  EXPECT_LT(facts.seconds, 6.0);
}

}  // namespace
