#include <sys/stat.h>

#include "AudioFixture.h"

namespace {

using solva::AudioEventKind;
using Vantrel::Solva::CAudioSvc;

class CAudioSvcTest : public AudioTest {
 protected:
  void SetUp() override {
    AudioTest::SetUp();
    mkdir((mTitle.path() + "/res").c_str(), 0755);
    zvtest::WriteTone(titleFile("res/one.wav"), 22050, 1.0, 440, 0.5);
  }
};

TEST_F(CAudioSvcTest, ResourcePathStartsAsTheTitleFolder) {
  CAudioSvc svc;
  EXPECT_EQ(mTitle.path() + "/", svc.GetAudioResourcePath().raw());
}

TEST_F(CAudioSvcTest, RelativePathIsResolvedAgainstTheResourcePath) {
  CAudioSvc svc;
  ASSERT_EQ(kNoErr, svc.SetAudioResourcePath(mTitle.path() + "/res"));
  const tAudioID id = svc.StartAudio("one.wav", 100, 0, 0);
  ASSERT_NE(kNoAudioID, id);
  const auto starts = eventsOf(AudioEventKind::Start);
  ASSERT_EQ(1u, starts.size());
  EXPECT_EQ(mTitle.path() + "/res/one.wav", starts[0].path);
  EXPECT_EQ(id, starts[0].id);
  EXPECT_EQ(100, starts[0].volume);
}

TEST_F(CAudioSvcTest, AbsolutePathIsTakenAsGiven) {
  CAudioSvc svc;
  ASSERT_EQ(kNoErr, svc.SetAudioResourcePath("/nowhere"));
  EXPECT_NE(kNoAudioID, svc.StartAudio(Glib::ustring(titleFile("res/one.wav")), 100, 255, 0));
  EXPECT_EQ(titleFile("res/one.wav"), eventsOf(AudioEventKind::Start).at(0).path);
}

TEST_F(CAudioSvcTest, MissingFileGivesNoIdAndLogsTheFailure) {
  CAudioSvc svc;
  EXPECT_EQ(kNoAudioID, svc.StartAudio("res/absent.wav", 100, 0, 0));
  const auto failed = eventsOf(AudioEventKind::StartFailed);
  ASSERT_EQ(1u, failed.size());
  EXPECT_EQ(titleFile("res/absent.wav"), failed[0].path);
  EXPECT_FALSE(failed[0].error.empty());
  EXPECT_TRUE(solva::Sounds().empty());
}

TEST_F(CAudioSvcTest, FileThatIsNoSoundGivesNoId) {
  zvtest::WriteText(titleFile("res/text.wav"), "this is not a sound file at all");
  CAudioSvc svc;
  EXPECT_EQ(kNoAudioID, svc.StartAudio("res/text.wav", 100, 0, 0));
  EXPECT_EQ(1u, eventsOf(AudioEventKind::StartFailed).size());
}

TEST_F(CAudioSvcTest, StartLogsItsArguments) {
  CAudioSvc svc;
  const tAudioID id = svc.StartAudio("res/one.wav", 37, 9, -3, nullptr, 4, kAudioRepeat);
  const solva::AudioEvent start = eventsOf(AudioEventKind::Start).at(0);
  EXPECT_EQ(id, start.id);
  EXPECT_EQ(37, start.volume);
  EXPECT_EQ(9, start.priority);
  EXPECT_EQ(-3, start.pan);
  EXPECT_EQ(4u, start.payload);
  EXPECT_EQ(kAudioRepeat, start.flags);
}

TEST_F(CAudioSvcTest, IdsAreUniqueAndStartAtOne) {
  CAudioSvc a, b;
  EXPECT_EQ(1, a.StartAudio("res/one.wav", 100, 0, 0));
  EXPECT_EQ(2, b.StartAudio("res/one.wav", 100, 0, 0));
  EXPECT_EQ(3, a.StartAudio("res/one.wav", 100, 0, 0));
}

TEST_F(CAudioSvcTest, PlayingUntilTheEndByTheDeviceClock) {
  CAudioSvc svc;
  const tAudioID id = svc.StartAudio("res/one.wav", 100, 0, 0);
  solva::AdvanceClock(999);
  EXPECT_TRUE(svc.IsAudioPlaying(id));
  EXPECT_EQ(999u, svc.GetAudioTime(id));
  solva::AdvanceClock(1);
  EXPECT_FALSE(svc.IsAudioPlaying(id));
  EXPECT_EQ(0u, svc.GetAudioTime(id));
  const auto ends = eventsOf(AudioEventKind::End);
  ASSERT_EQ(1u, ends.size());
  EXPECT_EQ(id, ends[0].id);
  EXPECT_EQ(1000u, ends[0].timeMs);
}

TEST_F(CAudioSvcTest, SoundsEndOnTimeWithoutASpeakerToo) {
  ASSERT_TRUE(solva::SetSpeaker("none"));
  CAudioSvc svc;
  const tAudioID id = svc.StartAudio("res/one.wav", 100, 0, 0);
  solva::AdvanceClock(500);
  EXPECT_EQ(500u, svc.GetAudioTime(id));
  solva::AdvanceClock(500);
  EXPECT_FALSE(svc.IsAudioPlaying(id));
}

TEST_F(CAudioSvcTest, PausedSoundStaysPlayingAndKeepsItsPosition) {
  CAudioSvc svc;
  const tAudioID id = svc.StartAudio("res/one.wav", 100, 0, 0);
  solva::AdvanceClock(300);
  ASSERT_EQ(kNoErr, svc.PauseAudio(id));
  solva::AdvanceClock(5000);
  EXPECT_TRUE(svc.IsAudioPlaying(id));
  EXPECT_EQ(300u, svc.GetAudioTime(id));
  ASSERT_EQ(kNoErr, svc.ResumeAudio(id));
  solva::AdvanceClock(699);
  EXPECT_TRUE(svc.IsAudioPlaying(id));
  solva::AdvanceClock(1);
  EXPECT_FALSE(svc.IsAudioPlaying(id));
  EXPECT_EQ(6000u, eventsOf(AudioEventKind::End).at(0).timeMs);
}

TEST_F(CAudioSvcTest, PauseAllAndResumeAllActOnEverySound) {
  CAudioSvc svc;
  const tAudioID a = svc.StartAudio("res/one.wav", 100, 0, 0);
  const tAudioID b = svc.StartAudio("res/one.wav", 100, 0, 0);
  solva::AdvanceClock(100);
  svc.PauseAllAudio();
  solva::AdvanceClock(2000);
  EXPECT_EQ(100u, svc.GetAudioTime(a));
  EXPECT_EQ(100u, svc.GetAudioTime(b));
  svc.ResumeAllAudio();
  solva::AdvanceClock(50);
  EXPECT_EQ(150u, svc.GetAudioTime(a));
  EXPECT_EQ(150u, svc.GetAudioTime(b));
  EXPECT_EQ(2u, eventsOf(AudioEventKind::Pause).size());
  EXPECT_EQ(2u, eventsOf(AudioEventKind::Resume).size());
}

TEST_F(CAudioSvcTest, StopAudioEndsTheSoundAtOnce) {
  CAudioSvc svc;
  const tAudioID id = svc.StartAudio("res/one.wav", 100, 0, 0);
  solva::AdvanceClock(200);
  EXPECT_EQ(kNoErr, svc.StopAudio(id, 0));
  EXPECT_FALSE(svc.IsAudioPlaying(id));
  const auto stops = eventsOf(AudioEventKind::Stop);
  ASSERT_EQ(1u, stops.size());
  EXPECT_EQ(200u, stops[0].timeMs);
  EXPECT_TRUE(stops[0].existed);
  EXPECT_EQ(titleFile("res/one.wav"), stops[0].path);
}

TEST_F(CAudioSvcTest, StopOfAnEndedSoundIsLoggedAsNotFound) {
  CAudioSvc svc;
  const tAudioID id = svc.StartAudio("res/one.wav", 100, 0, 0);
  solva::AdvanceClock(1500);
  EXPECT_EQ(kNotFoundErr, svc.StopAudio(id, 1));
  const auto stops = eventsOf(AudioEventKind::Stop);
  ASSERT_EQ(1u, stops.size());
  EXPECT_FALSE(stops[0].existed);
  EXPECT_EQ(1u, stops[0].value);
}

TEST_F(CAudioSvcTest, StopAllAudioEndsEverySound) {
  CAudioSvc svc;
  const tAudioID a = svc.StartAudio("res/one.wav", 100, 0, 0);
  const tAudioID b = svc.StartAudio("res/one.wav", 100, 0, 0);
  svc.StopAllAudio();
  EXPECT_FALSE(svc.IsAudioPlaying(a));
  EXPECT_FALSE(svc.IsAudioPlaying(b));
  EXPECT_EQ(2u, eventsOf(AudioEventKind::Stop).size());
}

TEST_F(CAudioSvcTest, VolumeChangesAreLoggedOnlyWhenTheyChange) {
  CAudioSvc svc;
  const tAudioID id = svc.StartAudio("res/one.wav", 100, 0, 0);
  EXPECT_EQ(kNoErr, svc.SetAudioVolume(id, 100));
  EXPECT_EQ(kNoErr, svc.SetAudioVolume(id, 40));
  EXPECT_EQ(kNoErr, svc.SetAudioVolume(id, 40));
  const auto volumes = eventsOf(AudioEventKind::Volume);
  ASSERT_EQ(1u, volumes.size());
  EXPECT_EQ(40, volumes[0].volume);
  EXPECT_EQ(40, solva::Sounds().at(0).volume);
}

TEST_F(CAudioSvcTest, OperationsOnNoSoundAnswerNotFound) {
  CAudioSvc svc;
  EXPECT_EQ(kNotFoundErr, svc.PauseAudio(77));
  EXPECT_EQ(kNotFoundErr, svc.ResumeAudio(77));
  EXPECT_EQ(kNotFoundErr, svc.SetAudioVolume(77, 5));
  EXPECT_EQ(kNotFoundErr, svc.SeekAudioTime(77, 5));
  EXPECT_FALSE(svc.IsAudioPlaying(kNoAudioID));
  EXPECT_EQ(0u, svc.GetAudioTime(kNoAudioID));
}

TEST_F(CAudioSvcTest, SeekMovesThePositionAndTheEnd) {
  CAudioSvc svc;
  const tAudioID id = svc.StartAudio("res/one.wav", 100, 0, 0);
  ASSERT_EQ(kNoErr, svc.SeekAudioTime(id, 750));
  EXPECT_EQ(750u, svc.GetAudioTime(id));
  solva::AdvanceClock(249);
  EXPECT_TRUE(svc.IsAudioPlaying(id));
  solva::AdvanceClock(1);
  EXPECT_FALSE(svc.IsAudioPlaying(id));
}

TEST_F(CAudioSvcTest, SeekPastTheEndEndsThePass) {
  CAudioSvc svc;
  const tAudioID once = svc.StartAudio("res/one.wav", 100, 0, 0);
  EXPECT_EQ(kNoErr, svc.SeekAudioTime(once, 5000));
  EXPECT_FALSE(svc.IsAudioPlaying(once));
  const tAudioID twice = svc.StartAudio("res/one.wav", 100, 0, 0, nullptr, 2, kAudioRepeat);
  EXPECT_EQ(kNoErr, svc.SeekAudioTime(twice, 5000));
  EXPECT_TRUE(svc.IsAudioPlaying(twice));
  EXPECT_EQ(0u, svc.GetAudioTime(twice));
}

TEST_F(CAudioSvcTest, RepeatPlaysTheFileThePayloadTimes) {
  CAudioSvc svc;
  const tAudioID id = svc.StartAudio("res/one.wav", 100, 0, 0, nullptr, 3, kAudioRepeat);
  solva::AdvanceClock(2500);
  EXPECT_TRUE(svc.IsAudioPlaying(id));
  EXPECT_EQ(500u, svc.GetAudioTime(id));
  EXPECT_EQ(1u, solva::Sounds().at(0).playsLeft);
  solva::AdvanceClock(500);
  EXPECT_FALSE(svc.IsAudioPlaying(id));
  EXPECT_EQ(3000u, eventsOf(AudioEventKind::End).at(0).timeMs);
}

TEST_F(CAudioSvcTest, PayloadWithoutTheRepeatFlagPlaysOnce) {
  CAudioSvc svc;
  const tAudioID id = svc.StartAudio("res/one.wav", 100, 0, 0, nullptr, 3, 0);
  solva::AdvanceClock(1000);
  EXPECT_FALSE(svc.IsAudioPlaying(id));
}

TEST_F(CAudioSvcTest, RepeatWithPayloadZeroPlaysOnce) {
  CAudioSvc svc;
  const tAudioID id = svc.StartAudio("res/one.wav", 100, 0, 0, nullptr, 0, kAudioRepeat);
  solva::AdvanceClock(1000);
  EXPECT_FALSE(svc.IsAudioPlaying(id));
}

TEST_F(CAudioSvcTest, TheLargePayloadLoopsForAsLongAsAnyoneListens) {
  ASSERT_TRUE(solva::SetSpeaker("none"));
  CAudioSvc svc;
  const tAudioID id = svc.StartAudio("res/one.wav", 100, 0, 0, nullptr, 0x40000000, kAudioRepeat);
  solva::AdvanceClock(3600 * 1000 + 250);
  EXPECT_TRUE(svc.IsAudioPlaying(id));
  EXPECT_EQ(250u, svc.GetAudioTime(id));
}

TEST_F(CAudioSvcTest, ResetDeviceRemovesSoundsAndTheLog) {
  CAudioSvc svc;
  const tAudioID id = svc.StartAudio("res/one.wav", 100, 0, 0);
  solva::ResetDevice();
  EXPECT_FALSE(svc.IsAudioPlaying(id));
  EXPECT_TRUE(solva::AudioEvents().empty());
  EXPECT_EQ("none", solva::SpeakerName());
}

TEST_F(CAudioSvcTest, ClockSetBackMixesNothing) {
  CAudioSvc svc;
  const tAudioID id = svc.StartAudio("res/one.wav", 100, 0, 0, nullptr, 5, kAudioRepeat);
  solva::AdvanceClock(400);
  EXPECT_EQ(400u, svc.GetAudioTime(id));
  solva::SetClockMode(solva::ClockMode::Virtual, 100000);
  EXPECT_EQ(400u, svc.GetAudioTime(id));
  solva::AdvanceClock(100);
  EXPECT_EQ(500u, svc.GetAudioTime(id));
}

}  // namespace
