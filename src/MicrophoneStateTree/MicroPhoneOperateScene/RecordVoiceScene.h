#ifndef SRC_MICROPHONESTATETREE_MICROPHONEOPERATESCENE_RECORDVOICESCENE_H
#define SRC_MICROPHONESTATETREE_MICROPHONEOPERATESCENE_RECORDVOICESCENE_H
// The recorder's panel: record a clip, play it back, pause, stop, seek and leave.
// Two small state machines run it: what the recorder does (mRecordState) and the
// sound cues that lead the child through the steps (mCueStep). The panel can be
// dragged, and the launching application may place it, limit the recording time,
// send the clip to a folder or a file of its own, and gets the clip's path back.
#include <string>

#include "MicStateObserver.h"
#include "YGUI/YGUIMenu.h"

class CanvasLayer;
class CanvasRender;
class MicrophoneState;
class RawImageProgressBar;
class YGUIControl;

class RecordVoiceScene : public YGUIMenu, public MicStateObserver {
 public:
  // Values of mRecordState, one bit at a time.
  enum ERecordState {
    kRecordOpenMic = 2,
    kRecordIdle = 4,
    kRecordRecording = 8,
    kRecordPlaying = 16,
    kRecordClipEnded = 32,
    kRecordPaused = 64,
    kRecordPlayStopped = 128,
  };

  RecordVoiceScene(MicrophoneState* state, const std::string& horizontalFile, const std::string& verticalFile);
  virtual ~RecordVoiceScene();

  void NotifyEventYGUI(ENotifyEventType type, void* message, void* control) override;
  void EnterScene() override;
  // A recording across suspend is the shell's business.
  void SuspendScene() override {}
  void ResumeScene() override {}
  void ExitScene() override;
  void Update(float dt) override;
  void BindControls() override;
  int SwitchDirection(EOrientationStatus orientation) override;
  void Render() override;
  // From the microphone: only the loss of the device acts.
  void Notify(EMicStateEvent event) override;

  void InitRecordParam();
  void PushRecordingUI();
  void PushPauseUI();
  void PushPlayingUI();
  void PushReadyPlayUI();
  void PushReadyUI();
  void UpdateProgressBar(float dt);
  void UpdateFrameLocation();
  void UpdateRecordState(float dt);
  void PlayRecordSound(unsigned int seconds);
  void OnTouchProgressBar();
  void OnDraging();
  void OnOK();
  void OnHome() {}

  int mCurrentResId;
  float mCurrentTime;
  float mTimeLimit;
  int mCaptureOpen;  // set and never read
  int mbStopRecord;
  int mBackPressed;
  int mRerecord;
  int mRecordState;
  MicrophoneState* mMicrophoneState;
  CanvasLayer* mCanvasMenuLayerRef;  // borrowed from the manager
  CanvasRender* mCanvasRenderRef;
  RawImageProgressBar* mProgressBar;  // owned between EnterScene and ExitScene
  YGUIControl* mBackControl;
  YGUIControl* mPlayControl;
  YGUIControl* mStopControl;
  YGUIControl* mRecordControl;
  YGUIControl* mPauseControl;
  YGUIControl* mTimeFlatControl;
  YGUIControl* mBarRedControl;
  int mDragStartX;
  int mDragStartY;
  unsigned char mIsPaused;
  unsigned char mIsRecording;
  std::string mDestFolder;
  std::string mDestName;
  int mDirectionChanged;
  int mCueStep;
  int mHasClip;
  int mPositionX;
  int mPositionY;
  int mPositionPX;
  int mPositionPY;
};

// The panel's bookkeeping that lives beside the scene, exposed for tests: the
// recording limit of this entry, and the positions moves are counted from (x, y
// of back, play, stop, record, pause, mic_time_flat, bar_red).
extern float NEWRECORDTIMELIMIT;
extern int ContrlPos[14];

#endif
