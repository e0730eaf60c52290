// While the application manager has the title suspended, the device pauses the
// title's sound output and resumes it on resume: silence in between, and every
// sound goes on where it stood.
#include "AudioFixture.h"
#include "solva/AppManager.h"

namespace {

const size_t kRamp = 110;
const float kQuantum = 2.0f / 32768.0f;

class TitleSuspensionTest : public AudioServiceTest {
 protected:
  void SetUp() override {
    AudioServiceTest::SetUp();
    zvtest::WriteSamples(titleFile("level.wav"), 22050, std::vector<float>(2 * 22050, 0.5f));
  }
};

TEST_F(TitleSuspensionTest, TheSpeakerIsSilentWhileTheTitleIsSuspended) {
  const tAudioID id = mSvc.StartAudio("level.wav", 100, 0, 0);
  solva::AdvanceClock(500);
  solva::SetTitleSuspended(true);
  EXPECT_TRUE(solva::TitleSuspended());
  solva::AdvanceClock(3000);
  EXPECT_TRUE(mSvc.IsAudioPlaying(id));
  EXPECT_EQ(500u, mSvc.GetAudioTime(id));
  solva::SetTitleSuspended(false);
  solva::AdvanceClock(1400);
  EXPECT_EQ(1900u, mSvc.GetAudioTime(id));
  solva::AdvanceClock(100);
  EXPECT_FALSE(mSvc.IsAudioPlaying(id));  // it ends 1.5 s after the resume
  const zvtest::Sound out = heard();
  for (size_t i = frameAt(500) + kRamp; i < frameAt(3500); ++i) ASSERT_EQ(0.0f, out.samples[i]) << i;
  EXPECT_NEAR(0.5, out.samples[frameAt(3500) + kRamp], kQuantum);
  EXPECT_NEAR(0.5, out.samples[frameAt(4999)], kQuantum);
}

TEST_F(TitleSuspensionTest, ASoundTheTitleHadPausedStaysPausedAfterTheResume) {
  const tAudioID id = mSvc.StartAudio("level.wav", 100, 0, 0);
  solva::AdvanceClock(200);
  mSvc.PauseAudio(id);
  solva::SetTitleSuspended(true);
  solva::AdvanceClock(500);
  solva::SetTitleSuspended(false);
  solva::AdvanceClock(500);
  EXPECT_EQ(200u, mSvc.GetAudioTime(id));
  EXPECT_TRUE(solva::Sounds().at(0).paused);
  EXPECT_EQ(0.0, zvtest::RmsBetween(heard(), 210, 1200));
}

TEST_F(TitleSuspensionTest, ASoundStartedWhileSuspendedWaitsForTheResume) {
  solva::SetTitleSuspended(true);
  const tAudioID id = mSvc.StartAudio("level.wav", 100, 0, 0);
  solva::AdvanceClock(1000);
  EXPECT_EQ(0u, mSvc.GetAudioTime(id));
  solva::SetTitleSuspended(false);
  solva::AdvanceClock(300);
  EXPECT_EQ(300u, mSvc.GetAudioTime(id));
  EXPECT_EQ(0.0, zvtest::RmsBetween(heard(), 0, 1000));
}

TEST_F(TitleSuspensionTest, ResettingTheDeviceEndsTheSuspension) {
  solva::SetTitleSuspended(true);
  solva::ResetDevice();
  EXPECT_FALSE(solva::TitleSuspended());
}

}  // namespace
