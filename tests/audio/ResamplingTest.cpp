// Rate conversion in the mixer: a file of another rate keeps its pitch, level and
// length, and leaves no mirror images of itself in the output.
#include <sys/stat.h>

#include <cmath>

#include "AudioFixture.h"

namespace {

using Vantrel::Solva::CAudioSvc;

class ResamplingTest : public AudioTest {
 protected:
  void SetUp() override {
    AudioTest::SetUp();
    ASSERT_EQ(kNoErr, mSvc.SetAudioResourcePath(mTitle.path()));
  }
  CAudioSvc mSvc;
};

// 20 periods of 1 kHz at 22,050 Hz are 441 frames; 20 times that is 0.4 s.
const size_t kWindow = 441 * 20;

TEST_F(ResamplingTest, ImagesOfA1kHzToneAt16kHzLieAtLeast80dBDown) {
  zvtest::WriteTone(titleFile("tone16.wav"), 16000, 1.0, 1000, 0.5);
  mSvc.StartAudio("tone16.wav", 100, 0, 0);
  solva::AdvanceClock(1000);
  const zvtest::Sound out = heard();
  EXPECT_LT(zvtest::ResidualDb(out.samples, frameAt(300), kWindow, out.rate, 1000), -80.0);
  EXPECT_NEAR(0.5 / std::sqrt(2.0), zvtest::Rms(out.samples, frameAt(300), kWindow), 0.002);
}

TEST_F(ResamplingTest, A44kHzFileIsBroughtDownWithoutAliases) {
  // 9 kHz and its mirror about 11,025 Hz (13.05 kHz) are far apart; 1 kHz is the judge.
  zvtest::WriteTone(titleFile("tone44.wav"), 44100, 1.0, 1000, 0.5);
  mSvc.StartAudio("tone44.wav", 100, 0, 0);
  solva::AdvanceClock(1000);
  const zvtest::Sound out = heard();
  EXPECT_LT(zvtest::ResidualDb(out.samples, frameAt(300), kWindow, out.rate, 1000), -80.0);
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
