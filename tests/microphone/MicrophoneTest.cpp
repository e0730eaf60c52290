// Recording a voice through the capture service into the gallery, without a screen.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstring>
#include <string>

#include "MediaCenter/MediaCenter.h"
#include "MediaCenter/ResInfo.h"
#include "microphone/RecorderFixture.h"

namespace {

using rectest::Observer;
using rectest::RecorderTest;
using zvtest::Bytes;

std::string Quiet(const std::function<void()>& body) {
  fflush(stdout);
  testing::internal::CaptureStdout();
  body();
  fflush(stdout);
  return testing::internal::GetCapturedStdout();
}

uint32_t DataBytes(const std::string& wav) {
  const Bytes b = zvtest::ReadBytes(wav);
  return uint32_t(b[40]) | uint32_t(b[41]) << 8 | uint32_t(b[42]) << 16 | uint32_t(b[43]) << 24;
}

TEST_F(RecorderTest, TwoSecondsOfToneLandInTheGalleryWithByteExactIndexFiles) {
  Start();
  Observer observer(&Mic());
  int resId = -1;
  Quiet([&] {
    ASSERT_EQ(EMC_Ok, Mic().OpenMic());
    ASSERT_EQ(EMC_Ok, Mic().StartRecord(0.0f, &resId, &observer, "", ""));
  });
  EXPECT_EQ(1, resId);
  EXPECT_EQ(Microphone::eState_Recording, Mic().GetState());
  for (int i = 0; i < 60; ++i) Pass(33);  // 1.98 s
  Pass(20);
  Quiet([&] { EXPECT_EQ(EMC_Ok, Mic().StopRecord(kMicEventStopped)); });

  // The clip: 2.00 s of 16-bit mono at 16 kHz, as an outside tool reads it.
  const std::string clip = Music("vtwgaudio_1.wav");
  ASSERT_TRUE(zvtest::Exists(clip));
  const std::string quoted = "'" + clip + "'";
  EXPECT_EQ("16000\n", zvtest::RunCommand("soxi -r " + quoted));
  EXPECT_EQ("1\n", zvtest::RunCommand("soxi -c " + quoted));
  EXPECT_EQ("16\n", zvtest::RunCommand("soxi -b " + quoted));
  EXPECT_EQ("2.000000\n", zvtest::RunCommand("soxi -D " + quoted));
  EXPECT_EQ(64000u, DataBytes(clip));

  // The audio index: version, one record {1, eRT_Audio, view 0, length 0.0}.
  Bytes index;
  zvtest::PutU32(index, 9213426);
  zvtest::PutI32(index, 1);
  zvtest::PutI32(index, 1);
  zvtest::PutI32(index, 1);
  zvtest::PutI32(index, 0);
  zvtest::PutU32(index, 0);  // 0.0f
  EXPECT_EQ(index, zvtest::ReadBytes(Index("vtwgAudioResInfo.bin")));

  // resid.bin: the magic and the nine maxima, of which audio's is 1.
  Bytes resid;
  zvtest::PutU32(resid, 0x00444952u);
  for (int type = 0; type < 9; ++type) zvtest::PutU32(resid, type == 1 ? 1 : 0);
  EXPECT_EQ(resid, zvtest::ReadBytes(Index("resid.bin")));

  // The upload list has the clip's line; no check file and no temporary remain.
  EXPECT_EQ(clip + "\n", zvtest::ReadText(root + "Upload/MusicPkg/UploadAudioList.txt"));
  EXPECT_FALSE(zvtest::Exists(Index("AudioCheck.bin")));
  EXPECT_FALSE(zvtest::Exists(Music("audio.tmp")));

  // The observer ran while the number was still held, after the state went idle.
  EXPECT_EQ(std::vector<EMicStateEvent>{kMicEventStopped}, observer.events);
  EXPECT_EQ(1, observer.resDuringNotify);
  EXPECT_EQ(Microphone::eState_Idle, observer.stateDuringNotify);
  EXPECT_EQ(INVALID_RES_ID, Mic().GetCurrentAudioRes());
}

TEST_F(RecorderTest, APauseOfOneSecondIsNotInTheClip) {
  Start();
  Quiet([&] {
    Mic().OpenMic();
    Mic().StartRecord(0.0f, nullptr, nullptr, "", "");
  });
  Pass(1500);
  Quiet([&] { EXPECT_EQ(EMC_Ok, Mic().pauseRecord()); });
  EXPECT_EQ(Microphone::eState_Paused, Mic().GetState());
  Pass(1000);
  Quiet([&] { EXPECT_EQ(EMC_Ok, Mic().resumeRecord()); });
  Pass(1500);
  Quiet([&] { Mic().StopRecord(kMicEventStopped); });
  // 4 s between start and stop, 3 s of sound.
  EXPECT_EQ(3u * 32000u, DataBytes(Music("vtwgaudio_1.wav")));
}

TEST_F(RecorderTest, RecordingAgainIntoAResourceReplacesItsFile) {
  Start();
  int resId = -1;
  Quiet([&] {
    Mic().OpenMic();
    Mic().StartRecord(0.0f, &resId, nullptr, "", "");
  });
  Pass(1000);
  Quiet([&] { Mic().StopRecord(kMicEventStopped); });
  ASSERT_EQ(32000u, DataBytes(Music("vtwgaudio_1.wav")));

  Quiet([&] { EXPECT_EQ(EMC_Ok, Mic().StartRecordByResID(0.0f, resId, nullptr)); });
  EXPECT_EQ(resId, Mic().GetCurrentAudioRes());
  Pass(2500);
  Quiet([&] { Mic().StopRecord(kMicEventStopped); });
  EXPECT_EQ(80000u, DataBytes(Music("vtwgaudio_1.wav")));
  EXPECT_EQ(1u, Store().GetResInfoList(eRT_Audio).size());
  EXPECT_FALSE(zvtest::Exists(Music("vtwgaudio_2.wav")));
}

TEST_F(RecorderTest, UnplugWhileRecordingSavesTheClipAndTellsTheObserverDeviceLost) {
  Start();
  Observer observer(&Mic());
  Quiet([&] {
    Mic().OpenMic();
    Mic().StartRecord(0.0f, nullptr, &observer, "", "");
  });
  Pass(1200);
  const std::string out = Quiet([&] {
    solva::QueueMicrophonePlugged(false);
    solva::DeliverEvents();
  });
  EXPECT_NE(std::string::npos, out.find("[ZvMicrophone][USB_Notify] State 0, Driver 0, Supports 0 \n")) << out;
  EXPECT_NE(std::string::npos, out.find("[ZvMicrophone][USB_Notify] Stop microphone works.\n"));
  EXPECT_NE(std::string::npos, out.find("[ZvMicrophone][USB_Notify] Process complete.\n"));
  EXPECT_EQ(std::vector<EMicStateEvent>{kMicEventDeviceLost}, observer.events);
  EXPECT_EQ(Microphone::eState_Idle, Mic().GetState());
  EXPECT_EQ(1200u * 32u, DataBytes(Music("vtwgaudio_1.wav")));
  EXPECT_EQ(1u, Store().GetResInfoList(eRT_Audio).size());
}

TEST_F(RecorderTest, UnplugWhileIdleOnlyPrints) {
  Start();
  Quiet([&] { Mic().OpenMic(); });
  const std::string out = Quiet([&] {
    solva::QueueMicrophonePlugged(false);
    solva::DeliverEvents();
  });
  EXPECT_EQ(
      "[ZvMicrophone][USB_Notify] State 0, Driver 0, Supports 0 \nMicrophone::StopRecord\n"
      "[ZvMicrophone][USB_Notify] Stop microphone works.\n[ZvMicrophone][USB_Notify] Process complete.\n",
      out);
  EXPECT_TRUE(Store().GetResInfoList(eRT_Audio).empty());
  // Plugging it back in finds it present: nothing to stop.
  const std::string back = Quiet([&] {
    solva::QueueMicrophonePlugged(true);
    solva::DeliverEvents();
  });
  EXPECT_EQ("[ZvMicrophone][USB_Notify] State 1, Driver 2, Supports 4 \n[ZvMicrophone][USB_Notify] Process complete.\n",
            back);
}

TEST_F(RecorderTest, StartWhileRecordingReturnsOkAndStartsNothing) {
  Start();
  int first = -1;
  Quiet([&] {
    Mic().OpenMic();
    Mic().StartRecord(0.0f, &first, nullptr, "", "");
  });
  int second = 77;
  Quiet([&] { EXPECT_EQ(EMC_Ok, Mic().StartRecord(0.0f, &second, nullptr, "", "")); });
  EXPECT_EQ(77, second);
  EXPECT_EQ(1u, Store().GetResInfoList(eRT_Audio).size());
  EXPECT_EQ(first, Mic().GetCurrentAudioRes());
  Quiet([&] { EXPECT_EQ(EMC_Ok, Mic().StartRecordByResID(0.0f, 5, nullptr)); });
  EXPECT_EQ(first, Mic().GetCurrentAudioRes());
}

TEST_F(RecorderTest, StopInThePausedStateSavesTheClip) {
  Start();
  Quiet([&] {
    Mic().OpenMic();
    Mic().StartRecord(0.0f, nullptr, nullptr, "", "");
  });
  Pass(700);
  Quiet([&] { Mic().pauseRecord(); });
  Quiet([&] { EXPECT_EQ(EMC_Ok, Mic().StopRecord(kMicEventStopped)); });
  EXPECT_EQ(Microphone::eState_Idle, Mic().GetState());
  EXPECT_EQ(700u * 32u, DataBytes(Music("vtwgaudio_1.wav")));
}

TEST_F(RecorderTest, ResumeWhenIdleAndPauseWhenPausedAreRefused) {
  Start();
  Quiet([&] { Mic().OpenMic(); });
  EXPECT_EQ(EMC_NotPaused, Mic().resumeRecord());
  EXPECT_EQ(EMC_NotRecording, Mic().pauseRecord());
  Quiet([&] { Mic().StartRecord(0.0f, nullptr, nullptr, "", ""); });
  EXPECT_EQ(EMC_NotPaused, Mic().resumeRecord());
  Quiet([&] { EXPECT_EQ(EMC_Ok, Mic().pauseRecord()); });
  EXPECT_EQ(EMC_NotRecording, Mic().pauseRecord());
}

TEST_F(RecorderTest, CloseMicWithAPausedRecordingNeitherStopsNorSaves) {
  Start();
  Quiet([&] {
    Mic().OpenMic();
    Mic().StartRecord(0.0f, nullptr, nullptr, "", "");
  });
  Pass(500);
  Quiet([&] { Mic().pauseRecord(); });
  const std::string out = Quiet([&] { Mic().CloseMic(); });
  EXPECT_EQ("[ZvMicrophone][OpenMic] Mic closed.\n", out);
  EXPECT_EQ(Microphone::eState_Paused, Mic().GetState());
  EXPECT_FALSE(zvtest::Exists(Music("vtwgaudio_1.wav")));
  EXPECT_EQ(0, Mic().IsValid());
  EXPECT_EQ(0, solva::RegisteredUsbListeners());
}

TEST_F(RecorderTest, CloseMicWhileRecordingStopsAndSaves) {
  Start();
  Quiet([&] {
    Mic().OpenMic();
    Mic().StartRecord(0.0f, nullptr, nullptr, "", "");
  });
  Pass(400);
  Quiet([&] { Mic().CloseMic(); });
  EXPECT_EQ(400u * 32u, DataBytes(Music("vtwgaudio_1.wav")));
}

TEST_F(RecorderTest, ALeftoverTemporaryIsDeletedBeforeEachNewCapture) {
  Start();
  // The leftover is a second name of another file: the capture service opens its
  // file in place, so only a deletion first leaves that other file whole.
  const std::string other = Music("other.bin");
  zvtest::WriteText(other, std::string(5000, 'x'));
  ASSERT_EQ(0, link(other.c_str(), Music("audio.tmp").c_str()));
  Quiet([&] {
    Mic().OpenMic();
    Mic().StartRecord(0.0f, nullptr, nullptr, "", "");
  });
  EXPECT_EQ(std::string(5000, 'x'), zvtest::ReadText(other));
  const Bytes started = zvtest::ReadBytes(Music("audio.tmp"));
  ASSERT_GE(started.size(), 44u);
  EXPECT_EQ(0, memcmp(started.data(), "RIFF", 4));
  Quiet([&] { Mic().StopRecord(kMicEventStopped); });
}

TEST_F(RecorderTest, AFolderMakesASpecificFolderRecordWhoseFileLandsInIt) {
  Start();
  const std::string folder = root + "Pictures/";
  ASSERT_EQ(0, mkdir(folder.c_str(), 0755));
  int resId = -1;
  Quiet([&] {
    Mic().OpenMic();
    Mic().StartRecord(0.0f, &resId, nullptr, folder, "");
  });
  Pass(1000);
  Quiet([&] { Mic().StopRecord(kMicEventStopped); });
  ASSERT_EQ(1, resId);
  ResInfo* res = Store().GetResInfo(eRT_SpecificFolderAudio, resId, false);
  ASSERT_NE(nullptr, res);
  EXPECT_EQ(folder + "vtwspecificaudio_1.wav", res->mName);
  EXPECT_EQ(32000u, DataBytes(folder + "vtwspecificaudio_1.wav"));
  EXPECT_TRUE(Store().GetResInfoList(eRT_Audio).empty());
  // Its index keeps the whole name, and version 0.
  Bytes index;
  zvtest::PutU32(index, 0);
  zvtest::PutI32(index, 1);
  zvtest::PutI32(index, 1);
  zvtest::PutI32(index, 8);
  zvtest::PutI32(index, 0);
  zvtest::PutU32(index, uint32_t(res->mName.size()));
  zvtest::PutText(index, res->mName);
  EXPECT_EQ(index, zvtest::ReadBytes(Index("vtwgSpecificFolderAudio.bin")));
}

TEST_F(RecorderTest, ANameMakesASpecificFolderRecordOfThatPath) {
  Start();
  const std::string name = root + "my-song.wav";
  Quiet([&] {
    Mic().OpenMic();
    Mic().StartRecord(0.0f, nullptr, nullptr, "", name);
  });
  Pass(500);
  Quiet([&] { Mic().StopRecord(kMicEventStopped); });
  ASSERT_EQ(1u, Store().GetResInfoList(eRT_SpecificFolderAudio).size());
  EXPECT_EQ(name, Store().GetResInfoList(eRT_SpecificFolderAudio).front().mName);
  EXPECT_EQ(16000u, DataBytes(name));
}

TEST_F(RecorderTest, WithoutAMicrophoneOpenAndStartGiveInvalidDevice) {
  solva::SetMicrophonePresent(false);
  Start();
  std::string out;
  out = Quiet([&] { EXPECT_EQ(EMC_InvalidDevice, Mic().OpenMic()); });
  EXPECT_EQ("---------ZvMicrophone::OpenMic()---------\n[ZvMicrophone][OpenMic] EMC_InvalidDevice.\n", out);
  int resId = 9;
  EXPECT_EQ(EMC_InvalidDevice, Mic().StartRecord(0.0f, &resId, nullptr, "", ""));
  EXPECT_EQ(EMC_InvalidDevice, Mic().StartRecordByResID(0.0f, 1, nullptr));
  EXPECT_EQ(9, resId);
}

TEST_F(RecorderTest, OpeningTwiceIsOpenedOnce) {
  Start();
  EXPECT_EQ("---------ZvMicrophone::OpenMic()---------\n[ZvMicrophone][OpenMic] Mic opened.\n",
            Quiet([&] { Mic().OpenMic(); }));
  EXPECT_EQ(1, solva::RegisteredUsbListeners());
  EXPECT_EQ("---------ZvMicrophone::OpenMic()---------\n", Quiet([&] { Mic().OpenMic(); }));
  EXPECT_EQ(1, solva::RegisteredUsbListeners());
}

TEST_F(RecorderTest, AFullGalleryRefusesANewRecording) {
  solva::SetFreeBytes(1000);
  Start();
  int resId = 9;
  std::string out = Quiet([&] {
    Mic().OpenMic();
    EXPECT_EQ(EMC_NoSpace, Mic().StartRecord(0.0f, &resId, nullptr, "", ""));
  });
  EXPECT_NE(std::string::npos, out.find("mMediaCenter->CreateNewRes( eRT_Audio);\nNot Enough Space to create ResInfo!\nnot enough space.\n")) << out;
  EXPECT_EQ(9, resId);
  EXPECT_EQ(Microphone::eState_Idle, Mic().GetState());
}

TEST_F(RecorderTest, SuspendPausesTheRecordingAndResumeGoesOn) {
  Start();
  Quiet([&] {
    Mic().OpenMic();
    Mic().StartRecord(0.0f, nullptr, nullptr, "", "");
  });
  Pass(1000);
  Quiet([&] { mApp->Suspend(); });
  EXPECT_EQ(Microphone::eState_Paused, Mic().GetState());
  Pass(600000);  // ten minutes away
  Quiet([&] { mApp->Resume(); });
  EXPECT_EQ(Microphone::eState_Recording, Mic().GetState());
  Pass(1000);
  Quiet([&] { Mic().StopRecord(kMicEventStopped); });
  EXPECT_EQ(2u * 32000u, DataBytes(Music("vtwgaudio_1.wav")));
}

TEST_F(RecorderTest, ExitWhileRecordingSavesTheClip) {
  Start();
  Quiet([&] {
    Mic().OpenMic();
    Mic().StartRecord(0.0f, nullptr, nullptr, "", "");
  });
  Pass(900);
  Quiet([&] { mApp->Exit(); });
  delete mApp;
  mApp = nullptr;
  EXPECT_EQ(900u * 32u, DataBytes(Music("vtwgaudio_1.wav")));
  EXPECT_EQ(Music("vtwgaudio_1.wav") + "\n", zvtest::ReadText(root + "Upload/MusicPkg/UploadAudioList.txt"));
}

using RecorderDeathTest = RecorderTest;

TEST_F(RecorderDeathTest, BothFolderAndNameFailTheAssertionWithItsReason) {
  Start();
  Quiet([&] { Mic().OpenMic(); });
  const zvtest::ChildResult result =
      zvtest::RunInChild([&] { Mic().StartRecord(0.0f, nullptr, nullptr, "/some/folder/", "a.wav"); });
  EXPECT_TRUE(result.died());
  EXPECT_NE(std::string::npos,
            result.out.find(
                "Assertion failed: !!! \"Both folder and name are supplied.\" (folder_name_exclusive_error)\n"))
      << result.out;
}

}  // namespace
