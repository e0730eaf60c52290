// The state's entry by launch parameter and room, and the two pop-ups.
#include "RecorderFixture.h"
#include "solva/Display.h"

namespace {

using recorder::RecorderTest;
using solva::AudioEventKind;

TEST_F(RecorderTest, WithoutAViewmodeTheRecordPanelHasBothGrids) {
  Start();
  EXPECT_EQ(3, Scene().mPageType);
  EXPECT_NE(nullptr, Scene().mHorizontalGrid);
  EXPECT_NE(nullptr, Scene().mVerticalGrid);
  EXPECT_NE(nullptr, State().GetScene(kSceneNoMicrophone));
  EXPECT_NE(nullptr, State().GetScene(kSceneMemoryFull));
  EXPECT_EQ(nullptr, State().GetMicrophone());
}

TEST_F(RecorderTest, Viewmode7GivesBothGrids) {
  Params()["viewmode"] = 7;
  Start();
  EXPECT_EQ(3, Scene().mPageType);
}

TEST_F(RecorderTest, Viewmode0GivesOnlyTheHorizontalGrid) {
  Params()["viewmode"] = 0;
  Start();
  EXPECT_EQ(1, Scene().mPageType);
  EXPECT_EQ(nullptr, Scene().mVerticalGrid);
  solva::QueueOrientation(1);
  Frames(2);
  EXPECT_EQ(1, Scene().mIsHorizontal);
  EXPECT_EQ(Scene().mHorizontalGrid, Scene().mCurrentGrid);
}

TEST_F(RecorderTest, Viewmode1GivesOnlyTheVerticalGridAndRotatingChangesNothing) {
  Params()["viewmode"] = 1;
  Start();
  EXPECT_EQ(2, Scene().mPageType);
  EXPECT_EQ(nullptr, Scene().mHorizontalGrid);
  EXPECT_EQ(0, Scene().mIsHorizontal);
  const int flatX = Control("mic_time_flat").GetPositionX();
  solva::QueueOrientation(0);
  Frames(2);
  solva::QueueOrientation(2);
  Frames(2);
  EXPECT_EQ(Scene().mVerticalGrid, Scene().mCurrentGrid);
  EXPECT_EQ(0, Scene().mIsHorizontal);
  EXPECT_EQ(flatX, Control("mic_time_flat").GetPositionX());
  // The panel still works.
  StartRecording();
  EXPECT_EQ(RecordVoiceScene::kRecordRecording, Scene().mRecordState);
}

TEST_F(RecorderTest, AFullGalleryAtTheStartShowsThePopupWithItsCue) {
  solva::SetFreeBytes(1000);
  Start();
  IScene* popup = State().GetScene(kSceneMemoryFull);
  EXPECT_EQ(popup, Top());
  EXPECT_EQ(1, CountEvents(AudioEventKind::Start, CuePath("h_BN_OopsYrOtOfMmryVstYrGllryT_3")));
  Frames(2);
  EXPECT_EQ(0xFF6060C0u, solva::ScreenPixel(5, 5));
}

TEST_F(RecorderTest, AFullGalleryWithAFolderStillShowsThePopup) {
  solva::SetFreeBytes(1000);
  Params()["folderpath"] = mRoot.file("kids/");
  Start();
  EXPECT_EQ(State().GetScene(kSceneMemoryFull), Top());
}

TEST_F(RecorderTest, BackOnTheFullGalleryPopupEndsTheTitle) {
  solva::SetFreeBytes(1000);
  Start();
  MemoryFullScene& popup = *static_cast<MemoryFullScene*>(State().GetScene(kSceneMemoryFull));
  YGUIControl* back = popup.GetControl("back");
  ASSERT_NE(nullptr, back);
  TapGrid(back->GetPositionX() + 5, back->GetPositionY() + 5);
  EXPECT_TRUE(MicManager::sInstance().IsGameFinished());
  EXPECT_TRUE(solva::PopAppRequested());
}

TEST_F(RecorderTest, TheFullGalleryPopupTurnsWithTheDevice) {
  solva::SetFreeBytes(1000);
  Start();
  MemoryFullScene& popup = *static_cast<MemoryFullScene*>(State().GetScene(kSceneMemoryFull));
  solva::QueueOrientation(1);
  Frame();
  EXPECT_EQ(popup.mVerticalGrid, popup.mCurrentGrid);
  EXPECT_EQ(1, popup.SwitchDirection(eOS_Vertical));
}

TEST_F(RecorderTest, NoMicrophoneAtTheMomentOfRecordingShowsThePopupOverTheFrozenPanel) {
  Start();
  solva::SetMicrophonePresent(false);
  testing::internal::CaptureStdout();
  Tap("record");
  ASSERT_TRUE(RunUntil([&] { return Top() == State().GetScene(kSceneNoMicrophone); }, 100));
  const std::string out = testing::internal::GetCapturedStdout();
  EXPECT_NE(std::string::npos, out.find("NoMicrophoneScene::EnterScene()\n"));
  EXPECT_NE(std::string::npos, out.find("NoMicrophoneScene::EnterScene() end"));
  EXPECT_EQ(-1, Scene().mCurrentResId);
  // The panel beneath is frozen: its clock stands still.
  const float t = Scene().mCurrentTime;
  Frames(10);
  EXPECT_EQ(t, Scene().mCurrentTime);
  EXPECT_EQ(2u, State().GetSceneStack().size());
  // Only the pop-up is seen.
  EXPECT_EQ(0xFF6060C0u, solva::ScreenPixel(5, 5));
}

TEST_F(RecorderTest, OkOnTheNoMicrophonePopupEndsTheTitle) {
  Start();
  solva::SetMicrophonePresent(false);
  Tap("record");
  ASSERT_TRUE(RunUntil([&] { return Top() == State().GetScene(kSceneNoMicrophone); }, 100));
  Frames(3);
  NoMicrophoneScene& popup = *static_cast<NoMicrophoneScene*>(State().GetScene(kSceneNoMicrophone));
  YGUIControl* ok = popup.GetControl("ok");
  ASSERT_NE(nullptr, ok);
  TapGrid(ok->GetPositionX() + 5, ok->GetPositionY() + 5);
  EXPECT_TRUE(MicManager::sInstance().IsGameFinished());
  EXPECT_TRUE(solva::PopAppRequested());
}

TEST_F(RecorderTest, NoRoomAtTheMomentOfRecordingShowsTheNoMicrophonePopup) {
  Start();
  solva::SetFreeBytes(1000);
  Tap("record");
  ASSERT_TRUE(RunUntil([&] { return Top() == State().GetScene(kSceneNoMicrophone); }, 100));
  EXPECT_EQ(-1, Scene().mCurrentResId);
  EXPECT_FALSE(solva::GetCaptureInfo().active);
}

TEST_F(RecorderTest, TheMicrophoneAbsentAtTheStartLeadsToThePopupAtRecord) {
  solva::SetMicrophonePresent(false);
  Start();
  EXPECT_FALSE(MicManager::sInstance().GetMicrophone()->IsValid());
  Tap("record");
  ASSERT_TRUE(RunUntil([&] { return Top() == State().GetScene(kSceneNoMicrophone); }, 100));
}

TEST_F(RecorderTest, ExitingWhileRecordingSavesTheClip) {
  Params()["viewmode"] = 2;
  Start();
  StartRecording();
  Frames(30);
  Exit();
  EXPECT_EQ(nullptr, MicManager::instance_);
  const std::string answer = mParams->GetRoot()["filename"].asString();
  ASSERT_FALSE(answer.empty());
  zvtest::Sound sound = zvtest::ReadSound(answer);
  EXPECT_GT(sound.samples.size(), 0u);
}

TEST_F(RecorderTest, SuspendAndResumeWhileRecordingPauseTheCaptureAndTheClock) {
  Start();
  StartRecording();
  Frames(10);
  const float t = Scene().mCurrentTime;
  mApp->Suspend();
  EXPECT_TRUE(solva::GetCaptureInfo().paused);
  solva::AdvanceClock(600000);
  mApp->Resume();
  EXPECT_FALSE(solva::GetCaptureInfo().paused);
  Frame();
  EXPECT_LT(Scene().mCurrentTime, t + 0.1f);
  EXPECT_EQ(RecordVoiceScene::kRecordRecording, Scene().mRecordState);
}

}  // namespace
