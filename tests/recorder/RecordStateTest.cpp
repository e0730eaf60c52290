// The recorder's state machine: the ways out of each state not covered by the
// first recording's walk.
#include "RecorderFixture.h"

namespace {

using recorder::RecorderTest;
using solva::AudioEventKind;

class RecordStateTest : public RecorderTest {
 protected:
  // A clip of about two seconds, ended and ready to play.
  void RecordAClip() {
    Start();
    StartRecording();
    Frames(60);
    Tap("stop");
    ASSERT_EQ(RecordVoiceScene::kRecordClipEnded, Scene().mRecordState);
  }
  void TapBar(int fromLeft) {
    int bx = 0, by = 0;
    Scene().mProgressBar->GetPosition(bx, by);
    TapGrid(bx + fromLeft, by + 5);
  }
};

TEST_F(RecordStateTest, RecordFromPausedRecordsAgain) {
  RecordAClip();
  Tap("play");
  Tap("pause");
  ASSERT_EQ(RecordVoiceScene::kRecordPaused, Scene().mRecordState);
  StartRecording();
  EXPECT_EQ(RecordVoiceScene::kRecordRecording, Scene().mRecordState);
  EXPECT_TRUE(solva::GetCaptureInfo().active);
}

TEST_F(RecordStateTest, RecordFromPlaybackStoppedRecordsAgain) {
  RecordAClip();
  Tap("play");
  Tap("stop");
  ASSERT_EQ(RecordVoiceScene::kRecordPlayStopped, Scene().mRecordState);
  StartRecording();
  EXPECT_EQ(RecordVoiceScene::kRecordRecording, Scene().mRecordState);
}

TEST_F(RecordStateTest, ATapOnTheBarWhilePlayingJumpsAndPlaysAgain) {
  RecordAClip();
  Tap("play");
  ASSERT_EQ(RecordVoiceScene::kRecordPlaying, Scene().mRecordState);
  TapBar(200);
  EXPECT_EQ(RecordVoiceScene::kRecordPlaying, Scene().mRecordState);
  EXPECT_EQ(2, CountEvents(AudioEventKind::Start, MusicPath()));
  EXPECT_EQ(1, CountEvents(AudioEventKind::Seek, ""));
}

TEST_F(RecordStateTest, ATapOnTheBarAfterPlaybackStoppedPlaysFromThere) {
  RecordAClip();
  Tap("play");
  Tap("stop");
  TapBar(200);
  EXPECT_EQ(RecordVoiceScene::kRecordPlaying, Scene().mRecordState);
}

TEST_F(RecordStateTest, ATapOnTheBarInIdleWithoutAClipDoesNothing) {
  Start();
  ASSERT_EQ(RecordVoiceScene::kRecordIdle, Scene().mRecordState);
  TapBar(100);
  EXPECT_EQ(RecordVoiceScene::kRecordIdle, Scene().mRecordState);
  EXPECT_EQ(0, CountEvents(AudioEventKind::Start, MusicPath()));
}

TEST_F(RecordStateTest, TheStopPressOnRecordingCarriesTheTimeAsTheLimitUntilTheNextFrame) {
  Start();
  StartRecording();
  Frames(10);
  RecordVoiceScene& scene = Scene();
  YGUIMessage press;
  press.mEvent = YGUIMessage::eEvent_StylusDown;
  scene.NotifyEventYGUI(eNotify_Message, &press, &Control("stop"));
  EXPECT_EQ(1, scene.mbStopRecord);
  EXPECT_EQ(5, scene.mCueStep);
  EXPECT_EQ(scene.mCurrentTime, scene.mTimeLimit);
  EXPECT_EQ(RecordVoiceScene::kRecordRecording, scene.mRecordState);
  Frame();
  EXPECT_EQ(RecordVoiceScene::kRecordClipEnded, scene.mRecordState);
}

TEST_F(RecordStateTest, MessagesOtherThanInputAreIgnored) {
  Start();
  RecordVoiceScene& scene = Scene();
  YGUIMessage press;
  press.mEvent = YGUIMessage::eEvent_StylusDown;
  press.mType = 1;
  scene.NotifyEventYGUI(eNotify_Message, &press, &Control("record"));
  EXPECT_NE(3, scene.mCueStep);
  press.mType = 0;
  scene.NotifyEventYGUI(eNotify_FocusGained, &press, &Control("record"));
  EXPECT_NE(3, scene.mCueStep);
  scene.NotifyEventYGUI(eNotify_Message, &press, &Control("record"));
  EXPECT_EQ(3, scene.mCueStep);
}

class PopupAnimationTest : public RecorderTest {};

TEST_F(PopupAnimationTest, APressDuringTheFullGalleryPopupsAnimationIsIgnored) {
  // The pop-up comes in over two seconds.
  zvtest::WriteText(mTitle.file("res/UI/Page/menu_pop_up_gall_full_hori.xml"),
                    "<?xml version='1.0' encoding='utf-8'?>\n<Grid x='0' y='0' Width='480' Height='272' "
                    "AnimSetNum='1'>\n<AnimationSet KeyFrameNum='2' Name='in'><KeyFrame Time='0' Opacity='1' />"
                    "<KeyFrame Time='2' Opacity='1' /></AnimationSet>\n" +
                        recorder::Button("back", 1, 100, 100) + "</Grid>\n");
  solva::SetFreeBytes(1000);
  Start();
  TapGrid(110, 110);
  EXPECT_FALSE(MicManager::sInstance().IsGameFinished());
  Frames(70);
  TapGrid(110, 110);
  EXPECT_TRUE(MicManager::sInstance().IsGameFinished());
}

}  // namespace

namespace {

using recorder::RecorderTest;

TEST_F(RecorderTest, RecordingPlaysTheRecordingAnimationOnBothGridsAndStopTheStopAnimation) {
  Start();
  StartRecording();
  EXPECT_EQ("recording", Scene().mHorizontalGrid->mCurrentAnime);
  EXPECT_EQ("recording", Scene().mVerticalGrid->mCurrentAnime);
  Tap("stop");
  EXPECT_EQ("stop", Scene().mHorizontalGrid->mCurrentAnime);
  EXPECT_EQ("stop", Scene().mVerticalGrid->mCurrentAnime);
}

}  // namespace
