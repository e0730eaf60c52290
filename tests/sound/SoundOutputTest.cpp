// What cues sound like: the device's speaker writes a WAV file, and the level
// of each stretch of it is measured through libsndfile.
#include <cmath>

#include "SoundFixture.h"

namespace {

const double kAmp = 0.5;
const double kToneRms = kAmp / std::sqrt(2.0);
// One step of volume, as a level.
const double kStep = kToneRms / 100.0;

class SoundOutputTest : public SoundTest {
 protected:
  void SetUp() override {
    SoundTest::SetUp();
    std::string error;
    ASSERT_TRUE(solva::SetSpeaker(speakerPath(), &error)) << error;
    zvtest::WriteTone(soundFile("tone.wav"), 22050, 4.0, 1000, kAmp);
    zvtest::WriteTone(soundFile("short.wav"), 22050, 0.5, 1000, kAmp);
    zvtest::WriteRamp(mTitle.file("clip.wav"), 16000, 3.0, 0.9);
  }

  std::string speakerPath() const { return mTitle.file("speaker.wav"); }

  // Frames of 100 ms of device time each.
  void frames(ProbedAudioDevice* device, int count) {
    for (int i = 0; i < count; ++i) {
      solva::AdvanceClock(100);
      device->update(0.1f);
    }
  }

  zvtest::Sound heard() {
    solva::CloseSpeaker();
    return zvtest::ReadSound(speakerPath());
  }
};

TEST_F(SoundOutputTest, CueSoundsAtItsCueGroupAndVoiceVolume) {
  // 80 % of a group at 50 % is 40; at a voice volume of 50 that is 20 %.
  ProbedAudioDevice* device =
      makeDevice("<G Volume='50'><C Name='tone' Volume='80'><N Name='Wave' FileName='tone.wav'/></C></G>");
  device->setVoiceVolume(50);
  device->playSoundCue("tone");
  frames(device, 10);
  const zvtest::Sound out = heard();
  EXPECT_NEAR(kToneRms * 0.20, zvtest::RmsBetween(out, 0, 1000), 0.002);
}

TEST_F(SoundOutputTest, MusicCueSoundsAtTheMusicVolume) {
  ProbedAudioDevice* device =
      makeDevice("<G><C Name='bgm' IsMusic='1' Volume='90'><N Name='Wave' FileName='tone.wav'/></C></G>");
  device->setVoiceVolume(10);
  device->setMusicVolume(50);
  device->playSoundCue("bgm");
  frames(device, 10);
  EXPECT_NEAR(kToneRms * 0.45, zvtest::RmsBetween(heard(), 0, 1000), 0.002);
}

TEST_F(SoundOutputTest, FadeInOf2SecondsRisesInProportionPer100ms) {
  ProbedAudioDevice* device = makeDevice("<G><C Name='tone'><N Name='Wave' FileName='tone.wav'/></C></G>");
  device->playSoundCue("tone", 2.0f);
  frames(device, 30);
  const zvtest::Sound out = heard();
  // Each 100 ms plays at the volume the update at its start set: 0 first, then
  // rising by 5 each time, full from 2 s on.
  EXPECT_EQ(0.0, zvtest::RmsBetween(out, 0, 100));
  double before = 0;
  for (int k = 1; k < 30; ++k) {
    const double expected = kToneRms * std::min(1.0, k * 0.1 / 2.0);
    const double level = zvtest::RmsBetween(out, k * 100.0, (k + 1) * 100.0);
    EXPECT_NEAR(expected, level, 1.5 * kStep) << "window " << k;
    EXPECT_GE(level, before - 0.001) << "window " << k;
    before = level;
  }
  EXPECT_NEAR(kToneRms * 0.5, zvtest::RmsBetween(out, 1000, 1100), 1.5 * kStep);
}

TEST_F(SoundOutputTest, FadeOutFallsOverTheFadeAndThenStops) {
  ProbedAudioDevice* device = makeDevice("<G><C Name='tone'><N Name='Wave' FileName='tone.wav'/></C></G>");
  device->playSoundCue("tone");
  frames(device, 5);
  device->stopSoundCue("tone", 1.0f);
  frames(device, 15);
  const zvtest::Sound out = heard();
  EXPECT_NEAR(kToneRms, zvtest::RmsBetween(out, 0, 500), 0.002);
  for (int k = 0; k < 10; ++k) {
    const double expected = kToneRms * (1.0 - (k + 1) * 0.1);
    EXPECT_NEAR(expected, zvtest::RmsBetween(out, 600 + k * 100.0, 700 + k * 100.0), 1.5 * kStep) << "window " << k;
  }
  EXPECT_EQ(0.0, zvtest::RmsBetween(out, 1600, 2000));
  EXPECT_FALSE(device->isSoundCuePlaying("tone"));
}

TEST_F(SoundOutputTest, LoopCountRepeatsTheFileThatManyTimes) {
  ProbedAudioDevice* device = makeDevice(
      "<G><C Name='thrice'><N Name='Loop' LoopCount='3' Children='1;'/><N Name='Wave' FileName='short.wav'/></C></G>");
  device->playSoundCue("thrice");
  frames(device, 20);
  EXPECT_FALSE(device->isSoundCuePlaying("thrice"));
  const zvtest::Sound out = heard();
  const zvtest::Sound once = zvtest::ReadSound(soundFile("short.wav"));
  const size_t n = once.samples.size();
  for (int pass = 0; pass < 3; ++pass) {
    for (size_t i = 0; i < n; ++i) {
      ASSERT_NEAR(once.samples[i], out.samples[pass * n + i], 2.0 / 32768) << "pass " << pass << " frame " << i;
    }
  }
  EXPECT_EQ(0.0, zvtest::Rms(out.samples, 3 * n, out.samples.size() - 3 * n));
}

TEST_F(SoundOutputTest, PlainChannelSeekOf1500msStartsTheClip1500msIn) {
  ProbedAudioDevice* device = makeDevice("<G/>");
  device->playSoundWithoutCue(mTitle.file("clip.wav"));
  device->setSoundTime(1500);
  frames(device, 20);
  const zvtest::Sound out = heard();
  // The clip rises from 0 to 0.9 over 3 s: 1.5 s in it stands at 0.45.
  EXPECT_NEAR(0.45, out.samples[0], 0.001);
  EXPECT_NEAR(0.45 + 0.15, out.samples[22050 / 2], 0.001);
  EXPECT_EQ(0.0, zvtest::RmsBetween(out, 1500, 2000));
  EXPECT_EQ(kNoAudioID, device->soundWithoutCue());
}

TEST_F(SoundOutputTest, PausedPlainChannelNeitherAdvancesNorEnds) {
  ProbedAudioDevice* device = makeDevice("<G/>");
  device->playSoundWithoutCue(mTitle.file("clip.wav"));
  frames(device, 10);
  device->pauseSoundWithoutCue();
  frames(device, 50);
  EXPECT_TRUE(device->isSoundWithOutCuePlaying());
  EXPECT_EQ(1000u, device->getSoundTime());
  device->unPauseSoundWithoutCue();
  frames(device, 15);
  EXPECT_TRUE(device->isSoundWithOutCuePlaying());
  EXPECT_EQ(2500u, device->getSoundTime());
  frames(device, 5);
  EXPECT_FALSE(device->isSoundWithOutCuePlaying());
  frames(device, 10);  // a second of silence after the end, to measure
  const zvtest::Sound out = heard();
  ASSERT_EQ(size_t(9 * 22050), out.samples.size());
  // The pause fades out and the resume fades in over 5 ms (110 frames).
  EXPECT_NEAR(0.3, out.samples[22050 - 1], 0.001);
  EXPECT_EQ(0.0, zvtest::RmsBetween(out, 1005, 6000));
  EXPECT_NEAR(0.9 * 1.005 / 3.0, out.samples[6 * 22050 + 110], 0.001);
  // 10 ms before its end (the converted clip's last few milliseconds ring as its
  // step down to silence is band-limited).
  EXPECT_NEAR(0.9 * 2.99 / 3.0, out.samples[8 * 22050 - 221], 0.001);
  EXPECT_EQ(0.0, zvtest::RmsBetween(out, 8000.1, 9000));
}

}  // namespace
