#include <gtest/gtest.h>
#include <sndfile.h>

#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "CCameraSvc.h"
#include "CUSBDeviceSvc.h"
#include "solva/Capture.h"
#include "solva/Clock.h"
#include "solva/Device.h"
#include "solva/Events.h"
#include "support/TestSupport.h"
#include "support/sound/SoundFiles.h"

namespace {

using Vantrel::Solva::CCameraSvc;
using Vantrel::Solva::CUSBDeviceSvc;
using zvtest::ReadBytes;
using zvtest::TempDir;

uint32_t U32At(const zvtest::Bytes& b, size_t at) {
  return uint32_t(b[at]) | uint32_t(b[at + 1]) << 8 | uint32_t(b[at + 2]) << 16 | uint32_t(b[at + 3]) << 24;
}
uint16_t U16At(const zvtest::Bytes& b, size_t at) { return uint16_t(b[at] | b[at + 1] << 8); }

std::vector<int16_t> Samples(const std::string& path) {
  const zvtest::Bytes bytes = ReadBytes(path);
  std::vector<int16_t> samples((bytes.size() - 44) / 2);
  for (size_t i = 0; i < samples.size(); ++i) samples[i] = int16_t(U16At(bytes, 44 + 2 * i));
  return samples;
}

double Rms(const std::vector<int16_t>& samples, size_t from, size_t count) {
  double sum = 0;
  for (size_t i = from; i < from + count; ++i) sum += double(samples[i]) * samples[i];
  return std::sqrt(sum / double(count));
}

class CaptureTest : public testing::Test {
 protected:
  void SetUp() override {
    solva::ResetDevice();
    solva::SetClockMode(solva::ClockMode::Virtual, 5000000);
    ASSERT_EQ(kNoErr, camera.SetCameraAudioPath(dir.path()));
  }
  void TearDown() override {
    solva::ResetDevice();
    solva::SetClockMode(solva::ClockMode::Real);
  }
  // Frames of 1/30 s, pumped as the host does.
  void RunFrames(int count) {
    for (int i = 0; i < count; ++i) {
      solva::AdvanceClockMicros(33333);
      solva::PumpCapture();
    }
  }

  TempDir dir;
  CCameraSvc camera;
};

TEST_F(CaptureTest, TwoSecondsOfToneMakeACanonicalWavOf32000Samples) {
  ASSERT_TRUE(solva::SetMicSource(solva::MicSource::Tone));
  const tAudCapHndl handle = camera.StartAudioCapture("audio.tmp", nullptr, 0, false);
  ASSERT_NE(kInvalidAudCapHndl, handle);
  solva::AdvanceClock(2000);
  ASSERT_TRUE(camera.StopAudioCapture(handle));

  const zvtest::Bytes b = ReadBytes(dir.file("audio.tmp"));
  ASSERT_EQ(44u + 64000u, b.size());
  EXPECT_EQ("RIFF", std::string(b.begin(), b.begin() + 4));
  EXPECT_EQ(36u + 64000u, U32At(b, 4));
  EXPECT_EQ("WAVEfmt ", std::string(b.begin() + 8, b.begin() + 16));
  EXPECT_EQ(16u, U32At(b, 16));
  EXPECT_EQ(1, U16At(b, 20));  // PCM
  EXPECT_EQ(1, U16At(b, 22));  // mono
  EXPECT_EQ(16000u, U32At(b, 24));
  EXPECT_EQ(32000u, U32At(b, 28));
  EXPECT_EQ(2, U16At(b, 32));
  EXPECT_EQ(16, U16At(b, 34));
  EXPECT_EQ("data", std::string(b.begin() + 36, b.begin() + 40));
  EXPECT_EQ(64000u, U32At(b, 40));

  const std::vector<int16_t> samples = Samples(dir.file("audio.tmp"));
  EXPECT_NEAR(16384 / std::sqrt(2.0), Rms(samples, 0, samples.size()), 10);
}

TEST_F(CaptureTest, OutsideToolsReadTheFile) {
  ASSERT_TRUE(solva::SetMicSource(solva::MicSource::Tone));
  const tAudCapHndl handle = camera.StartAudioCapture("clip.wav", nullptr, 0, false);
  solva::AdvanceClock(1500);
  camera.StopAudioCapture(handle);
  SF_INFO info{};
  SNDFILE* file = sf_open(dir.file("clip.wav").c_str(), SFM_READ, &info);
  ASSERT_NE(nullptr, file);
  sf_close(file);
  EXPECT_EQ(16000, info.samplerate);
  EXPECT_EQ(1, info.channels);
  EXPECT_EQ(24000, info.frames);
  EXPECT_EQ(SF_FORMAT_WAV | SF_FORMAT_PCM_16, info.format);
  const std::string quoted = "'" + dir.file("clip.wav") + "'";
  EXPECT_EQ("16000\n", zvtest::RunCommand("soxi -r " + quoted));
  EXPECT_EQ("1\n", zvtest::RunCommand("soxi -c " + quoted));
  EXPECT_EQ("16\n", zvtest::RunCommand("soxi -b " + quoted));
  EXPECT_EQ("1.500000\n", zvtest::RunCommand("soxi -D " + quoted));
}

TEST_F(CaptureTest, SamplesWrittenFollowTheDeviceTimeFrameByFrame) {
  ASSERT_TRUE(solva::SetMicSource(solva::MicSource::Silence));
  const tAudCapHndl handle = camera.StartAudioCapture("audio.tmp", nullptr, 0, false);
  RunFrames(30);  // 999,990 microseconds
  EXPECT_EQ(15999u, solva::GetCaptureInfo().samples);
  EXPECT_EQ(44u + 2 * 15999u, ReadBytes(dir.file("audio.tmp")).size());  // grows as it goes
  RunFrames(30);
  camera.StopAudioCapture(handle);
  EXPECT_EQ(44u + 2 * 31999u, ReadBytes(dir.file("audio.tmp")).size());
}

TEST_F(CaptureTest, APauseIsNotRecorded) {
  ASSERT_TRUE(solva::SetMicSource(solva::MicSource::Tone));
  const tAudCapHndl handle = camera.StartAudioCapture("audio.tmp", nullptr, 0, false);
  solva::AdvanceClock(1000);
  ASSERT_TRUE(camera.PauseAudioCapture(handle));
  EXPECT_FALSE(camera.PauseAudioCapture(handle));
  EXPECT_TRUE(solva::GetCaptureInfo().paused);
  solva::AdvanceClock(1000);
  ASSERT_TRUE(camera.ResumeAudioCapture(handle));
  EXPECT_FALSE(camera.ResumeAudioCapture(handle));
  solva::AdvanceClock(500);
  ASSERT_TRUE(camera.StopAudioCapture(handle));
  EXPECT_EQ(44u + 2 * 24000u, ReadBytes(dir.file("audio.tmp")).size());
  // The tone goes on where it left off: no jump at the pause.
  const std::vector<int16_t> samples = Samples(dir.file("audio.tmp"));
  EXPECT_NEAR(samples[15999], std::lround(16384 * std::sin(2 * M_PI * 440 * 15999 / 16000.0)), 1);
  EXPECT_NEAR(samples[16000], std::lround(16384 * std::sin(2 * M_PI * 440 * 16000 / 16000.0)), 1);
}

TEST_F(CaptureTest, StopOfAnUnknownOrStoppedHandleFails) {
  const tAudCapHndl handle = camera.StartAudioCapture("audio.tmp", nullptr, 0, false);
  EXPECT_TRUE(camera.StopAudioCapture(handle));
  EXPECT_FALSE(camera.StopAudioCapture(handle));
  EXPECT_FALSE(camera.PauseAudioCapture(handle));
  EXPECT_FALSE(camera.StopAudioCapture(kInvalidAudCapHndl));
  EXPECT_FALSE(solva::GetCaptureInfo().active);
}

TEST_F(CaptureTest, MaxLengthEndsTheSoundAtItsLimit) {
  const tAudCapHndl handle = camera.StartAudioCapture("audio.tmp", nullptr, 1, false);
  solva::AdvanceClock(3000);
  camera.StopAudioCapture(handle);
  EXPECT_EQ(44u + 2 * 16000u, ReadBytes(dir.file("audio.tmp")).size());
}

TEST_F(CaptureTest, WithoutAMicrophoneNothingIsCaptured) {
  solva::SetMicrophonePresent(false);
  EXPECT_FALSE(camera.IsCameraPresent());
  EXPECT_EQ(kInvalidAudCapHndl, camera.StartAudioCapture("audio.tmp", nullptr, 0, false));
  EXPECT_FALSE(zvtest::Exists(dir.file("audio.tmp")));
}

TEST_F(CaptureTest, AudioPathMustBeAnExistingFolder) {
  EXPECT_EQ(kNotFoundErr, camera.SetCameraAudioPath(dir.file("missing")));
  EXPECT_EQ(dir.path(), camera.GetCameraAudioPath().raw());  // unchanged
  EXPECT_EQ(kInvalidAudCapHndl, camera.StartAudioCapture(dir.file("missing/a.wav"), nullptr, 0, false));
}

TEST_F(CaptureTest, AFileSourceIsResampledToMonoAndLooped) {
  // Half a second of a 200 Hz tone at 8 kHz in stereo, left and right equal.
  SF_INFO info{};
  info.samplerate = 8000;
  info.channels = 2;
  info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
  SNDFILE* out = sf_open(dir.file("voice.wav").c_str(), SFM_WRITE, &info);
  ASSERT_NE(nullptr, out);
  std::vector<int16_t> frames(8000);
  for (int i = 0; i < 4000; ++i) frames[2 * i] = frames[2 * i + 1] = int16_t(8000 * std::sin(2 * M_PI * 200 * i / 8000.0));
  sf_writef_short(out, frames.data(), 4000);
  sf_close(out);

  std::string error;
  ASSERT_TRUE(solva::SetMicSource(solva::MicSource::File, dir.file("voice.wav"), &error)) << error;
  const tAudCapHndl handle = camera.StartAudioCapture("audio.tmp", nullptr, 0, false);
  solva::AdvanceClock(1500);  // three times round the file
  camera.StopAudioCapture(handle);
  const std::vector<int16_t> samples = Samples(dir.file("audio.tmp"));
  ASSERT_EQ(24000u, samples.size());
  EXPECT_NEAR(8000 / std::sqrt(2.0), Rms(samples, 0, 8000), 30);
  for (size_t i = 0; i < 8000; ++i) ASSERT_EQ(samples[i], samples[i + 8000]) << i;
}

TEST_F(CaptureTest, AFileSourceAtAnotherRateIsConvertedWithoutMirrorImages) {
  zvtest::WriteTone(dir.file("tone.wav"), 22050, 1.0, 1000, 0.5);
  std::string error;
  ASSERT_TRUE(solva::SetMicSource(solva::MicSource::File, dir.file("tone.wav"), &error)) << error;
  const tAudCapHndl handle = camera.StartAudioCapture("audio.tmp", nullptr, 0, false);
  solva::AdvanceClock(1000);
  camera.StopAudioCapture(handle);
  const std::vector<int16_t> captured = Samples(dir.file("audio.tmp"));
  ASSERT_EQ(16000u, captured.size());
  std::vector<float> samples(captured.begin(), captured.end());
  for (float& s : samples) s /= 32768.0f;
  // 500 periods of 1 kHz at 16 kHz, away from the file's ends.
  EXPECT_LT(zvtest::ResidualDb(samples, 4000, 8000, 16000, 1000), -80.0);
}

TEST_F(CaptureTest, AnUnreadableSourceFileIsRefusedAndTheSourceStays) {
  zvtest::WriteText(dir.file("bad.wav"), "not a sound");
  std::string error;
  EXPECT_FALSE(solva::SetMicSource(solva::MicSource::File, dir.file("bad.wav"), &error));
  EXPECT_NE(std::string::npos, error.find("cannot read the microphone's sound file")) << error;
  EXPECT_EQ(solva::MicSource::Default, solva::GetMicSource());
}

TEST_F(CaptureTest, TheDefaultMicrophoneOnTheVirtualClockHearsSilence) {
  const tAudCapHndl handle = camera.StartAudioCapture("audio.tmp", nullptr, 0, false);
  solva::AdvanceClock(100);
  camera.StopAudioCapture(handle);
  const std::vector<int16_t> samples = Samples(dir.file("audio.tmp"));
  ASSERT_EQ(1600u, samples.size());
  EXPECT_EQ(0, Rms(samples, 0, samples.size()));
}

struct UsbRecorder : IEventListener {
  UsbRecorder() : IEventListener(&kWord, 1) {}
  tErrType Notify(const IEventMessage& msg) override {
    const CUSBDeviceMessage* usb = dynamic_cast<const CUSBDeviceMessage*>(&msg);
    states.push_back(usb ? int(usb->GetUSBDeviceState().USBDeviceState) : -1);
    presentWhenTold.push_back(solva::MicrophonePresent());
    return kNoErr;
  }
  static const tEventType kWord;
  std::vector<int> states;
  std::vector<bool> presentWhenTold;
};
const tEventType UsbRecorder::kWord = 0x100043FF;

TEST_F(CaptureTest, UnplugAndPlugComeAsUsbEventsWithThePresenceAlreadyChanged) {
  CUSBDeviceSvc usb;
  UsbRecorder recorder;
  ASSERT_EQ(kNoErr, usb.RegisterEventListener(&recorder));
  EXPECT_EQ(1, solva::RegisteredUsbListeners());
  solva::QueueMicrophonePlugged(false);
  EXPECT_TRUE(solva::MicrophonePresent());  // not before delivery
  solva::DeliverEvents();
  solva::QueueMicrophonePlugged(true);
  solva::DeliverEvents();
  EXPECT_EQ((std::vector<int>{0, 1}), recorder.states);
  EXPECT_EQ((std::vector<bool>{false, true}), recorder.presentWhenTold);
  EXPECT_EQ(kUSBDeviceSupportsMicrophone, usb.GetUSBDeviceState().USBDeviceSupports);
  EXPECT_EQ(kNoErr, usb.UnregisterEventListener(&recorder));
  EXPECT_EQ(0, solva::RegisteredUsbListeners());
}

TEST_F(CaptureTest, SoundAfterAnUnplugIsSilence) {
  ASSERT_TRUE(solva::SetMicSource(solva::MicSource::Tone));
  const tAudCapHndl handle = camera.StartAudioCapture("audio.tmp", nullptr, 0, false);
  solva::AdvanceClock(500);
  solva::QueueMicrophonePlugged(false);
  solva::DeliverEvents();
  solva::AdvanceClock(500);
  camera.StopAudioCapture(handle);
  const std::vector<int16_t> samples = Samples(dir.file("audio.tmp"));
  ASSERT_EQ(16000u, samples.size());
  EXPECT_GT(Rms(samples, 0, 8000), 10000);
  EXPECT_EQ(0, Rms(samples, 8000, 8000));
}

}  // namespace
