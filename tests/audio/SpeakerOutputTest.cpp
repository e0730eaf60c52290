// What the speaker's WAV file holds: the device's output, frame for frame of
// device time, judged through libsndfile.
#include <sys/stat.h>

#include <cmath>

#include "AudioFixture.h"

namespace {

using Vantrel::Solva::CAudioSvc;

const double kAmp = 0.5;
const double kToneRms = kAmp / std::sqrt(2.0);
const float kQuantum = 2.0f / 32768.0f;

class SpeakerOutputTest : public AudioTest {
 protected:
  void SetUp() override {
    AudioTest::SetUp();
    mkdir((mTitle.path() + "/res").c_str(), 0755);
    // Made before the title folder was set, so it is told it here.
    ASSERT_EQ(kNoErr, mSvc.SetAudioResourcePath(mTitle.path()));
  }
  CAudioSvc mSvc;
};

// Zero crossings upward in [from, to): cycles of a tone.
int RisingCrossings(const std::vector<float>& s, size_t from, size_t to) {
  int count = 0;
  for (size_t i = from + 1; i < to && i < s.size(); ++i) {
    if (s[i - 1] < 0 && s[i] >= 0) ++count;
  }
  return count;
}

TEST_F(SpeakerOutputTest, FileHoldsOneFrameForEachFrameOfDeviceTime) {
  solva::AdvanceClock(2000);
  const zvtest::Sound out = heard();
  EXPECT_EQ(solva::kDefaultMixRate, out.rate);
  EXPECT_EQ(1, out.channels);
  EXPECT_EQ(size_t(2 * solva::kDefaultMixRate), out.samples.size());
  EXPECT_EQ(0.0, zvtest::Rms(out.samples, 0, out.samples.size()));
}

TEST_F(SpeakerOutputTest, WavAtTheMixRateIsCopiedSampleForSample) {
  zvtest::WriteRamp(titleFile("res/ramp.wav"), solva::kDefaultMixRate, 1.0, 0.8);
  const zvtest::Sound source = zvtest::ReadSound(titleFile("res/ramp.wav"));
  solva::AdvanceClock(100);
  mSvc.StartAudio("res/ramp.wav", 100, 0, 0);
  solva::AdvanceClock(1100);
  const zvtest::Sound out = heard();
  const size_t start = frameAt(100);
  for (size_t i = 0; i < start; ++i) ASSERT_EQ(0.0f, out.samples[i]) << i;
  for (size_t i = 0; i < source.samples.size(); ++i) {
    ASSERT_NEAR(source.samples[i], out.samples[start + i], kQuantum) << i;
  }
  for (size_t i = start + source.samples.size(); i < out.samples.size(); ++i) ASSERT_EQ(0.0f, out.samples[i]) << i;
}

TEST_F(SpeakerOutputTest, VolumeScalesTheLevel) {
  zvtest::WriteTone(titleFile("res/tone.wav"), 22050, 1.0, 1000, kAmp);
  mSvc.StartAudio("res/tone.wav", 50, 0, 0);
  solva::AdvanceClock(1000);
  const zvtest::Sound out = heard();
  EXPECT_NEAR(kToneRms * 0.5, zvtest::RmsBetween(out, 0, 1000), 0.002);
}

TEST_F(SpeakerOutputTest, VolumeChangeTakesEffectAtTheDeviceTimeOfTheCall) {
  zvtest::WriteTone(titleFile("res/tone.wav"), 22050, 1.0, 1000, kAmp);
  const tAudioID id = mSvc.StartAudio("res/tone.wav", 100, 0, 0);
  solva::AdvanceClock(500);
  mSvc.SetAudioVolume(id, 25);
  solva::AdvanceClock(500);
  const zvtest::Sound out = heard();
  EXPECT_NEAR(kToneRms, zvtest::RmsBetween(out, 0, 500), 0.002);
  EXPECT_NEAR(kToneRms * 0.25, zvtest::RmsBetween(out, 500, 1000), 0.002);
}

TEST_F(SpeakerOutputTest, VolumeAbove100CountsAs100) {
  zvtest::WriteTone(titleFile("res/tone.wav"), 22050, 1.0, 1000, kAmp);
  mSvc.StartAudio("res/tone.wav", 200, 0, 0);
  solva::AdvanceClock(1000);
  EXPECT_NEAR(kToneRms, zvtest::RmsBetween(heard(), 0, 1000), 0.002);
}

TEST_F(SpeakerOutputTest, OggVorbisIsDecoded) {
  zvtest::WriteTone(titleFile("res/tone.ogg"), 44100, 1.0, 500, kAmp, zvtest::SoundFormat::Ogg);
  const tAudioID id = mSvc.StartAudio("res/tone.ogg", 100, 0, 0);
  ASSERT_NE(kNoAudioID, id);
  solva::AdvanceClock(1000);
  EXPECT_FALSE(mSvc.IsAudioPlaying(id));
  const zvtest::Sound out = heard();
  EXPECT_NEAR(kToneRms, zvtest::RmsBetween(out, 100, 900), 0.01);
  EXPECT_NEAR(400, RisingCrossings(out.samples, frameAt(100), frameAt(900)), 1);
}

TEST_F(SpeakerOutputTest, SlowerFileIsConvertedInTime) {
  // A ramp at 16 kHz: each output frame must lie on the ramp at its own time, but
  // near the file's two ends, where the converter's filter rings.
  const int rate = 16000;
  zvtest::WriteRamp(titleFile("res/ramp16.wav"), rate, 2.0, 0.8);
  const tAudioID id = mSvc.StartAudio("res/ramp16.wav", 100, 0, 0);
  solva::AdvanceClock(1999);
  EXPECT_TRUE(mSvc.IsAudioPlaying(id));
  solva::AdvanceClock(1);
  EXPECT_FALSE(mSvc.IsAudioPlaying(id));
  const zvtest::Sound out = heard();
  for (size_t j = frameAt(20); j < frameAt(1980); ++j) {
    const double expected = 0.8 * (double(j) / solva::kDefaultMixRate) / 2.0;
    ASSERT_NEAR(expected, out.samples[j], 0.001) << j;
  }
}

TEST_F(SpeakerOutputTest, FasterFileKeepsItsPitchAndLength) {
  zvtest::WriteTone(titleFile("res/tone44.wav"), 44100, 1.0, 1000, kAmp);
  mSvc.StartAudio("res/tone44.wav", 100, 0, 0);
  solva::AdvanceClock(1500);
  const zvtest::Sound out = heard();
  EXPECT_NEAR(1000, RisingCrossings(out.samples, 0, frameAt(1000)), 1);
  EXPECT_NEAR(kToneRms, zvtest::RmsBetween(out, 0, 1000), 0.005);
  EXPECT_EQ(0.0, zvtest::RmsBetween(out, 1001, 1500));
}

TEST_F(SpeakerOutputTest, StereoFileIsMixedDownToOneChannel) {
  zvtest::WriteTone(titleFile("res/stereo.wav"), 22050, 0.5, 1000, kAmp, zvtest::SoundFormat::Wav16, 2);
  mSvc.StartAudio("res/stereo.wav", 100, 0, 0);
  solva::AdvanceClock(500);
  EXPECT_NEAR(kToneRms, zvtest::RmsBetween(heard(), 0, 500), 0.002);
}

TEST_F(SpeakerOutputTest, TwoSoundsAreAddedAndTheSumIsClipped) {
  zvtest::WriteSamples(titleFile("res/dc.wav"), 22050, std::vector<float>(22050, 0.6f));
  mSvc.StartAudio("res/dc.wav", 50, 0, 0);
  mSvc.StartAudio("res/dc.wav", 50, 0, 0);
  solva::AdvanceClock(500);
  mSvc.StartAudio("res/dc.wav", 100, 0, 0);
  solva::AdvanceClock(200);
  const zvtest::Sound out = heard();
  EXPECT_NEAR(0.6, out.samples[frameAt(250)], 0.001);
  EXPECT_NEAR(1.0, out.samples[frameAt(600)], 0.001);
}

TEST_F(SpeakerOutputTest, LoopCountRepeatsTheFileThatManyTimes) {
  zvtest::WriteRamp(titleFile("res/ramp.wav"), 22050, 0.5, 0.8);
  const zvtest::Sound source = zvtest::ReadSound(titleFile("res/ramp.wav"));
  mSvc.StartAudio("res/ramp.wav", 100, 0, 0, nullptr, 3, kAudioRepeat);
  solva::AdvanceClock(2000);
  const zvtest::Sound out = heard();
  const size_t n = source.samples.size();
  for (int pass = 0; pass < 3; ++pass) {
    for (size_t i = 0; i < n; ++i) ASSERT_NEAR(source.samples[i], out.samples[pass * n + i], kQuantum) << pass << " " << i;
  }
  EXPECT_EQ(0.0, zvtest::Rms(out.samples, 3 * n, out.samples.size() - 3 * n));
}

TEST_F(SpeakerOutputTest, SeekOf1500msStartsTheSound1500msIn) {
  zvtest::WriteRamp(titleFile("res/ramp.wav"), 22050, 3.0, 0.9);
  const zvtest::Sound source = zvtest::ReadSound(titleFile("res/ramp.wav"));
  const tAudioID id = mSvc.StartAudio("res/ramp.wav", 100, 0, 0);
  mSvc.SeekAudioTime(id, 1500);
  EXPECT_EQ(1500u, mSvc.GetAudioTime(id));
  solva::AdvanceClock(2000);
  const zvtest::Sound out = heard();
  const size_t skip = frameAt(1500);
  EXPECT_NEAR(0.45, out.samples[0], 0.001);
  for (size_t i = 0; i + skip < source.samples.size(); ++i) {
    ASSERT_NEAR(source.samples[skip + i], out.samples[i], kQuantum) << i;
  }
  EXPECT_EQ(0.0, zvtest::RmsBetween(out, 1500, 2000));
}

TEST_F(SpeakerOutputTest, PausedSoundNeitherAdvancesNorEnds) {
  zvtest::WriteRamp(titleFile("res/ramp.wav"), 22050, 1.0, 0.8);
  const zvtest::Sound source = zvtest::ReadSound(titleFile("res/ramp.wav"));
  const tAudioID id = mSvc.StartAudio("res/ramp.wav", 100, 0, 0);
  solva::AdvanceClock(400);
  mSvc.PauseAudio(id);
  solva::AdvanceClock(3000);
  EXPECT_TRUE(mSvc.IsAudioPlaying(id));
  EXPECT_EQ(400u, mSvc.GetAudioTime(id));
  mSvc.ResumeAudio(id);
  solva::AdvanceClock(1000);
  EXPECT_FALSE(mSvc.IsAudioPlaying(id));
  const zvtest::Sound out = heard();
  // The pause and the resume fade over 5 ms (110 frames); the rest is the file.
  const size_t paused = frameAt(400), resumed = frameAt(3400), ramp = 110;
  for (size_t i = 0; i < paused; ++i) ASSERT_NEAR(source.samples[i], out.samples[i], kQuantum) << i;
  EXPECT_EQ(0.0, zvtest::Rms(out.samples, paused + ramp, resumed - paused - ramp));
  for (size_t i = paused + ramp; i < source.samples.size(); ++i) {
    ASSERT_NEAR(source.samples[i], out.samples[resumed + i - paused], kQuantum) << i;
  }
}

TEST_F(SpeakerOutputTest, OtherMixRateWritesAtThatRate) {
  ASSERT_TRUE(solva::SetMixRate(16000));
  ASSERT_TRUE(solva::SetSpeaker(speakerFile()));
  zvtest::WriteTone(titleFile("res/tone.wav"), 22050, 0.5, 1000, kAmp);
  mSvc.StartAudio("res/tone.wav", 100, 0, 0);
  solva::AdvanceClock(1000);
  const zvtest::Sound out = heard();
  EXPECT_EQ(16000, out.rate);
  EXPECT_EQ(16000u, out.samples.size());
  EXPECT_NEAR(500, RisingCrossings(out.samples, 0, 8000), 1);
}

}  // namespace
