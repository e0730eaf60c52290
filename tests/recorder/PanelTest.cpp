// The panel's UI by step, its place, rotation and dragging.
#include "RecorderFixture.h"
#include "solva/Display.h"

namespace {

using recorder::RecorderTest;

class PanelTest : public RecorderTest {
 protected:
  // Visible, enabled of a control as "V E" style letters.
  std::string Ui(const char* name) {
    YGUIControl& c = Control(name);
    return std::string(c.mVisible ? "V" : "-") + (c.mDisabled ? "D" : "E");
  }
  void Rotate(int orientation) {
    solva::QueueOrientation(orientation);
    Frame();
  }
  void MarkAllFocused() {
    for (const char* name : {"back", "play", "stop", "record", "pause"}) {
      Control(name).Enable();
      Control(name).mFocus = 1;
    }
  }
};

TEST_F(PanelTest, PushReadyUiShowsBackPlayAndRecordWithPlayDisabled) {
  Start();
  MarkAllFocused();
  Control("bar_red").mVisible = 1;
  Scene().PushReadyUI();
  EXPECT_EQ("VE", Ui("back"));
  EXPECT_EQ("VD", Ui("play"));
  EXPECT_EQ("-D", Ui("stop"));
  EXPECT_EQ("VE", Ui("record"));
  EXPECT_EQ("-D", Ui("pause"));
  EXPECT_EQ(0, Control("bar_red").mVisible);
  EXPECT_EQ(0, Control("record").mFocus);
  EXPECT_EQ(1, Control("back").mFocus);
}

TEST_F(PanelTest, PushReadyPlayUiEnablesPlayAndClearsFocusOnPlayAndRecord) {
  Start();
  MarkAllFocused();
  Control("mic_time_flat").Enable();
  Scene().PushReadyPlayUI();
  EXPECT_EQ("VE", Ui("back"));
  EXPECT_EQ("VE", Ui("play"));
  EXPECT_EQ("-D", Ui("stop"));
  EXPECT_EQ("VE", Ui("record"));
  EXPECT_EQ("-D", Ui("pause"));
  EXPECT_EQ(1, Control("mic_time_flat").mDisabled);
  EXPECT_EQ(0, Control("bar_red").mVisible);
  EXPECT_EQ(0, Control("play").mFocus);
  EXPECT_EQ(0, Control("record").mFocus);
  EXPECT_EQ(1, Control("back").mFocus);
}

TEST_F(PanelTest, PushRecordingUiOffersOnlyStopAndShowsTheRedMark) {
  Start();
  Control("mic_time_flat").Enable();
  Scene().PushRecordingUI();
  EXPECT_EQ("VD", Ui("back"));
  EXPECT_EQ("VD", Ui("play"));
  EXPECT_EQ("VE", Ui("stop"));
  EXPECT_EQ("-D", Ui("record"));
  EXPECT_EQ("-D", Ui("pause"));
  EXPECT_EQ(0, Control("mic_time_flat").mDisabled);  // untouched
  EXPECT_EQ(1, Control("bar_red").mVisible);
}

TEST_F(PanelTest, PushPlayingUiOffersStopAndPauseAndLeavesBacksVisibility) {
  Start();
  MarkAllFocused();
  Control("back").mVisible = 0;
  Scene().PushPlayingUI();
  EXPECT_EQ("-D", Ui("back"));
  EXPECT_EQ("-D", Ui("play"));
  EXPECT_EQ("VE", Ui("stop"));
  EXPECT_EQ("-D", Ui("record"));
  EXPECT_EQ("VE", Ui("pause"));
  EXPECT_EQ(1, Control("mic_time_flat").mDisabled);
  EXPECT_EQ(0, Control("pause").mFocus);
  EXPECT_EQ(0, Control("stop").mFocus);
  EXPECT_EQ(1, Control("record").mFocus);
}

TEST_F(PanelTest, PushPauseUiOffersPlayAndRecordAndClearsNoFocus) {
  Start();
  MarkAllFocused();
  Control("back").mVisible = 0;
  Scene().PushPauseUI();
  EXPECT_EQ("-E", Ui("back"));
  EXPECT_EQ("VE", Ui("play"));
  EXPECT_EQ("-D", Ui("stop"));
  EXPECT_EQ("VE", Ui("record"));
  EXPECT_EQ("-D", Ui("pause"));
  EXPECT_EQ(1, Control("mic_time_flat").mDisabled);
  EXPECT_EQ(1, Control("play").mFocus);
  EXPECT_EQ(1, Control("record").mFocus);
}

TEST_F(PanelTest, TheBarPicturesOfTheLayoutAreHidden) {
  Start();
  EXPECT_EQ(0, Control("bar_blue").mVisible);
  EXPECT_EQ(0, Control("bar_yellow").mVisible);
  EXPECT_EQ(0, Control("bar").mVisible);
}

TEST_F(PanelTest, WithNoPositionTheAnchorGoesToTheOrigin) {
  Start();
  EXPECT_EQ(0, Control("mic_time_flat").GetPositionX());
  EXPECT_EQ(0, Control("mic_time_flat").GetPositionY());
  const recorder::Layout& l = recorder::kHorizontal;
  EXPECT_EQ(l.playX - l.flatX, Control("play").GetPositionX());
  EXPECT_EQ(l.playY - l.flatY, Control("pause").GetPositionY());
  // ContrlPos holds where the controls stood when bound or when a drag began.
  EXPECT_EQ(l.flatX, ContrlPos[10]);
  EXPECT_EQ(l.flatY, ContrlPos[11]);
}

TEST_F(PanelTest, HeldVerticallyTheBarStandsLeftOfAndAboveTheRecordButton) {
  Params()["positionPX"] = 12;
  Params()["positionPY"] = 200;
  solva::QueueOrientation(1);
  Start();
  ASSERT_EQ(0, Scene().mIsHorizontal);
  EXPECT_EQ(12, Control("mic_time_flat").GetPositionX());
  EXPECT_EQ(200, Control("mic_time_flat").GetPositionY());
  int bx = 0, by = 0;
  Scene().mProgressBar->GetPosition(bx, by);
  EXPECT_EQ(Control("record").GetPositionX() - 179, bx);
  EXPECT_EQ(Control("record").GetPositionY() - 22, by);
}

TEST_F(PanelTest, RotatingMovesThePanelToThePositionOfTheNewOrientation) {
  Params()["positionX"] = 30;
  Params()["positionY"] = 40;
  Params()["positionPX"] = 5;
  Params()["positionPY"] = 300;
  Start();
  EXPECT_EQ(30, Control("mic_time_flat").GetPositionX());
  Rotate(1);
  EXPECT_EQ(0, Scene().mIsHorizontal);
  EXPECT_EQ(Scene().mVerticalGrid, Scene().mCurrentGrid);
  EXPECT_EQ(5, Control("mic_time_flat").GetPositionX());
  EXPECT_EQ(300, Control("mic_time_flat").GetPositionY());
  Rotate(0);
  EXPECT_EQ(30, Control("mic_time_flat").GetPositionX());
  EXPECT_EQ(40, Control("mic_time_flat").GetPositionY());
}

TEST_F(PanelTest, RotatingWhileRecordingKeepsTheRecordingUi) {
  Start();
  StartRecording();
  Rotate(1);
  EXPECT_EQ(RecordVoiceScene::kRecordRecording, Scene().mRecordState);
  EXPECT_EQ("VE", Ui("stop"));
  EXPECT_EQ("-D", Ui("record"));
  EXPECT_EQ(1, Control("bar_red").mVisible);
}

TEST_F(PanelTest, RotatingWhilePlayingKeepsThePlayingUi) {
  Start();
  StartRecording();
  Frames(60);
  Tap("stop");
  Tap("play");
  Rotate(3);
  EXPECT_EQ(RecordVoiceScene::kRecordPlaying, Scene().mRecordState);
  EXPECT_EQ("VE", Ui("pause"));
  EXPECT_EQ("-D", Ui("play"));
}

TEST_F(PanelTest, RotatingWhilePausedKeepsThePauseUi) {
  Start();
  StartRecording();
  Frames(60);
  Tap("stop");
  Tap("play");
  Tap("pause");
  Rotate(1);
  EXPECT_EQ(RecordVoiceScene::kRecordPaused, Scene().mRecordState);
  EXPECT_EQ("VE", Ui("play"));
  EXPECT_EQ("-D", Ui("pause"));
  Frame();
  EXPECT_EQ("VE", Ui("play"));
  Tap("play");
  EXPECT_EQ(RecordVoiceScene::kRecordPlaying, Scene().mRecordState);
}

TEST_F(PanelTest, RotatingWhenTheClipHasEndedLeavesPlayDisabledUntilTheNextUpdate) {
  Start();
  StartRecording();
  Frames(60);
  Tap("stop");
  ASSERT_EQ(RecordVoiceScene::kRecordClipEnded, Scene().mRecordState);
  ASSERT_EQ("VE", Ui("play"));
  // The turn is taken when the frame is drawn, after the state update.
  Rotate(1);
  EXPECT_EQ("VD", Ui("play"));
  Frame();
  EXPECT_EQ("VE", Ui("play"));
}

TEST_F(PanelTest, RotatingInIdleWithAClipLeavesPlayDisabled) {
  const std::string clip = mTitle.file("three.wav");
  zvtest::WriteTone(clip, 16000, 3.0, 440, 0.5);
  Params()["audiofilename"] = clip;
  Start();
  ASSERT_EQ(RecordVoiceScene::kRecordIdle, Scene().mRecordState);
  ASSERT_EQ("VE", Ui("play"));
  Rotate(1);
  Frames(10);
  EXPECT_EQ("VD", Ui("play"));
}

TEST_F(PanelTest, DraggingToACornerKeepsThePanelThereForThatOrientationOnly) {
  Params()["positionPX"] = 7;
  Params()["positionPY"] = 9;
  Start();
  solva::QueueTouch(true, 300, 20);
  Frame();
  solva::QueueTouch(true, 479, 271);
  Frames(3);
  // The panel follows, kept on the screen by its anchor.
  const recorder::Layout& l = recorder::kHorizontal;
  EXPECT_EQ(480 - l.flatW, Control("mic_time_flat").GetPositionX());
  EXPECT_EQ(272 - l.flatH, Control("mic_time_flat").GetPositionY());
  EXPECT_EQ(480 - l.flatW + l.backX - l.flatX, Control("back").GetPositionX());
  int bx = 0, by = 0;
  Scene().mProgressBar->GetPosition(bx, by);
  EXPECT_EQ(Control("record").GetPositionX() + 48, bx);
  solva::QueueTouch(false, 479, 271);
  Frames(3);
  EXPECT_EQ(480 - l.flatW, Scene().mPositionX);
  EXPECT_EQ(272 - l.flatH, Scene().mPositionY);
  EXPECT_EQ(7, Scene().mPositionPX);
  EXPECT_EQ(9, Scene().mPositionPY);
  EXPECT_EQ(480 - l.flatW, Control("mic_time_flat").GetPositionX());
  Rotate(1);
  EXPECT_EQ(7, Control("mic_time_flat").GetPositionX());
  EXPECT_EQ(9, Control("mic_time_flat").GetPositionY());
  Rotate(0);
  EXPECT_EQ(480 - l.flatW, Control("mic_time_flat").GetPositionX());
  EXPECT_EQ(272 - l.flatH, Control("mic_time_flat").GetPositionY());
}

TEST_F(PanelTest, DraggingPastTheTopLeftStopsTheAnchorAtTheEdge) {
  Params()["positionX"] = 20;
  Params()["positionY"] = 20;
  Start();
  solva::QueueTouch(true, 300, 150);
  Frame();
  solva::QueueTouch(true, 200, 20);  // 100 left, 130 up
  Frames(2);
  EXPECT_EQ(0, Control("mic_time_flat").GetPositionX());
  EXPECT_EQ(0, Control("mic_time_flat").GetPositionY());
  solva::QueueTouch(false, 200, 20);
  Frames(2);
  EXPECT_EQ(0, Scene().mPositionX);
  EXPECT_EQ(0, Scene().mPositionY);
}

TEST_F(PanelTest, DraggingHeldVerticallyMovesInTheGridsSpaceAndKeepsTheHorizontalPlace) {
  Params()["positionX"] = 11;
  Params()["positionY"] = 13;
  solva::QueueOrientation(1);
  Start();
  ASSERT_EQ(0, Scene().mIsHorizontal);
  // Screen down by 10 is the grid's right by 10; screen left by 50 its down by 50.
  solva::QueueTouch(true, 400, 100);
  Frame();
  solva::QueueTouch(true, 350, 110);
  Frames(2);
  EXPECT_EQ(10, Control("mic_time_flat").GetPositionX());
  EXPECT_EQ(50, Control("mic_time_flat").GetPositionY());
  solva::QueueTouch(false, 350, 110);
  Frames(2);
  EXPECT_EQ(10, Scene().mPositionPX);
  EXPECT_EQ(50, Scene().mPositionPY);
  EXPECT_EQ(11, Scene().mPositionX);
  EXPECT_EQ(13, Scene().mPositionY);
}

TEST_F(PanelTest, DraggingUpsideDownTurnsTheOffsetRound) {
  Params()["positionX"] = 20;
  Params()["positionY"] = 100;
  solva::QueueOrientation(2);
  Start();
  solva::QueueTouch(true, 300, 150);
  Frame();
  solva::QueueTouch(true, 290, 145);  // on the turned screen: right 10, down 5
  Frames(2);
  EXPECT_EQ(30, Control("mic_time_flat").GetPositionX());
  EXPECT_EQ(105, Control("mic_time_flat").GetPositionY());
  solva::QueueTouch(false, 290, 145);
  Frames(2);
}

TEST_F(PanelTest, ThePanelAndTheBarAreDrawnOnTheScreen) {
  Start();
  Frames(2);
  int bx = 0, by = 0;
  Scene().mProgressBar->GetPosition(bx, by);
  // The bar's base (blue) beyond the 5-pixel mask at progress 0, and the
  // cursor (white) over the mask at its start.
  EXPECT_EQ(0xFF2040FFu, solva::ScreenPixel(bx + 100, by + 7));
  EXPECT_EQ(0xFFFFFFFFu, solva::ScreenPixel(bx + 2, by + 7));
}

}  // namespace
