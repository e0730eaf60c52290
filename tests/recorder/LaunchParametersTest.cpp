// What the launching application can ask for: a time limit, the panel's place, a
// folder or a file of its own, a clip to open; and the answer it gets back.
#include "RecorderFixture.h"

namespace {

using recorder::RecorderTest;
using recorder::WriteWavHeader;
using solva::AudioEventKind;

class LaunchTest : public RecorderTest {
 protected:
  // Records until the panel stops by itself, in frames of `ms`; the clip's length.
  float RecordUntilTheLimit(int ms) {
    StartRecording();
    EXPECT_TRUE(RunUntil([&] { return Scene().mRecordState == RecordVoiceScene::kRecordClipEnded; }, 20000, ms));
    return Scene().mTimeLimit;
  }
  std::string Captured() {
    testing::internal::CaptureStdout();
    Start();
    return testing::internal::GetCapturedStdout();
  }
};

TEST_F(LaunchTest, LimitTime30StopsARecordingShortlyAfter30Point1Seconds) {
  Params()["limittime"] = 30;
  Start();
  EXPECT_EQ(30.0f, NEWRECORDTIMELIMIT);
  const float length = RecordUntilTheLimit(100);
  EXPECT_GE(length, 30.1f);
  EXPECT_LE(length, 30.1f + 0.25f);
}

TEST_F(LaunchTest, LimitTime500IsTakenAs100AndStopsAt100Point1) {
  Params()["limittime"] = 500;
  Start();
  EXPECT_EQ(100.0f, NEWRECORDTIMELIMIT);
  const float length = RecordUntilTheLimit(200);
  EXPECT_GE(length, 100.1f);
  EXPECT_LE(length, 100.1f + 0.45f);
}

TEST_F(LaunchTest, LimitTimeZeroEndsARecordingWithinATenthOfASecond) {
  Params()["limittime"] = 0;
  Start();
  const float length = RecordUntilTheLimit(33);
  EXPECT_LT(length, 0.1f + 0.07f);
}

TEST_F(LaunchTest, ANegativeLimitTimeIsTakenAsItIs) {
  Params()["limittime"] = -3;
  Start();
  EXPECT_EQ(-3.0f, NEWRECORDTIMELIMIT);
  const float length = RecordUntilTheLimit(33);
  EXPECT_LT(length, 0.07f);
}

TEST_F(LaunchTest, TheLimitOfAPlayedClipIsItsLengthNotTheLimit) {
  Params()["limittime"] = 30;
  Start();
  StartRecording();
  Frames(60);
  Tap("stop");
  EXPECT_LT(Scene().mTimeLimit, 3.0f);
  Tap("play");
  EXPECT_LT(Scene().mTimeLimit, 3.0f);
  ASSERT_TRUE(RunUntil([&] { return Scene().mRecordState == RecordVoiceScene::kRecordClipEnded; }, 200));
}

TEST_F(LaunchTest, PositionXBelowZeroIsTakenAsZeroAndAbove436As436) {
  Params()["positionX"] = -5;
  Start();
  EXPECT_EQ(0, Scene().mPositionX);
  EXPECT_EQ(0, Control("mic_time_flat").GetPositionX());
  EndRun();
  Params()["positionX"] = 1000;
  Start();
  EXPECT_EQ(436, Scene().mPositionX);
  EXPECT_EQ(436, Control("mic_time_flat").GetPositionX());
}

TEST_F(LaunchTest, EveryPositionIsClampedToItsOwnRange) {
  Params()["positionY"] = 999;
  Params()["positionPX"] = 999;
  Params()["positionPY"] = -1;
  Start();
  EXPECT_EQ(228, Scene().mPositionY);
  EXPECT_EQ(228, Scene().mPositionPX);
  EXPECT_EQ(0, Scene().mPositionPY);
}

TEST_F(LaunchTest, TheAnchorLandsOnTheHorizontalPositionAndTheRestKeepsItsDistance) {
  Params()["positionX"] = 100;
  Params()["positionY"] = 50;
  Start();
  const recorder::Layout& l = recorder::kHorizontal;
  EXPECT_EQ(100, Control("mic_time_flat").GetPositionX());
  EXPECT_EQ(50, Control("mic_time_flat").GetPositionY());
  EXPECT_EQ(100 + l.backX - l.flatX, Control("back").GetPositionX());
  EXPECT_EQ(50 + l.recordY - l.flatY, Control("record").GetPositionY());
  EXPECT_EQ(100 + l.barRedX - l.flatX, Control("bar_red").GetPositionX());
  int bx = 0, by = 0;
  Scene().mProgressBar->GetPosition(bx, by);
  EXPECT_EQ(Control("record").GetPositionX() + 48, bx);
  EXPECT_EQ(Control("record").GetPositionY() + 16, by);
}

TEST_F(LaunchTest, AValidThreeSecondWavStartsWithPlayEnabledAndNoRecordHint) {
  const std::string clip = mTitle.file("three.wav");
  zvtest::WriteTone(clip, 16000, 3.0, 440, 0.5);
  Params()["audiofilename"] = clip;
  const std::string out = Captured();
  EXPECT_NE(std::string::npos, out.find("Audio Length: 3000 ms"));
  EXPECT_EQ(1, Scene().mHasClip);
  EXPECT_EQ(0, Scene().mCueStep);
  EXPECT_EQ(3.0f, Scene().mTimeLimit);
  EXPECT_EQ(1, Control("play").mEnabled);
  Frames(20);
  EXPECT_EQ(0, CountEvents(AudioEventKind::Start, recorder::RecorderTest::CuePath("HL_ToRecord")));
  Tap("play");
  EXPECT_EQ(1, CountEvents(AudioEventKind::Start, "three.wav"));
  // The bar runs over the three seconds.
  Frames(45);
  EXPECT_NEAR(Scene().mCurrentTime / 3.0f, Scene().mProgressBar->mProgress, 0.02f);
  EXPECT_GT(Scene().mProgressBar->mProgress, 0.4f);
  EXPECT_TRUE(RunUntil([&] { return Scene().mRecordState == RecordVoiceScene::kRecordClipEnded; }, 100));
  EXPECT_GE(Scene().mCurrentTime, 2.9f);
}

TEST_F(LaunchTest, AClipFileEmptiesTheFolderAndATapOnTheBarPlaysIt) {
  const std::string clip = mTitle.file("three.wav");
  zvtest::WriteTone(clip, 16000, 3.0, 440, 0.5);
  Params()["folderpath"] = "/somewhere/";
  Params()["audiofilename"] = clip;
  Start();
  EXPECT_EQ("", Scene().mDestFolder);
  EXPECT_EQ(clip, Scene().mDestName);
  ASSERT_EQ(RecordVoiceScene::kRecordIdle, Scene().mRecordState);
  int bx = 0, by = 0;
  Scene().mProgressBar->GetPosition(bx, by);
  TapGrid(bx + 140, by + 5);  // two thirds in: 2 s, sought at 1000 ms
  EXPECT_EQ(RecordVoiceScene::kRecordPlaying, Scene().mRecordState);
  EXPECT_EQ(1, CountEvents(AudioEventKind::Seek, ""));
}

TEST_F(LaunchTest, AMissingClipFileLeavesTheSceneWithoutAClip) {
  Params()["audiofilename"] = mTitle.file("nothing.wav");
  const std::string out = Captured();
  EXPECT_NE(std::string::npos, out.find("Can't open audio file " + mTitle.file("nothing.wav")));
  EXPECT_EQ(0, Scene().mHasClip);
  EXPECT_EQ(1, Scene().mCueStep == 0 ? 0 : 1);
  EXPECT_EQ(0, Control("play").mEnabled);
  EXPECT_EQ(mTitle.file("nothing.wav"), Scene().mDestName);
}

TEST_F(LaunchTest, ABadRiffHeaderIsReportedAndLeavesNoClip) {
  const std::string clip = mTitle.file("bad.wav");
  WriteWavHeader(clip, 1, 16000, 16, 32000, 0x12345678);
  Params()["audiofilename"] = clip;
  const std::string out = Captured();
  EXPECT_NE(std::string::npos, out.find("Bad RIFF or WAVE.\nRIFF = 0x12345678"));  // a line of its own
  EXPECT_NE(std::string::npos, out.find("RIFF = 0x12345678, Expects 0x46464952"));
  EXPECT_NE(std::string::npos, out.find("WAVE = 0x45564157, Expects 0x45564157"));
  EXPECT_EQ(0, Scene().mHasClip);
  EXPECT_EQ(0, Control("play").mEnabled);
}

TEST_F(LaunchTest, AHeaderWithZeroChannelsGivesAZeroDivisorAndNoClip) {
  const std::string clip = mTitle.file("nochannels.wav");
  WriteWavHeader(clip, 0, 16000, 16, 32000);
  Params()["audiofilename"] = clip;
  const std::string out = Captured();
  EXPECT_NE(std::string::npos, out.find("Audio header has no sample size"));
  EXPECT_EQ(0, Scene().mHasClip);
  EXPECT_EQ(1, Scene().mCueStep == 0 ? 0 : 1);
}

TEST_F(LaunchTest, AHeaderWithZeroRateOrBitsIsNoClipEither) {
  const std::string clip = mTitle.file("norate.wav");
  WriteWavHeader(clip, 1, 0, 16, 32000);
  Params()["audiofilename"] = clip;
  Start();
  EXPECT_EQ(0, Scene().mHasClip);
  EndRun();
  WriteWavHeader(clip, 1, 16000, 0, 32000);
  Start();
  EXPECT_EQ(0, Scene().mHasClip);
}

TEST_F(LaunchTest, AHeaderThatGivesZeroMillisecondsLeavesNoClip) {
  const std::string clip = mTitle.file("empty.wav");
  WriteWavHeader(clip, 1, 16000, 16, 0);
  Params()["audiofilename"] = clip;
  const std::string out = Captured();
  EXPECT_EQ(std::string::npos, out.find("Audio Length"));
  EXPECT_EQ(0, Scene().mHasClip);
}

TEST_F(LaunchTest, TheLengthProductWrapsAboveFourMillionBytesAsItStands) {
  // 5,000,000 bytes of 16-bit mono at 8000: 312.5 s, but 1000 * size wraps.
  const std::string clip = mTitle.file("long.wav");
  WriteWavHeader(clip, 1, 8000, 16, 64);
  zvtest::Bytes bytes = zvtest::ReadBytes(clip);
  const uint32_t size = 5000000;
  for (int i = 0; i < 4; ++i) bytes[40 + i] = uint8_t(size >> (8 * i));
  zvtest::WriteBytes(clip, bytes);
  Params()["audiofilename"] = clip;
  Start();
  const uint32_t wrapped = (uint32_t(1000) * size) / 16000u;
  EXPECT_EQ(wrapped / 1000.0f, Scene().mTimeLimit);
  EXPECT_LT(Scene().mTimeLimit, 312.0f);
}

TEST_F(LaunchTest, ARecordingIntoANamedFileAnswersThatRecordsName) {
  const std::string name = mRoot.file("named.wav");
  Params()["audiofilename"] = name;
  Start();
  StartRecording();
  Frames(30);
  Tap("stop");
  ResInfo* res =
      MicManager::sInstance().GetMediaCenter().GetResInfo(eRT_SpecificFolderAudio, Scene().mCurrentResId, false);
  ASSERT_NE(nullptr, res);
  EXPECT_EQ(name, res->mName);
  Exit();
  EXPECT_EQ(name, mParams->GetRoot()["filename"].asString());
  EXPECT_GT(zvtest::ReadBytes(name).size(), 44u);
}

TEST_F(LaunchTest, WithoutARecordingTheAnswerIsTheGivenFileName) {
  Params()["audiofilename"] = mTitle.file("nothing.wav");
  Start();
  Exit();
  EXPECT_EQ(mTitle.file("nothing.wav"), mParams->GetRoot()["filename"].asString());
}

TEST_F(LaunchTest, WithoutARecordingOrAFileTheAnswerIsEmpty) {
  Params()["viewmode"] = 2;
  Start();
  Exit();
  EXPECT_TRUE(mParams->GetRoot().isMember("filename"));
  EXPECT_EQ("", mParams->GetRoot()["filename"].asString());
}

TEST_F(LaunchTest, WithAFolderTheRecordIsOfTheFolderTypeAndPlaybackLooksInTheGallery) {
  const std::string folder = mRoot.file("kids/");
  std::filesystem::create_directories(folder);
  Params()["folderpath"] = folder;
  testing::internal::CaptureStdout();
  Start();
  StartRecording();
  Frames(30);
  Tap("stop");
  MediaCenter& media = MicManager::sInstance().GetMediaCenter();
  ResInfo* res = media.GetResInfo(eRT_SpecificFolderAudio, Scene().mCurrentResId, false);
  ASSERT_NE(nullptr, res);
  EXPECT_EQ(0u, res->mName.find(folder));
  EXPECT_EQ(nullptr, media.GetResInfo(eRT_Audio, Scene().mCurrentResId, false));
  // The type is chosen by the file name alone: nothing is found in the gallery,
  // and the path is the empty file name.
  Tap("play");
  const std::string out = testing::internal::GetCapturedStdout();
  EXPECT_NE(std::string::npos, out.find("RecordVoiceScene::EnterScene(): destfolder:" + folder));
  EXPECT_NE(std::string::npos, out.find("[Play Record Voice] \n"));
  EXPECT_EQ(0, CountEvents(AudioEventKind::Start, folder));
  const std::string clip = res->mName;
  Exit();
  EXPECT_EQ(clip, mParams->GetRoot()["filename"].asString());
}

TEST_F(LaunchTest, NoParametersLeaveTheDefaultsAndNoAnswer) {
  Start();
  EXPECT_EQ(100.0f, NEWRECORDTIMELIMIT);
  EXPECT_EQ(0, Scene().mPositionX);
  EXPECT_EQ(nullptr, mApp->GetParams());
  Exit();
}

}  // namespace
