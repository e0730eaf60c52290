// Stops, pauses and seeks of a sound that is heard fade over a few milliseconds,
// as on a sound device, so the output never steps; what the programs see (ids,
// positions, the log) changes at once as before.
#include <cmath>

#include "AudioFixture.h"

namespace {

const size_t kRamp = 110;  // 5 ms at 22,050 Hz
const float kLevel = 0.8f;
const float kQuantum = 2.0f / 32768.0f;

class SoundRampTest : public AudioServiceTest {
 protected:
  void SetUp() override {
    AudioServiceTest::SetUp();
    // A steady level: any step in the output comes from the mixer.
    zvtest::WriteSamples(titleFile("level.wav"), 22050, std::vector<float>(3 * 22050, kLevel));
  }
  // The largest difference between consecutive samples in [from, to).
  static float LargestStep(const std::vector<float>& s, size_t from, size_t to) {
    float largest = 0;
    for (size_t i = from + 1; i < to && i < s.size(); ++i) largest = std::max(largest, std::fabs(s[i] - s[i - 1]));
    return largest;
  }
  // What a ramp of the level may step by, with the file's rounding.
  static float RampStep() { return kLevel / float(kRamp) + 2 * kQuantum; }
};

TEST_F(SoundRampTest, AStopFadesOutOverTheRampAndIsSilentAfterIt) {
  const tAudioID id = mSvc.StartAudio("level.wav", 100, 0, 0);
  solva::AdvanceClock(500);
  EXPECT_EQ(kNoErr, mSvc.StopAudio(id, 0));
  EXPECT_FALSE(mSvc.IsAudioPlaying(id));  // gone at once for the programs
  solva::AdvanceClock(500);
  const zvtest::Sound out = heard();
  const size_t stop = frameAt(500);
  EXPECT_NEAR(kLevel, out.samples[stop - 1], kQuantum);
  EXPECT_LE(LargestStep(out.samples, 0, out.samples.size()), RampStep());
  EXPECT_GT(out.samples[stop + kRamp / 2], 0.3f);
  for (size_t i = stop + kRamp; i < out.samples.size(); ++i) ASSERT_EQ(0.0f, out.samples[i]) << i;
}

TEST_F(SoundRampTest, APauseFadesOutAndTheResumeFadesInWithoutLosingThePosition) {
  const tAudioID id = mSvc.StartAudio("level.wav", 100, 0, 0);
  solva::AdvanceClock(400);
  mSvc.PauseAudio(id);
  EXPECT_EQ(400u, mSvc.GetAudioTime(id));
  solva::AdvanceClock(600);
  EXPECT_EQ(400u, mSvc.GetAudioTime(id));
  mSvc.ResumeAudio(id);
  solva::AdvanceClock(600);
  EXPECT_EQ(1000u, mSvc.GetAudioTime(id));
  const zvtest::Sound out = heard();
  EXPECT_LE(LargestStep(out.samples, 0, out.samples.size()), RampStep());
  for (size_t i = frameAt(400) + kRamp; i < frameAt(1000); ++i) ASSERT_EQ(0.0f, out.samples[i]) << i;
  EXPECT_LT(out.samples[frameAt(1000) + kRamp / 2], 0.5f);
  EXPECT_NEAR(kLevel, out.samples[frameAt(1000) + kRamp], kQuantum);
}

TEST_F(SoundRampTest, ASeekFadesOutTheOldPlaceAndFadesInTheNew) {
  // A rise from 0 to 0.9 over 3 s: the seek from 0.2 s to 2.5 s jumps from 0.06 to 0.75.
  zvtest::WriteRamp(titleFile("rise.wav"), 22050, 3.0, 0.9);
  const tAudioID id = mSvc.StartAudio("rise.wav", 100, 0, 0);
  solva::AdvanceClock(200);
  mSvc.SeekAudioTime(id, 2500);
  EXPECT_EQ(2500u, mSvc.GetAudioTime(id));
  solva::AdvanceClock(300);
  const zvtest::Sound out = heard();
  const size_t seek = frameAt(200);
  // The two ramps overlap: the old place going, the new one coming.
  EXPECT_LE(LargestStep(out.samples, 0, out.samples.size()), 0.9f / float(kRamp) + 0.06f / float(kRamp) + 4 * kQuantum);
  EXPECT_NEAR(0.75, out.samples[seek + kRamp + 1], 0.002);
  EXPECT_NEAR(0.375 + 0.03, out.samples[seek + kRamp / 2], 0.01);  // half of each, midway
}

TEST_F(SoundRampTest, ASeekBeforeTheSoundWasHeardStartsAtOnceAtTheNewPlace) {
  zvtest::WriteRamp(titleFile("rise.wav"), 22050, 3.0, 0.9);
  const tAudioID id = mSvc.StartAudio("rise.wav", 100, 0, 0);
  mSvc.SeekAudioTime(id, 1500);
  solva::AdvanceClock(100);
  EXPECT_NEAR(0.45, heard().samples[0], 0.001);
}

TEST_F(SoundRampTest, StopAllFadesEverySoundThatIsHeard) {
  mSvc.StartAudio("level.wav", 50, 0, 0);
  mSvc.StartAudio("level.wav", 50, 0, 0);
  solva::AdvanceClock(300);
  mSvc.StopAllAudio();
  solva::AdvanceClock(100);
  const zvtest::Sound out = heard();
  EXPECT_LE(LargestStep(out.samples, 0, out.samples.size()), RampStep());
  EXPECT_EQ(0.0f, out.samples[frameAt(300) + kRamp]);
}

TEST_F(SoundRampTest, ASoundThatEndsByItselfEndsAsItsFileDoes) {
  zvtest::WriteSamples(titleFile("short.wav"), 22050, std::vector<float>(2205, kLevel));
  mSvc.StartAudio("short.wav", 100, 0, 0);
  solva::AdvanceClock(200);
  const zvtest::Sound out = heard();
  EXPECT_NEAR(kLevel, out.samples[2204], kQuantum);
  EXPECT_EQ(0.0f, out.samples[2205]);
}

TEST_F(SoundRampTest, RampsLeaveNoTraceInTheLogOrTheListOfSounds) {
  const tAudioID id = mSvc.StartAudio("level.wav", 100, 0, 0);
  solva::AdvanceClock(100);
  mSvc.StopAudio(id, 0);
  solva::AdvanceClock(100);
  EXPECT_TRUE(solva::Sounds().empty());
  EXPECT_TRUE(eventsOf(solva::AudioEventKind::End).empty());
  EXPECT_EQ(1u, eventsOf(solva::AudioEventKind::Stop).size());
}

}  // namespace
