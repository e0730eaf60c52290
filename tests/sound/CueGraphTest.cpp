// Playing a cue's graph: what each kind of node asks of the audio device, seen
// as the device's speaker log.
#include <map>

#include "Sound/SoundNodeRandom.h"
#include "Sound/SoundRandom.h"
#include "SoundFixture.h"

namespace {

using solva::AudioEventKind;

class CueGraphTest : public SoundTest {
 protected:
  void SetUp() override {
    SoundTest::SetUp();
    zvtest::WriteTone(soundFile("a.wav"), 22050, 0.5, 440, 0.5);
    zvtest::WriteTone(soundFile("b.wav"), 22050, 0.5, 660, 0.5);
    zvtest::WriteTone(soundFile("c.wav"), 22050, 0.5, 880, 0.5);
    zvtest::WriteTone(soundFile("t.ogg"), 22050, 0.5, 440, 0.5, zvtest::SoundFormat::Ogg);
  }

  // Plays the cue and clears the list again, so the count limits never bite.
  static void playAndClear(ProbedAudioDevice* device, const std::string& name) {
    device->playSoundCue(name);
    device->stopAll();
    device->update(0.0f);
  }

  std::vector<std::string> startedFiles() {
    std::vector<std::string> files;
    for (const solva::AudioEvent& event : eventsOf(AudioEventKind::Start)) {
      files.push_back(event.path.substr(event.path.rfind('/') + 1));
    }
    return files;
  }
};

TEST_F(CueGraphTest, WaveLeafStartsItsFileUnderResSound) {
  ProbedAudioDevice* device = makeDevice("<G><C Name='c' Volume='70'><N Name='Wave' FileName='a.wav'/></C></G>");
  device->playSoundCue("c");
  const auto starts = eventsOf(AudioEventKind::Start);
  ASSERT_EQ(1u, starts.size());
  EXPECT_EQ(mTitle.path() + "/res/Sound/a.wav", starts[0].path);
  EXPECT_EQ(70, starts[0].volume);
  EXPECT_EQ(0, starts[0].priority);
  EXPECT_EQ(0u, starts[0].flags);
  EXPECT_EQ(0u, starts[0].payload);
  EXPECT_EQ(1, device->numWave());
  EXPECT_EQ(0, device->numOgg());
  ASSERT_EQ(1u, device->playingCues().size());
  EXPECT_TRUE(device->playingCues()[0].mIsWave);
  EXPECT_EQ(std::vector<tAudioID>({starts[0].id}), device->playingCues()[0].mAudioIds);
}

TEST_F(CueGraphTest, OggLeafStartsItsFileAndCountsAsOgg) {
  ProbedAudioDevice* device = makeDevice("<G><C Name='c'><N Name='Ogg' FileName='t.ogg'/></C></G>");
  device->playSoundCue("c");
  const auto starts = eventsOf(AudioEventKind::Start);
  ASSERT_EQ(1u, starts.size());
  EXPECT_EQ(mTitle.path() + "/res/Sound/t.ogg", starts[0].path);
  EXPECT_EQ(0, device->numWave());
  EXPECT_EQ(1, device->numOgg());
  EXPECT_TRUE(device->playingCues()[0].mIsOgg);
  EXPECT_FALSE(device->playingCues()[0].mIsWave);
}

TEST_F(CueGraphTest, CuePanIsNotApplied) {
  ProbedAudioDevice* device = makeDevice("<G><C Name='c' Pan='25'><N Name='Wave' FileName='a.wav'/></C></G>");
  device->playSoundCue("c");
  EXPECT_EQ(0, eventsOf(AudioEventKind::Start).at(0).pan);
}

TEST_F(CueGraphTest, FirstNodePointingAtNoNodePlaysNothing) {
  ProbedAudioDevice* device = makeDevice("<G><C Name='c' FirstNode='3'><N Name='Wave' FileName='a.wav'/></C></G>");
  device->playSoundCue("c");
  EXPECT_TRUE(solva::AudioEvents().empty());
  EXPECT_TRUE(device->playingCues().empty());
  EXPECT_FALSE(device->isSoundCuePlaying("c"));
}

TEST_F(CueGraphTest, LoopWithoutLoopCountPlaysOnce) {
  ProbedAudioDevice* device =
      makeDevice("<G><C Name='c'><N Name='Loop' Children='1;'/><N Name='Wave' FileName='a.wav'/></C></G>");
  device->playSoundCue("c");
  const auto start = eventsOf(AudioEventKind::Start).at(0);
  EXPECT_EQ(0u, start.flags);
  EXPECT_EQ(0u, start.payload);
  solva::AdvanceClock(500);
  device->update(0.5f);
  EXPECT_FALSE(device->isSoundCuePlaying("c"));
  EXPECT_EQ(1u, eventsOf(AudioEventKind::End).size());
}

TEST_F(CueGraphTest, LoopCountOfMinusOneLoopsForEver) {
  ProbedAudioDevice* device = makeDevice(
      "<G><C Name='c'><N Name='Loop' LoopCount='-1' Children='1;'/><N Name='Wave' FileName='a.wav'/></C></G>");
  device->playSoundCue("c");
  const auto start = eventsOf(AudioEventKind::Start).at(0);
  EXPECT_EQ(kAudioRepeat, start.flags);
  EXPECT_EQ(0x40000000u, start.payload);
  for (int frame = 0; frame < 600; ++frame) {
    solva::AdvanceClock(100);
    device->update(0.1f);
  }
  EXPECT_TRUE(device->isSoundCuePlaying("c"));
  EXPECT_TRUE(eventsOf(AudioEventKind::End).empty());
}

TEST_F(CueGraphTest, LoopCountIsPassedAsThePayload) {
  ProbedAudioDevice* device = makeDevice(
      "<G><C Name='c'><N Name='Loop' LoopCount='3' Children='1;'/><N Name='Wave' FileName='a.wav'/></C></G>");
  device->playSoundCue("c");
  const auto start = eventsOf(AudioEventKind::Start).at(0);
  EXPECT_EQ(kAudioRepeat, start.flags);
  EXPECT_EQ(3u, start.payload);
}

TEST_F(CueGraphTest, RandomWithTwoChildrenAlternatesStrictly) {
  ProbedAudioDevice* device = makeDevice(
      "<G><C Name='r'><N Name='Random' Children='1;2;'/><N Name='Wave' FileName='a.wav'/>"
      "<N Name='Wave' FileName='b.wav'/></C></G>");
  for (int i = 0; i < 12; ++i) device->playSoundCue("r");
  const std::vector<std::string> files = startedFiles();
  ASSERT_EQ(12u, files.size());
  for (size_t i = 1; i < files.size(); ++i) EXPECT_NE(files[i - 1], files[i]) << i;
}

TEST_F(CueGraphTest, RandomNeverPlaysTheSameChildTwiceInARow) {
  gSetRandomSeed(0);
  ProbedAudioDevice* device = makeDevice(
      "<G><C Name='r'><N Name='Random' Children='1;2;3;' Weights='10;0;0'/><N Name='Wave' FileName='a.wav'/>"
      "<N Name='Wave' FileName='b.wav'/><N Name='Wave' FileName='c.wav'/></C></G>");
  for (int i = 0; i < 60; ++i) playAndClear(device, "r");
  const std::vector<std::string> files = startedFiles();
  ASSERT_EQ(60u, files.size());
  std::map<std::string, int> counts;
  for (size_t i = 0; i < files.size(); ++i) {
    ++counts[files[i]];
    if (i > 0) {
      EXPECT_NE(files[i - 1], files[i]) << i;
    }
  }
  // The weights are kept but not used: every child comes up.
  EXPECT_EQ(3u, counts.size());
}

TEST_F(CueGraphTest, RandomDrawFollowsTheSharedSeed) {
  ProbedAudioDevice* device = makeDevice(
      "<G><C Name='r'><N Name='Random' Children='1;2;3;'/><N Name='Wave' FileName='a.wav'/>"
      "<N Name='Wave' FileName='b.wav'/><N Name='Wave' FileName='c.wav'/></C></G>");
  gSetRandomSeed(99);
  std::vector<std::string> expected;
  uint32_t seed = 99;
  int last = -1;
  const char* const names[] = {"a.wav", "b.wav", "c.wav"};
  for (int i = 0; i < 20; ++i) {
    int index;
    do {
      seed = seed * 214013u + 2531011u;
      index = int(float(seed >> 16) * (1.0f / 65536.0f) * 3.0f);
    } while (index == last);
    last = index;
    expected.push_back(names[index]);
  }
  for (int i = 0; i < 20; ++i) playAndClear(device, "r");
  EXPECT_EQ(expected, startedFiles());
}

TEST_F(CueGraphTest, EmptySlotOfARandomDrawsAgain) {
  ProbedAudioDevice* device = makeDevice(
      "<G><C Name='r'><N Name='Random' Children='9;1;'/><N Name='Wave' FileName='b.wav'/></C></G>");
  for (int i = 0; i < 8; ++i) device->playSoundCue("r");
  EXPECT_EQ(std::vector<std::string>(8, "b.wav"), startedFiles());
}

TEST_F(CueGraphTest, WaveEndingInMp3PlaysNothingAndSaysSo) {
  const std::string body = "<G><C Name='mp3cue'><N Name='Wave' FileName='song.mp3'/></C></G>";
  const zvtest::ChildResult child = zvtest::RunInChild([&] {
    ProbedAudioDevice* device = makeDevice(body);
    device->playSoundCue("mp3cue");
  });
  EXPECT_FALSE(child.died());
  EXPECT_EQ("Sound cue [mp3cue] did not set any wave\n", child.out);

  ProbedAudioDevice* device = makeDevice(body);
  device->playSoundCue("mp3cue");
  EXPECT_TRUE(eventsOf(AudioEventKind::Start).empty());
  EXPECT_EQ(0, device->numWave());
}

TEST_F(CueGraphTest, OggWithAWavNameSaysItHasNoOgg) {
  const zvtest::ChildResult child = zvtest::RunInChild([&] {
    ProbedAudioDevice* device = makeDevice("<G><C Name='o'><N Name='Ogg' FileName='a.wav'/></C></G>");
    device->playSoundCue("o");
  });
  EXPECT_EQ("Sound cue [o] did not set any ogg\n", child.out);
}

TEST_F(CueGraphTest, MixerStartsBothChildrenWithTheSameParams) {
  ProbedAudioDevice* device = makeDevice(
      "<G><C Name='m' Volume='60'><N Name='Mixer' Children='1;2;'/><N Name='Wave' FileName='a.wav'/>"
      "<N Name='Wave' FileName='b.wav'/></C></G>");
  device->playSoundCue("m");
  const auto starts = eventsOf(AudioEventKind::Start);
  ASSERT_EQ(2u, starts.size());
  EXPECT_EQ(std::vector<std::string>({"a.wav", "b.wav"}), startedFiles());
  for (const auto& start : starts) {
    EXPECT_EQ(60, start.volume);
    EXPECT_EQ(0u, start.flags);
  }
  EXPECT_EQ(2, device->numWave());
  EXPECT_EQ(2u, device->playingCues().at(0).mAudioIds.size());
}

TEST_F(CueGraphTest, LoopAboveAMixerSetsTheCountForBoth) {
  ProbedAudioDevice* device = makeDevice(
      "<G><C Name='m'><N Name='Loop' LoopCount='4' Children='1;'/><N Name='Mixer' Children='2;3;'/>"
      "<N Name='Wave' FileName='a.wav'/><N Name='Wave' FileName='b.wav'/></C></G>");
  device->playSoundCue("m");
  const auto starts = eventsOf(AudioEventKind::Start);
  ASSERT_EQ(2u, starts.size());
  for (const auto& start : starts) {
    EXPECT_EQ(4u, start.payload);
    EXPECT_EQ(kAudioRepeat, start.flags);
  }
}

}  // namespace
