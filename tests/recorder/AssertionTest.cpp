// The panel's faults of the build: a layout without one of the seven controls.
#include "RecorderFixture.h"

namespace {

using recorder::RecorderTest;

TEST_F(RecorderTest, ALayoutWithoutAPanelControlFailsTheAssertionOnItsPointer) {
  // The horizontal layout loses "bar_red".
  const std::string page = mTitle.file("res/UI/Page/menu_mic_widget.xml");
  std::string xml = zvtest::ReadText(page);
  const size_t at = xml.find("  <Image Name='bar_red'");
  ASSERT_NE(std::string::npos, at);
  xml.erase(at, xml.find('\n', at) - at + 1);
  zvtest::WriteText(page, xml);
  Params()["viewmode"] = 0;
  EXPECT_DEATH(Start(), zvtest::Literal(zvtest::AssertText(
                            "src/MicrophoneStateTree/MicroPhoneOperateScene/RecordVoiceScene.cpp", 305,
                            "void RecordVoiceScene::UpdateFrameLocation()", "p != 0")));
}

TEST_F(RecorderTest, PlacingThePanelWithoutItsBarFailsTheAssertionOnTheBar) {
  Start();
  RecordVoiceScene& scene = Scene();
  EXPECT_DEATH(
      {
        scene.mProgressBar = nullptr;
        scene.UpdateFrameLocation();
      },
      zvtest::Literal(zvtest::AssertText("src/MicrophoneStateTree/MicroPhoneOperateScene/RecordVoiceScene.cpp", 321,
                                         "void RecordVoiceScene::UpdateFrameLocation()", "mProgressBar")));
}

TEST_F(RecorderTest, OnlyTheLossOfTheDeviceEndsARecordingFromTheMicrophonesSide) {
  Start();
  StartRecording();
  Scene().Notify(kMicEventStopped);
  EXPECT_EQ(RecordVoiceScene::kRecordRecording, Scene().mRecordState);
  Scene().Notify(kMicEventDeviceLost);
  EXPECT_EQ(RecordVoiceScene::kRecordClipEnded, Scene().mRecordState);
  EXPECT_EQ(0, MicManager::sInstance().GetMicrophone()->GetState());
}

TEST_F(RecorderTest, InitRecordParamResetsTheRecordingAndMarksARerecordOfAKnownResource) {
  Start();
  RecordVoiceScene& scene = Scene();
  scene.mCurrentTime = 5;
  scene.mbStopRecord = 1;
  scene.mIsPaused = 1;
  scene.mTimeLimit = 3;
  scene.InitRecordParam();
  EXPECT_EQ(0.0f, scene.mCurrentTime);
  EXPECT_EQ(0, scene.mRerecord);
  EXPECT_EQ(1, scene.mCaptureOpen);
  EXPECT_EQ(0, scene.mbStopRecord);
  EXPECT_EQ(1, scene.mIsRecording);
  EXPECT_EQ(NEWRECORDTIMELIMIT, scene.mTimeLimit);
  EXPECT_EQ(0, scene.mIsPaused);
  scene.mCurrentResId = 4;
  scene.InitRecordParam();
  EXPECT_EQ(1, scene.mRerecord);
}

TEST_F(RecorderTest, TheProgressBarHoldsWhilePausedAndShowsZeroWhenTheClipHasEnded) {
  Start();
  RecordVoiceScene& scene = Scene();
  scene.mRecordState = RecordVoiceScene::kRecordPlaying;
  scene.mTimeLimit = 4;
  scene.mCurrentTime = 1;
  scene.UpdateProgressBar(0);
  EXPECT_EQ(0.25f, scene.mProgressBar->mProgress);
  scene.mIsPaused = 1;
  scene.mCurrentTime = 3;
  scene.UpdateProgressBar(0);
  EXPECT_EQ(0.25f, scene.mProgressBar->mProgress);
  scene.mIsPaused = 0;
  scene.mCurrentTime = 9;
  scene.UpdateProgressBar(0);
  EXPECT_EQ(1.0f, scene.mProgressBar->mProgress);
  scene.mCurrentTime = -1;
  scene.UpdateProgressBar(0);
  EXPECT_EQ(0.0f, scene.mProgressBar->mProgress);
  scene.mCurrentTime = 2;
  scene.mRecordState = RecordVoiceScene::kRecordClipEnded;
  scene.UpdateProgressBar(0);
  EXPECT_EQ(0.0f, scene.mProgressBar->mProgress);
  scene.mRecordState = RecordVoiceScene::kRecordIdle;
}

}  // namespace
