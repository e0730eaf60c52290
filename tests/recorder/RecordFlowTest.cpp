// The first recording, step by step, through the whole title: the cues that lead
// the child, recording, saving, playing, pausing, seeking and leaving.
#include <sys/stat.h>

#include "RecorderFixture.h"

namespace {

using recorder::RecorderTest;
using solva::AudioEventKind;

long FileSize(const std::string& path) {
  struct stat st;
  return stat(path.c_str(), &st) == 0 ? long(st.st_size) : -1;
}

TEST_F(RecorderTest, EntersWithThePanelAndPlaysTheRecordHintWithRecordLit) {
  Start();
  EXPECT_EQ(&Scene(), Top());
  EXPECT_EQ(RecordVoiceScene::kRecordIdle, Scene().mRecordState);
  EXPECT_EQ(1, CountEvents(AudioEventKind::Start, CuePath("HL_ToRecord")));
  Frame();
  EXPECT_EQ(2, Scene().mCueStep);
  EXPECT_EQ(1, Control("record").mFocus);
  WaitCueEnd("HL_ToRecord");
  Frame();
  EXPECT_EQ(0, Scene().mCueStep);
  EXPECT_EQ(0, Control("record").mFocus);
}

TEST_F(RecorderTest, TheMicrophoneIsOpenedByTheFirstStateUpdate) {
  Start();
  EXPECT_TRUE(MicManager::sInstance().GetMicrophone()->IsValid());
  EXPECT_EQ(RecordVoiceScene::kRecordIdle, Scene().mRecordState);
}

TEST_F(RecorderTest, CaptureStartsOnlyAfterTheRecordCueHasEnded) {
  Start();
  Tap("record");
  EXPECT_EQ(4, Scene().mCueStep);
  EXPECT_EQ(1, CountEvents(AudioEventKind::Start, CuePath("SFX_RECORD")));
  EXPECT_TRUE(MicManager::sInstance().GetAudioDevice()->isSoundCuePlaying("SFX_RECORD"));
  EXPECT_FALSE(solva::GetCaptureInfo().active);
  EXPECT_EQ(RecordVoiceScene::kRecordIdle, Scene().mRecordState);
  WaitCueEnd("SFX_RECORD");
  Frame();
  EXPECT_EQ(RecordVoiceScene::kRecordRecording, Scene().mRecordState);
  EXPECT_TRUE(solva::GetCaptureInfo().active);
  EXPECT_NE(-1, Scene().mCurrentResId);
  EXPECT_EQ(0, Scene().mCueStep);
}

TEST_F(RecorderTest, PressingRecordWhileTheRecordCuePlaysDoesNothing) {
  Start();
  Tap("record");
  ASSERT_EQ(4, Scene().mCueStep);
  Tap("record");
  EXPECT_EQ(1, CountEvents(AudioEventKind::Start, CuePath("SFX_RECORD")));
  EXPECT_EQ(4, Scene().mCueStep);
}

TEST_F(RecorderTest, PressingBackDuringTheRecordCueIsIgnored) {
  Start();
  Tap("record");
  ASSERT_EQ(4, Scene().mCueStep);
  Tap("back");
  EXPECT_EQ(0, Scene().mBackPressed);
  EXPECT_EQ(0, CountEvents(AudioEventKind::Start, CuePath("SFX_BACK")));
}

TEST_F(RecorderTest, RecordingShowsTheRecordingUiAndTheClockRuns) {
  Start();
  StartRecording();
  const float before = Scene().mCurrentTime;
  Frames(10);
  EXPECT_GT(Scene().mCurrentTime, before);
  EXPECT_EQ(1, Control("stop").mVisible);
  EXPECT_EQ(1, Control("stop").mEnabled);
  EXPECT_EQ(0, Control("record").mVisible);
  EXPECT_EQ(1, Control("bar_red").mVisible);
  EXPECT_EQ(0, Control("back").mEnabled);
  EXPECT_GT(Scene().mProgressBar->mProgress, 0.0f);
}

TEST_F(RecorderTest, StopSavesTheClipAndTheSaveHintLightsBackAfterADelay) {
  Start();
  StartRecording();
  Frames(60);  // about two seconds
  const float recorded = Scene().mCurrentTime;
  Tap("stop");
  EXPECT_EQ(RecordVoiceScene::kRecordClipEnded, Scene().mRecordState);
  EXPECT_FALSE(solva::GetCaptureInfo().active);
  EXPECT_EQ(0, Scene().mIsRecording);
  // The clip's length is the limit from now on.
  EXPECT_NEAR(recorded, Scene().mTimeLimit, 0.1f);
  EXPECT_EQ(0.0f, Scene().mProgressBar->mProgress);

  ResInfo* res = MicManager::sInstance().GetMediaCenter().GetResInfo(eRT_Audio, Scene().mCurrentResId, false);
  ASSERT_NE(nullptr, res);
  const std::string clip = MusicPath() + res->mName;
  zvtest::Sound sound = zvtest::ReadSound(clip);
  EXPECT_NEAR(recorded, double(sound.samples.size()) / sound.rate, 0.2);

  // "HL_ToSave" follows "SFX_STOP"; back is lit only after 1.2 s of it.
  WaitCueEnd("SFX_STOP");
  Frame();
  EXPECT_EQ(6, Scene().mCueStep);
  EXPECT_EQ(1, CountEvents(AudioEventKind::Start, CuePath("HL_ToSave")));
  Frames(10);
  EXPECT_EQ(0, Control("back").mFocus);
  Frames(30);
  EXPECT_EQ(1, Control("back").mFocus);
  WaitCueEnd("HL_ToSave");
  Frame();
  EXPECT_EQ(0, Control("back").mFocus);
  EXPECT_EQ(0, Scene().mCueStep);
  // The clip can be played now.
  EXPECT_EQ(1, Control("play").mEnabled);
}

TEST_F(RecorderTest, PlayPausePlayAgainAndTheClipEnds) {
  Start();
  StartRecording();
  Frames(45);
  Tap("stop");
  Tap("play");
  EXPECT_EQ(RecordVoiceScene::kRecordPlaying, Scene().mRecordState);
  EXPECT_EQ(1, CountEvents(AudioEventKind::Start, MusicPath()));
  EXPECT_EQ(1, Control("pause").mVisible);
  EXPECT_EQ(0, Control("play").mVisible);
  Frames(5);
  Tap("pause");
  EXPECT_EQ(RecordVoiceScene::kRecordPaused, Scene().mRecordState);
  EXPECT_EQ(1, Scene().mIsPaused);
  EXPECT_EQ(1, CountEvents(AudioEventKind::Pause, ""));
  const float pausedAt = Scene().mCurrentTime;
  Frames(20);
  EXPECT_EQ(pausedAt, Scene().mCurrentTime);
  Tap("play");
  // The paused sound resumes; nothing new is started.
  EXPECT_EQ(1, CountEvents(AudioEventKind::Start, MusicPath()));
  EXPECT_EQ(1, CountEvents(AudioEventKind::Resume, ""));
  EXPECT_EQ(0, Scene().mIsPaused);
  ASSERT_TRUE(RunUntil([&] { return Scene().mRecordState == RecordVoiceScene::kRecordClipEnded; }));
  // The ready UI comes with the next state update.
  Frame();
  EXPECT_EQ(1, Control("play").mEnabled);
}

TEST_F(RecorderTest, StopWhilePlayingStopsThePlaybackAtEveryFrame) {
  Start();
  StartRecording();
  Frames(45);
  Tap("stop");
  Tap("play");
  Frames(3);
  Tap("stop");
  EXPECT_EQ(RecordVoiceScene::kRecordPlayStopped, Scene().mRecordState);
  EXPECT_EQ(0.0f, Scene().mCurrentTime);
  EXPECT_FALSE(MicManager::sInstance().GetAudioDevice()->isSoundWithOutCuePlaying());
  Tap("play");
  EXPECT_EQ(RecordVoiceScene::kRecordPlaying, Scene().mRecordState);
}

TEST_F(RecorderTest, ATapOnTheBarSeeksAndPlaysAtHalfTheTimeOnTheMillisecondClock) {
  Start();
  StartRecording();
  Frames(120);  // about four seconds
  Tap("stop");
  const float length = Scene().mTimeLimit;
  int bx = 0, by = 0;
  Scene().mProgressBar->GetPosition(bx, by);
  const int x = bx + recorder::kBarWidth * 3 / 4;
  TapGrid(x, by + 5);
  EXPECT_EQ(RecordVoiceScene::kRecordPlaying, Scene().mRecordState);
  const unsigned seconds = unsigned((float(x - bx) / recorder::kBarWidth) * length);
  ASSERT_GT(seconds, 0u);
  int seeks = 0;
  for (const solva::AudioEvent& e : solva::AudioEvents()) {
    if (e.kind == AudioEventKind::Seek) {
      ++seeks;
      EXPECT_EQ(seconds * 500, e.value);
    }
  }
  EXPECT_EQ(1, seeks);
  // The bar carries on from the whole seconds under the finger.
  EXPECT_GE(Scene().mCurrentTime, float(seconds));
  EXPECT_LT(Scene().mCurrentTime, float(seconds) + 0.2f);
}

TEST_F(RecorderTest, HoldingOnTheBarDoesNotScrub) {
  Start();
  StartRecording();
  Frames(60);
  Tap("stop");
  int bx = 0, by = 0;
  Scene().mProgressBar->GetPosition(bx, by);
  solva::QueueTouch(true, bx + 100, by + 5);
  Frame();
  const int starts = CountEvents(AudioEventKind::Start, MusicPath());
  EXPECT_EQ(1, starts);
  Frames(5);  // held
  EXPECT_EQ(starts, CountEvents(AudioEventKind::Start, MusicPath()));
  solva::QueueTouch(false, bx + 100, by + 5);
  Frames(2);
}

TEST_F(RecorderTest, ATapOnTheBarWhilePausedDoesNothing) {
  Start();
  StartRecording();
  Frames(60);
  Tap("stop");
  Tap("play");
  Tap("pause");
  ASSERT_EQ(RecordVoiceScene::kRecordPaused, Scene().mRecordState);
  int bx = 0, by = 0;
  Scene().mProgressBar->GetPosition(bx, by);
  TapGrid(bx + 150, by + 5);
  EXPECT_EQ(RecordVoiceScene::kRecordPaused, Scene().mRecordState);
  EXPECT_EQ(1, CountEvents(AudioEventKind::Start, MusicPath()));
  EXPECT_EQ(0, CountEvents(AudioEventKind::Seek, ""));
}

TEST_F(RecorderTest, BackPlaysItsCueThenEndsTheTitleAndAnswersTheClipsPath) {
  Params()["limittime"] = 50;
  Start();
  StartRecording();
  Frames(30);
  Tap("stop");
  const int id = Scene().mCurrentResId;
  Tap("back");
  EXPECT_EQ(1, Scene().mBackPressed);
  EXPECT_EQ(1, CountEvents(AudioEventKind::Start, CuePath("SFX_BACK")));
  EXPECT_FALSE(MicManager::sInstance().IsGameFinished());
  WaitCueEnd("SFX_BACK");
  Frame();
  EXPECT_TRUE(solva::PopAppRequested());
  ResInfo* res = MicManager::sInstance().GetMediaCenter().GetResInfo(eRT_Audio, id, false);
  ASSERT_NE(nullptr, res);
  const std::string expected = MusicPath() + res->mName;
  Exit();
  EXPECT_EQ(expected, mParams->GetRoot()["filename"].asString());
  EXPECT_GT(FileSize(expected), 44);
}

TEST_F(RecorderTest, PressingRecordAfterAFirstClipRecordsIntoTheSameResource) {
  Start();
  StartRecording();
  Frames(30);
  Tap("stop");
  const int id = Scene().mCurrentResId;
  ResInfo* res = MicManager::sInstance().GetMediaCenter().GetResInfo(eRT_Audio, id, false);
  ASSERT_NE(nullptr, res);
  const std::string clip = MusicPath() + res->mName;
  const long firstSize = FileSize(clip);
  StartRecording();
  EXPECT_EQ(0, Scene().mRerecord);
  Frames(90);
  Tap("stop");
  EXPECT_EQ(id, Scene().mCurrentResId);
  EXPECT_EQ(1u, MicManager::sInstance().GetMediaCenter().GetResInfoList(eRT_Audio).size());
  EXPECT_GT(FileSize(clip), firstSize);
}

TEST_F(RecorderTest, TheMicrophoneUnpluggedWhileRecordingKeepsTheClipAndEndsAsAfterAStop) {
  Start();
  StartRecording();
  Frames(30);
  solva::QueueMicrophonePlugged(false);
  Frame();
  EXPECT_EQ(RecordVoiceScene::kRecordClipEnded, Scene().mRecordState);
  // No stop cue was played, so the save hint starts in the same frame.
  EXPECT_EQ(6, Scene().mCueStep);
  EXPECT_EQ(1, CountEvents(AudioEventKind::Start, CuePath("HL_ToSave")));
  EXPECT_EQ(0, MicManager::sInstance().GetMicrophone()->GetState());
  ResInfo* res = MicManager::sInstance().GetMediaCenter().GetResInfo(eRT_Audio, Scene().mCurrentResId, false);
  ASSERT_NE(nullptr, res);
  EXPECT_GT(FileSize(MusicPath() + res->mName), 44);
}

TEST_F(RecorderTest, AfterTheDeviceIsLostRecordStillRunsTheClockWithNoCapture) {
  Start();
  StartRecording();
  Frames(30);
  solva::QueueMicrophonePlugged(false);
  Frame();
  const int id = Scene().mCurrentResId;
  ResInfo* res = MicManager::sInstance().GetMediaCenter().GetResInfo(eRT_Audio, id, false);
  ASSERT_NE(nullptr, res);
  const std::string clip = MusicPath() + res->mName;
  const long size = FileSize(clip);
  StartRecording();
  EXPECT_EQ(RecordVoiceScene::kRecordRecording, Scene().mRecordState);
  EXPECT_FALSE(solva::GetCaptureInfo().active);
  const float t = Scene().mCurrentTime;
  Frames(10);
  EXPECT_GT(Scene().mCurrentTime, t);
  EXPECT_GT(Scene().mProgressBar->mProgress, 0.0f);
  EXPECT_EQ(size, FileSize(clip));
  EXPECT_EQ(&Scene(), Top());
}

TEST_F(RecorderTest, TheHardwareBackButtonPopsThePanelSavingTheRecordingAndNothingRunsAfter) {
  Start();
  StartRecording();
  Frames(30);
  solva::QueueButtons(0x20);
  Frame();
  solva::QueueButtons(0);
  Frame();
  EXPECT_EQ(nullptr, Top());
  EXPECT_TRUE(State().GetSceneStack().empty());
  EXPECT_EQ(0, MicManager::sInstance().GetMicrophone()->GetState());
  EXPECT_EQ(1u, MicManager::sInstance().GetMediaCenter().GetResInfoList(eRT_Audio).size());
  EXPECT_EQ(nullptr, Scene().mProgressBar);
  Frames(10);
  // The title waits for the application manager.
  EXPECT_FALSE(solva::PopAppRequested());
  EXPECT_FALSE(MicManager::sInstance().IsGameFinished());
}

}  // namespace
