// Choosing the speaker and the mixing rate.
#include <sys/stat.h>

#include <chrono>
#include <cstdlib>
#include <thread>

#include "AudioFixture.h"

namespace {

using Vantrel::Solva::CAudioSvc;

class SpeakerTest : public AudioTest {};

TEST_F(SpeakerTest, WavPathChoosesTheFileSpeaker) { EXPECT_EQ("file", solva::SpeakerName()); }

TEST_F(SpeakerTest, NoneIsTakenByName) {
  EXPECT_TRUE(solva::SetSpeaker("none"));
  EXPECT_EQ("none", solva::SpeakerName());
}

TEST_F(SpeakerTest, UnknownNameFailsWithAMessageAndLeavesNone) {
  std::string error;
  EXPECT_FALSE(solva::SetSpeaker("loudhailer", &error));
  EXPECT_EQ("no speaker called \"loudhailer\"", error);
  EXPECT_EQ("none", solva::SpeakerName());
}

TEST_F(SpeakerTest, FileInAMissingFolderFailsWithAMessage) {
  std::string error;
  EXPECT_FALSE(solva::SetSpeaker(mTitle.path() + "/no/such/folder/out.wav", &error));
  EXPECT_NE(std::string::npos, error.find("cannot write")) << error;
}

TEST_F(SpeakerTest, MixRateOutOfRangeIsRefused) {
  EXPECT_FALSE(solva::SetMixRate(7999));
  EXPECT_FALSE(solva::SetMixRate(96001));
  EXPECT_EQ(solva::kDefaultMixRate, solva::MixRate());
  EXPECT_TRUE(solva::SetMixRate(44100));
  EXPECT_EQ(44100, solva::MixRate());
}

TEST_F(SpeakerTest, NewMixRateStopsSoundsAndClosesTheSpeaker) {
  mkdir((mTitle.path() + "/res").c_str(), 0755);
  zvtest::WriteTone(titleFile("res/tone.wav"), 22050, 1.0, 440, 0.5);
  CAudioSvc svc;
  const tAudioID id = svc.StartAudio("res/tone.wav", 100, 0, 0);
  ASSERT_TRUE(solva::SetMixRate(16000));
  EXPECT_FALSE(svc.IsAudioPlaying(id));
  EXPECT_EQ("none", solva::SpeakerName());
}

TEST_F(SpeakerTest, FlushMakesTheFileReadableWhileItStaysOpen) {
  solva::AdvanceClock(500);
  std::string error;
  ASSERT_TRUE(solva::FlushSpeaker(&error)) << error;
  EXPECT_EQ(frameAt(500), zvtest::ReadSound(speakerFile()).samples.size());
  solva::AdvanceClock(500);
  ASSERT_TRUE(solva::FlushSpeaker(&error)) << error;
  EXPECT_EQ(frameAt(1000), zvtest::ReadSound(speakerFile()).samples.size());
  EXPECT_EQ("file", solva::SpeakerName());
}

TEST_F(SpeakerTest, ChangingSpeakerFinishesTheFileAtThatTime) {
  solva::AdvanceClock(250);
  ASSERT_TRUE(solva::SetSpeaker("none"));
  solva::AdvanceClock(250);
  EXPECT_EQ(frameAt(250), zvtest::ReadSound(speakerFile()).samples.size());
}

// SDL's disk driver stands in for a sound card: it takes the queued output at
// the card's pace and writes it to a raw file.
TEST_F(SpeakerTest, SdlSpeakerPlaysThroughSdlAudio) {
  solva::CloseSpeaker();
  const std::string raw = mTitle.file("sdl.raw");
  setenv("SDL_AUDIODRIVER", "disk", 1);
  setenv("SDL_DISKAUDIOFILE", raw.c_str(), 1);
  setenv("SDL_DISKAUDIODELAY", "5", 1);
  solva::SetClockMode(solva::ClockMode::Real, 0);
  std::string error;
  const bool opened = solva::SetSpeaker("sdl", &error);
  unsetenv("SDL_AUDIODRIVER");
  unsetenv("SDL_DISKAUDIOFILE");
  unsetenv("SDL_DISKAUDIODELAY");
  ASSERT_TRUE(opened) << error;
  EXPECT_EQ("sdl", solva::SpeakerName());
  mkdir((mTitle.path() + "/res").c_str(), 0755);
  zvtest::WriteTone(titleFile("res/tone.wav"), 22050, 0.4, 440, 0.5);
  CAudioSvc svc;
  const tAudioID id = svc.StartAudio("res/tone.wav", 100, 0, 0);
  while (svc.IsAudioPlaying(id)) {
    solva::PumpAudio();
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  std::this_thread::sleep_for(std::chrono::milliseconds(300));
  solva::CloseSpeaker();
  const zvtest::Bytes bytes = zvtest::ReadBytes(raw);
  ASSERT_GT(bytes.size(), 1000u);
  int loud = 0;
  for (size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const int16_t v = int16_t(bytes[i] | (bytes[i + 1] << 8));
    if (v > 8000 || v < -8000) ++loud;
  }
  EXPECT_GT(loud, 1000);
}

}  // namespace
