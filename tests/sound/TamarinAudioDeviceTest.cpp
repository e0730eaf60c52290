// The audio device: limits and counters, volumes and fades, the playing list,
// bulk operations, suspension and the plain channel.
#include <stdexcept>

#include "SoundFixture.h"

namespace {

using solva::AudioEventKind;

// Sixteen wave cues, two Ogg cues, a music cue, and one that starts nothing.
const char* const kProject =
    "<G>"
    "<C Name='tone' Volume='80'><N Name='Wave' FileName='tone.wav'/></C>"
    "<C Name='long' Volume='100'><N Name='Loop' LoopCount='-1' Children='1;'/><N Name='Wave' FileName='tone.wav'/></C>"
    "<C Name='ogg'><N Name='Loop' LoopCount='-1' Children='1;'/><N Name='Ogg' FileName='tone.ogg'/></C>"
    "<C Name='bgm' IsMusic='1'><N Name='Loop' LoopCount='-1' Children='1;'/><N Name='Wave' FileName='tone.wav'/></C>"
    "<C Name='pair'><N Name='Mixer' Children='1;2;'/><N Name='Wave' FileName='tone.wav'/>"
    "<N Name='Wave' FileName='tone.wav'/></C>"
    "<C Name='silent'><N Name='Wave' FileName='nothing.mp3'/></C>"
    "<C Name='nofirst' FirstNode='-1'><N Name='Wave' FileName='tone.wav'/></C>"
    "</G>";

class TamarinAudioDeviceTest : public SoundTest {
 protected:
  void SetUp() override {
    SoundTest::SetUp();
    zvtest::WriteTone(soundFile("tone.wav"), 22050, 1.0, 1000, 0.5);
    zvtest::WriteTone(soundFile("tone.ogg"), 22050, 1.0, 1000, 0.5, zvtest::SoundFormat::Ogg);
    zvtest::WriteTone(mTitle.file("clip.wav"), 16000, 3.0, 500, 0.5);
    mDevice = makeDevice(kProject);
  }

  // Runs frames of `dt` seconds of device time.
  void frames(int count, float dt) {
    for (int i = 0; i < count; ++i) {
      solva::AdvanceClockMicros(uint64_t(dt * 1000000.0f + 0.5f));
      mDevice->update(dt);
    }
  }

  // The volume the device now gives the sound of the first record.
  int volumeNow() {
    const tAudioID id = mDevice->playingCues().at(0).mAudioIds.at(0);
    for (const solva::SoundState& sound : solva::Sounds()) {
      if (sound.id == id) return sound.volume;
    }
    ADD_FAILURE() << "no sound " << id;
    return -1;
  }

  ProbedAudioDevice* mDevice = nullptr;
};

TEST_F(TamarinAudioDeviceTest, CreateMakesTheInstance) {
  EXPECT_EQ(mDevice, AudioDevice::sInstance());
}

TEST_F(TamarinAudioDeviceTest, VolumesStartFullAndAreHeldIn0To100) {
  EXPECT_EQ(100, mDevice->getMusicVolume());
  EXPECT_EQ(100, mDevice->getVoiceVolume());
  mDevice->setMusicVolume(150);
  mDevice->setVoiceVolume(-20);
  EXPECT_EQ(100, mDevice->getMusicVolume());
  EXPECT_EQ(0, mDevice->getVoiceVolume());
}

TEST_F(TamarinAudioDeviceTest, VoiceVolumeFloorAnswers40For10) {
  mDevice->setVoiceVolume(10);
  EXPECT_EQ(10, mDevice->getVoiceVolume());
  mDevice->setVoiceVolumeFloor(true);
  EXPECT_EQ(40, mDevice->getVoiceVolume());
  mDevice->setVoiceVolume(55);
  EXPECT_EQ(55, mDevice->getVoiceVolume());
}

TEST_F(TamarinAudioDeviceTest, ProjectQueriesGoToTheProject) {
  EXPECT_TRUE(mDevice->existSoundCue("tone"));
  EXPECT_FALSE(mDevice->existSoundCue("TONE"));
  EXPECT_EQ("bgm", mDevice->getSoundCue("bgm")->getName());
  EXPECT_EQ("ogg", mDevice->getSoundCueNameByHashValue(SoundProject::getHashValue("ogg")));
}

TEST_F(TamarinAudioDeviceTest, InitializeWithAMissingProjectThrows) {
  EXPECT_THROW(mDevice->Initialize(mTitle.file("res/Sound/none.soundproject")), std::runtime_error);
}

TEST_F(TamarinAudioDeviceTest, StartVolumeIsTheCueVolumeTimesTheVoiceVolume) {
  mDevice->setVoiceVolume(50);
  mDevice->playSoundCue("tone");
  EXPECT_EQ(40, eventsOf(AudioEventKind::Start).at(0).volume);
}

TEST_F(TamarinAudioDeviceTest, MusicCueFollowsTheMusicVolume) {
  mDevice->setVoiceVolume(50);
  mDevice->setMusicVolume(30);
  mDevice->playSoundCue("bgm");
  EXPECT_EQ(30, eventsOf(AudioEventKind::Start).at(0).volume);
  mDevice->setMusicVolume(70);
  frames(1, 0.02f);
  EXPECT_EQ(70, volumeNow());
}

TEST_F(TamarinAudioDeviceTest, UpdateAppliesANewVoiceVolume) {
  mDevice->playSoundCue("tone");
  mDevice->setVoiceVolume(25);
  frames(1, 0.02f);
  EXPECT_EQ(20, volumeNow());
}

TEST_F(TamarinAudioDeviceTest, CueThatIsNotFoundSaysSo) {
  const zvtest::ChildResult child = zvtest::RunInChild([&] { mDevice->playSoundCue("SFX_NOPE"); });
  EXPECT_EQ("\nSoundCue: SFX_NOPE is not found!\n", child.out);
  mDevice->playSoundCue("SFX_NOPE");
  EXPECT_TRUE(mDevice->playingCues().empty());
}

TEST_F(TamarinAudioDeviceTest, EmptyCueNameSaysNothing) {
  const zvtest::ChildResult child = zvtest::RunInChild([&] { mDevice->playSoundCue(""); });
  EXPECT_EQ("", child.out);
}

TEST_F(TamarinAudioDeviceTest, CueWithoutFirstNodeLeavesNoRecord) {
  mDevice->playSoundCue("nofirst");
  EXPECT_TRUE(mDevice->playingCues().empty());
  EXPECT_TRUE(solva::AudioEvents().empty());
}

TEST_F(TamarinAudioDeviceTest, CueThatStartsNoSoundIsListedUntilTheNextUpdate) {
  mDevice->playSoundCue("silent");
  EXPECT_TRUE(mDevice->isSoundCuePlaying("silent"));
  frames(1, 0.02f);
  EXPECT_FALSE(mDevice->isSoundCuePlaying("silent"));
  EXPECT_EQ(0, mDevice->numWave());
}

TEST_F(TamarinAudioDeviceTest, With16WaveSoundsCountedPlaySoundCueDoesNothingAndPrintsNothing) {
  for (int i = 0; i < 8; ++i) mDevice->playSoundCue("pair");
  ASSERT_EQ(16, mDevice->numWave());
  ASSERT_EQ(16u, eventsOf(AudioEventKind::Start).size());
  const zvtest::ChildResult child = zvtest::RunInChild([&] {
    mDevice->playSoundCue("tone");
    mDevice->playSoundCue("no such cue");
  });
  EXPECT_EQ("", child.out);
  mDevice->playSoundCue("tone");
  EXPECT_EQ(16u, eventsOf(AudioEventKind::Start).size());
  EXPECT_EQ(8u, mDevice->playingCues().size());
}

TEST_F(TamarinAudioDeviceTest, FifteenWaveSoundsStillLetACueStart) {
  for (int i = 0; i < 7; ++i) mDevice->playSoundCue("pair");
  mDevice->playSoundCue("tone");
  ASSERT_EQ(15, mDevice->numWave());
  mDevice->playSoundCue("pair");
  EXPECT_EQ(17, mDevice->numWave());
}

TEST_F(TamarinAudioDeviceTest, With3OggSoundsCountedNoCueStarts) {
  for (int i = 0; i < 4; ++i) mDevice->playSoundCue("ogg");
  EXPECT_EQ(3, mDevice->numOgg());
  mDevice->playSoundCue("tone");
  EXPECT_EQ(3u, eventsOf(AudioEventKind::Start).size());
}

TEST_F(TamarinAudioDeviceTest, FadeInOf2SecondsStartsAt0IsHalfAfter1AndFullAfter2) {
  mDevice->playSoundCue("long", 2.0f);
  EXPECT_EQ(0, eventsOf(AudioEventKind::Start).at(0).volume);
  frames(4, 0.25f);
  EXPECT_EQ(50, volumeNow());
  frames(4, 0.25f);
  EXPECT_EQ(100, volumeNow());
  frames(4, 0.25f);
  EXPECT_EQ(100, volumeNow());
}

TEST_F(TamarinAudioDeviceTest, FadeInRisesInProportionToTime) {
  mDevice->playSoundCue("long", 2.0f);
  frames(1, 0.5f);
  EXPECT_EQ(25, volumeNow());
  frames(1, 1.0f);
  EXPECT_EQ(75, volumeNow());
}

TEST_F(TamarinAudioDeviceTest, StopSoundCueFadesOutOverASecondAndTheRecordGoesAfterIt) {
  mDevice->playSoundCue("long");
  frames(2, 0.5f);
  mDevice->stopSoundCue("long", 1.0f);
  frames(1, 0.25f);
  EXPECT_EQ(75, volumeNow());
  frames(1, 0.25f);
  EXPECT_EQ(50, volumeNow());
  frames(1, 0.25f);
  EXPECT_EQ(25, volumeNow());
  frames(1, 0.25f);
  EXPECT_EQ(0, volumeNow());
  EXPECT_TRUE(mDevice->isSoundCuePlaying("long"));
  EXPECT_TRUE(eventsOf(AudioEventKind::Stop).empty());
  frames(1, 0.02f);
  EXPECT_FALSE(mDevice->isSoundCuePlaying("long"));
  const auto stops = eventsOf(AudioEventKind::Stop);
  ASSERT_EQ(1u, stops.size());
  EXPECT_TRUE(stops[0].existed);
  EXPECT_EQ(0u, stops[0].value);
  EXPECT_EQ(2020u, stops[0].timeMs);
}

TEST_F(TamarinAudioDeviceTest, StopSoundCueLowersTheCountersAtOnceAndAgainWhenTheRecordGoes) {
  mDevice->playSoundCue("long");
  mDevice->playSoundCue("ogg");
  ASSERT_EQ(1, mDevice->numWave());
  ASSERT_EQ(1, mDevice->numOgg());
  mDevice->stopSoundCue("long", 0.5f);
  mDevice->stopSoundCue("ogg", 0.5f);
  EXPECT_EQ(0, mDevice->numWave());
  EXPECT_EQ(0, mDevice->numOgg());
  frames(1, 0.6f);
  EXPECT_TRUE(mDevice->playingCues().empty());
  EXPECT_EQ(-1, mDevice->numWave());
  EXPECT_EQ(-1, mDevice->numOgg());
}

TEST_F(TamarinAudioDeviceTest, CountersBelowZeroLeaveRoomForMoreCues) {
  for (int i = 0; i < 8; ++i) mDevice->playSoundCue("pair");
  ASSERT_EQ(16, mDevice->numWave());
  mDevice->stopSoundCue("pair", 0.0f);
  EXPECT_EQ(15, mDevice->numWave());
  frames(1, 0.02f);
  // One record of two sounds went: counted off once at the stop, twice at the removal.
  EXPECT_EQ(13, mDevice->numWave());
  EXPECT_EQ(7u, mDevice->playingCues().size());
  for (int i = 0; i < 2; ++i) mDevice->playSoundCue("pair");
  EXPECT_EQ(17, mDevice->numWave());
  EXPECT_EQ(18u, solva::Sounds().size());
}

TEST_F(TamarinAudioDeviceTest, StopSoundCueTouchesOnlyTheFirstRecordOfThatCue) {
  mDevice->playSoundCue("long");
  mDevice->playSoundCue("long");
  mDevice->stopSoundCue("long", 0.0f);
  EXPECT_EQ(1, mDevice->numWave());
  frames(1, 0.02f);
  ASSERT_EQ(1u, mDevice->playingCues().size());
  EXPECT_EQ(-1.0f, mDevice->playingCues()[0].mFadeOutStart);
  EXPECT_TRUE(mDevice->isSoundCuePlaying("long"));
}

TEST_F(TamarinAudioDeviceTest, StopSoundCueByCueStopsAtTheNextUpdate) {
  mDevice->playSoundCue("long");
  frames(1, 0.1f);
  mDevice->stopSoundCue(mDevice->getSoundCue("long"));
  EXPECT_TRUE(mDevice->isSoundCuePlaying(mDevice->getSoundCue("long")));
  frames(1, 0.02f);
  EXPECT_FALSE(mDevice->isSoundCuePlaying(mDevice->getSoundCue("long")));
}

TEST_F(TamarinAudioDeviceTest, RecordGoesWhenItsSoundsHaveEnded) {
  mDevice->playSoundCue("tone");
  frames(49, 0.02f);
  EXPECT_TRUE(mDevice->isSoundCuePlaying("tone"));
  frames(1, 0.02f);
  EXPECT_FALSE(mDevice->isSoundCuePlaying("tone"));
  EXPECT_EQ(0, mDevice->numWave());
  const auto stops = eventsOf(AudioEventKind::Stop);
  ASSERT_EQ(1u, stops.size());
  EXPECT_EQ(1u, stops[0].value);
  EXPECT_FALSE(stops[0].existed);
}

TEST_F(TamarinAudioDeviceTest, IsAnySoundPlayingIsAlwaysFalse) {
  mDevice->playSoundCue("long");
  EXPECT_FALSE(mDevice->isAnySoundPlaying());
}

TEST_F(TamarinAudioDeviceTest, AfterStopAllAndBeforeTheNextUpdateTheCueStillCountsAsPlaying) {
  mDevice->playSoundCue("long");
  mDevice->playSoundWithoutCue(mTitle.file("clip.wav"));
  mDevice->stopAll();
  EXPECT_TRUE(solva::Sounds().empty());
  EXPECT_TRUE(mDevice->isSoundCuePlaying("long"));
  EXPECT_EQ(kNoAudioID, mDevice->soundWithoutCue());
  frames(1, 0.02f);
  EXPECT_FALSE(mDevice->isSoundCuePlaying("long"));
}

TEST_F(TamarinAudioDeviceTest, StopAllFirmReturnsWithAnEmptyList) {
  mDevice->playSoundCue("long");
  mDevice->playSoundCue("bgm");
  mDevice->playSoundCue("silent");
  const zvtest::ChildResult child = zvtest::RunInChild([&] {
    mDevice->stopAllFirm();
    printf("%zu\n", mDevice->playingCues().size());
  });
  EXPECT_EQ("TamarinAudioDevice::stopAllFirm()\n0\n", child.out);
  mDevice->stopAllFirm();
  EXPECT_TRUE(mDevice->playingCues().empty());
  EXPECT_TRUE(solva::Sounds().empty());
}

TEST_F(TamarinAudioDeviceTest, MusicCueStaysOnStopAllWithoutBGMAndStopBGMStopsIt) {
  mDevice->playSoundCue("bgm");
  mDevice->playSoundCue("long");
  mDevice->playSoundWithoutCue(mTitle.file("clip.wav"));
  mDevice->stopAllWithoutBGM();
  frames(1, 0.02f);
  EXPECT_TRUE(mDevice->isSoundCuePlaying("bgm"));
  EXPECT_FALSE(mDevice->isSoundCuePlaying("long"));
  EXPECT_EQ(kNoAudioID, mDevice->soundWithoutCue());
  mDevice->stopBGM();
  frames(1, 0.02f);
  EXPECT_FALSE(mDevice->isSoundCuePlaying("bgm"));
  EXPECT_TRUE(solva::Sounds().empty());
}

TEST_F(TamarinAudioDeviceTest, PauseAllVoiceLeavesMusicPlaying) {
  mDevice->playSoundCue("bgm");
  mDevice->playSoundCue("long");
  mDevice->pauseAllVoice();
  std::vector<solva::SoundState> sounds = solva::Sounds();
  ASSERT_EQ(2u, sounds.size());
  EXPECT_FALSE(sounds[0].paused);
  EXPECT_TRUE(sounds[1].paused);
  mDevice->unPauseAllVoice();
  sounds = solva::Sounds();
  EXPECT_FALSE(sounds[1].paused);
}

TEST_F(TamarinAudioDeviceTest, PauseAllPausesEverySoundAndSetsTheFlag) {
  mDevice->playSoundCue("bgm");
  mDevice->playSoundCue("long");
  mDevice->pauseAll();
  EXPECT_EQ(1, mDevice->paused());
  for (const auto& sound : solva::Sounds()) EXPECT_TRUE(sound.paused);
  frames(10, 0.1f);
  EXPECT_EQ(2u, mDevice->playingCues().size());
  mDevice->unPauseAll();
  EXPECT_EQ(0, mDevice->paused());
  for (const auto& sound : solva::Sounds()) EXPECT_FALSE(sound.paused);
}

TEST_F(TamarinAudioDeviceTest, SuspendAndResumePauseAndResumeWithoutTheFlag) {
  mDevice->playSoundCue("long");
  mDevice->suspend();
  EXPECT_EQ(0, mDevice->paused());
  EXPECT_TRUE(solva::Sounds().at(0).paused);
  mDevice->resume();
  EXPECT_FALSE(solva::Sounds().at(0).paused);
}

TEST_F(TamarinAudioDeviceTest, AfterPauseAllAndSuspendResumeDoesNotUnpause) {
  mDevice->playSoundCue("long");
  mDevice->pauseAll();
  mDevice->suspend();
  mDevice->resume();
  EXPECT_EQ(1, mDevice->paused());
  EXPECT_TRUE(solva::Sounds().at(0).paused);
}

TEST_F(TamarinAudioDeviceTest, PlainChannelPlaysTheFileAsGivenAtFullVolume) {
  mDevice->playSoundWithoutCue(mTitle.file("clip.wav"));
  const auto starts = eventsOf(AudioEventKind::Start);
  ASSERT_EQ(1u, starts.size());
  EXPECT_EQ(mTitle.file("clip.wav"), starts[0].path);
  EXPECT_EQ(100, starts[0].volume);
  EXPECT_EQ(255, starts[0].priority);
  EXPECT_EQ(0u, starts[0].flags);
  EXPECT_EQ(0, mDevice->numWave());
  EXPECT_TRUE(mDevice->isSoundWithOutCuePlaying());
  EXPECT_TRUE(mDevice->playingCues().empty());
}

TEST_F(TamarinAudioDeviceTest, PlainChannelStopsWhatPlaysOnItBeforeStarting) {
  mDevice->playSoundWithoutCue(mTitle.file("clip.wav"));
  const tAudioID first = mDevice->soundWithoutCue();
  mDevice->playSoundWithoutCue(mTitle.file("clip.wav"));
  const auto stops = eventsOf(AudioEventKind::Stop);
  ASSERT_EQ(1u, stops.size());
  EXPECT_EQ(first, stops[0].id);
  EXPECT_NE(first, mDevice->soundWithoutCue());
}

TEST_F(TamarinAudioDeviceTest, PlainChannelTimeFollowsTheClockAndSeeks) {
  mDevice->playSoundWithoutCue(mTitle.file("clip.wav"));
  frames(10, 0.05f);
  EXPECT_EQ(500u, mDevice->getSoundTime());
  mDevice->setSoundTime(1500);
  EXPECT_EQ(1500u, mDevice->getSoundTime());
  mDevice->pauseSoundWithoutCue();
  frames(20, 0.05f);
  EXPECT_EQ(1500u, mDevice->getSoundTime());
  EXPECT_TRUE(mDevice->isSoundWithOutCuePlaying());
  mDevice->unPauseSoundWithoutCue();
  frames(10, 0.05f);
  EXPECT_EQ(2000u, mDevice->getSoundTime());
}

TEST_F(TamarinAudioDeviceTest, UpdateClearsThePlainChannelWhenItsSoundHasEnded) {
  mDevice->playSoundWithoutCue(mTitle.file("clip.wav"));
  frames(59, 0.05f);
  EXPECT_NE(kNoAudioID, mDevice->soundWithoutCue());
  frames(1, 0.05f);
  EXPECT_EQ(kNoAudioID, mDevice->soundWithoutCue());
  EXPECT_FALSE(mDevice->isSoundWithOutCuePlaying());
  EXPECT_EQ(0u, mDevice->getSoundTime());
}

TEST_F(TamarinAudioDeviceTest, PlainChannelOperationsWithoutASoundDoNothing) {
  mDevice->pauseSoundWithoutCue();
  mDevice->unPauseSoundWithoutCue();
  mDevice->setSoundTime(100);
  mDevice->stopSoundWithoutCue();
  EXPECT_FALSE(mDevice->isSoundWithOutCuePlaying());
  EXPECT_EQ(0u, mDevice->getSoundTime());
  EXPECT_TRUE(solva::AudioEvents().empty());
}

TEST_F(TamarinAudioDeviceTest, DestroyingTheDeviceResumesAndStopsEverything) {
  mDevice->playSoundCue("long");
  mDevice->pauseAll();
  solva::ClearAudioEvents();
  AudioDevice::sDestroy();
  EXPECT_TRUE(solva::Sounds().empty());
  EXPECT_EQ(1u, eventsOf(AudioEventKind::Resume).size());
  EXPECT_FALSE(eventsOf(AudioEventKind::Stop).empty());
}

TEST(AudioDeviceDeathTest, InstanceBeforeCreateFailsTheAssertion) {
  AudioDevice::sDestroy();
  EXPECT_DEATH(AudioDevice::sInstance(),
               zvtest::Literal("Src/Sound/AudioDevice.cpp:") + "[0-9]+" +
                   zvtest::Literal(": static AudioDevice* AudioDevice::sInstance(): Assertion `sAudioDevice != __null' failed."));
}

using TamarinAudioDeviceDeathTest = TamarinAudioDeviceTest;

TEST_F(TamarinAudioDeviceDeathTest, PlaySoundOutsideACueFailsTheAssertion) {
  EXPECT_DEATH(mDevice->playSound("tone.wav", SoundParams()),
               zvtest::Literal("Src/Sound/TamarinAudioDevice.cpp:") + "[0-9]+" +
                   zvtest::Literal(": virtual void TamarinAudioDevice::playSound(const std::string&, const SoundParams&): "
                                   "Assertion `mSoundCueToPlay != 0' failed."));
}

}  // namespace
