// Rate conversion in the mixer: a file of another rate keeps its pitch, level and
// length, and leaves no mirror images of itself in the output.
#include <sys/stat.h>

#include <cmath>

#include "AudioFixture.h"

namespace {

using ResamplingTest = AudioServiceTest;

// 20 periods of 1 kHz at 22,050 Hz are 441 frames; 20 times that is 0.4 s.
const size_t kWindow = 441 * 20;

TEST_F(ResamplingTest, ImagesOfA1kHzToneAt16kHzAnd44kHzLieAtLeast80dBDown) {
  for (int rate : {16000, 44100}) {
    SCOPED_TRACE(rate);
    const std::string name = "tone" + std::to_string(rate) + ".wav";
    zvtest::WriteTone(titleFile(name), rate, 1.0, 1000, 0.5);
    const uint64_t start = solva::ClockMicros() / 1000;
    mSvc.StartAudio(name, 100, 0, 0);
    solva::AdvanceClock(1000);
    solva::PumpAudio();
    ASSERT_TRUE(solva::FlushSpeaker());
    const zvtest::Sound out = zvtest::ReadSound(speakerFile());
    const size_t from = frameAt(start + 300);
    EXPECT_LT(zvtest::ResidualDb(out.samples, from, kWindow, out.rate, 1000), -80.0);
    EXPECT_NEAR(0.5 / std::sqrt(2.0), zvtest::Rms(out.samples, from, kWindow), 0.002);
  }
}

TEST_F(ResamplingTest, AConvertedFileLastsAsLongAsItDidAtItsOwnRate) {
  zvtest::WriteTone(titleFile("tone16.wav"), 16000, 0.5, 1000, 0.5);
  const tAudioID id = mSvc.StartAudio("tone16.wav", 100, 0, 0);
  solva::AdvanceClock(499);
  EXPECT_TRUE(mSvc.IsAudioPlaying(id));
  solva::AdvanceClock(1);
  EXPECT_FALSE(mSvc.IsAudioPlaying(id));
}

TEST_F(ResamplingTest, AToneAbove11kHzAt44kHzIsNotFoldedBackIntoTheOutput) {
  // Interpolation would fold 15 kHz to 7.05 kHz; the converter removes it.
  zvtest::WriteTone(titleFile("high44.wav"), 44100, 1.0, 15000, 0.5);
  mSvc.StartAudio("high44.wav", 100, 0, 0);
  solva::AdvanceClock(1000);
  const double level = zvtest::Rms(heard().samples, frameAt(300), kWindow);
  EXPECT_LT(20.0 * std::log10(level / (0.5 / std::sqrt(2.0))), -80.0);
}

}  // namespace
