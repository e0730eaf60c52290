#include "MicrophoneStateTree/MicroPhoneOperateScene/RecordVoiceScene.h"

#include <assert.h>
#include <stdint.h>
#include <stdio.h>
#include <string.h>

#include "Base/XAssert.h"
#include "BaseFramework/InputManager.h"
#include "CJSonFile.h"
#include "Canvas/CanvasLayer.h"
#include "Canvas/CanvasRender.h"
#include "MediaCenter/Archive.h"
#include "MediaCenter/MediaCenter.h"
#include "MediaCenter/ResInfo.h"
#include "MicManager.h"
#include "MicrophoneStateTree/MicroPhoneOperateScene/RawImageProgressBar.h"
#include "MicrophoneStateTree/MicrophoneState.h"
#include "Sound/AudioDevice.h"
#include "VT/ZvMicrophoneWidgetInstance.h"
#include "YGUI/YGUIControl.h"
#include "YGUI/YGUIMessage.h"
#include "ZvMicrophone.h"

float NEWRECORDTIMELIMIT = 100.0f;
int ContrlPos[14];

namespace {
// The drag's bookkeeping and the delay before the back button lights up.
unsigned char touched = 0;
int tempX = 0;
int tempY = 0;
float highlight_delay = 0;

const uint32_t kRiff = 0x46464952;  // "RIFF"
const uint32_t kWave = 0x45564157;  // "WAVE"

void ZeroFileScope() {
  memset(ContrlPos, 0, sizeof ContrlPos);
  touched = 0;
  tempX = 0;
}

uint32_t ReadU32(const unsigned char* p) {
  return uint32_t(p[0]) | (uint32_t(p[1]) << 8) | (uint32_t(p[2]) << 16) | (uint32_t(p[3]) << 24);
}
uint16_t ReadU16(const unsigned char* p) { return uint16_t(p[0] | (p[1] << 8)); }

int Clamp(int value, int low, int high) { return value < low ? low : (value > high ? high : value); }

AudioDevice& Audio() { return *MicManager::sInstance().GetAudioDevice(); }
ZvMicrophone& Mic() { return *MicManager::sInstance().GetMicrophone(); }

// Sets the visibility and the enabled state of a control; -1 leaves it alone.
void Show(YGUIControl* control, int visible, int enable) {
  if (control == 0) return;
  if (visible >= 0) control->mVisible = visible;
  if (enable > 0) control->Enable();
  if (enable == 0) control->Disable();
}
void ClearFocus(YGUIControl* control) {
  if (control) control->MarkFocus(0);
}
void SetFocus(YGUIControl* control, int focus) {
  if (control) control->MarkFocus(focus);
}

// The clip length of a canonical WAV header in milliseconds, or 0 when the file
// cannot be used.
unsigned int ReadClipLength(const std::string& path) {
  FILE* file = fopen(path.c_str(), "rb");
  if (file == 0) {
    printf("Can't open audio file %s\n", path.c_str());
    return 0;
  }
  unsigned char header[48];
  memset(header, 0, sizeof header);
  size_t got = fread(header, 1, sizeof header, file);
  (void)got;  // a short file leaves zeros, which fail the checks below
  fclose(file);
  const uint32_t riff = ReadU32(header);
  const uint32_t wave = ReadU32(header + 8);
  if (riff != kRiff || wave != kWave) {
    puts("Bad RIFF or WAVE.");
    printf("RIFF = 0x%08x, Expects 0x%08x\n", riff, kRiff);
    printf("WAVE = 0x%08x, Expects 0x%08x\n", wave, kWave);
    return 0;
  }
  const uint32_t channels = ReadU16(header + 22);
  const uint32_t rate = ReadU32(header + 24);
  const uint32_t bits = ReadU16(header + 34);
  const uint32_t dataSize = ReadU32(header + 40);
  const uint32_t bytesPerSecond = (channels * bits * rate) >> 3;
  // A zero divisor would trap; such a header describes no sound, so it counts as
  // a clip of 0 ms.
  if (bytesPerSecond == 0) {
    printf("Audio header has no sample size: %s\n", path.c_str());
    return 0;
  }
  // The product wraps above 4,294,967 bytes of data, as the device's reader does.
  return (uint32_t(1000) * dataSize) / bytesPerSecond;
}
}  // namespace

RecordVoiceScene::RecordVoiceScene(MicrophoneState* state, const std::string& horizontalFile,
                                   const std::string& verticalFile)
    : YGUIMenu(state, horizontalFile, verticalFile),
      mCurrentResId(-1),
      mCurrentTime(0),
      mTimeLimit(100.0f),
      mCaptureOpen(1),
      mbStopRecord(0),
      mBackPressed(0),
      mRerecord(0),
      mRecordState(kRecordOpenMic),
      mMicrophoneState(state),
      mCanvasMenuLayerRef(0),
      mCanvasRenderRef(0),
      mProgressBar(0),
      mBackControl(0),
      mPlayControl(0),
      mStopControl(0),
      mRecordControl(0),
      mPauseControl(0),
      mTimeFlatControl(0),
      mBarRedControl(0),
      mDragStartX(0),
      mDragStartY(0),
      mIsPaused(0),
      mIsRecording(0),
      mDirectionChanged(0),
      mCueStep(1),
      mHasClip(0),
      mPositionX(0),
      mPositionY(0),
      mPositionPX(0),
      mPositionPY(0) {}

RecordVoiceScene::~RecordVoiceScene() {}

void RecordVoiceScene::EnterScene() {
  NEWRECORDTIMELIMIT = 100.0f;
  ZeroFileScope();
  mCurrentResId = -1;

  mProgressBar = new RawImageProgressBar();
  mProgressBar->Initialize();
  mProgressBar->mProgress = 0;
  mProgressBar->mShowCursor = 1;

  YGUIMenu::EnterScene();
  InitRecordParam();

  MicManager& manager = MicManager::sInstance();
  manager.setStepLoadFrequency(0);
  mCanvasMenuLayerRef = manager.CreateCanvasLayer(kCanvasLayerRGBA, 0, 0, 480, 272);
  mCanvasRenderRef = manager.CreateCanvasRender();
  assert(mCanvasMenuLayerRef);
  assert(mCanvasRenderRef);

  mDestFolder.clear();
  mCueStep = 1;
  mHasClip = 0;

  Catalog::CJSonFile* params = GetTheApp() ? GetTheApp()->GetParams() : 0;
  if (params) {
    const Catalog::Value& root = params->GetRoot();
    if (root.isMember("positionX")) mPositionX = Clamp(root["positionX"].asInt(), 0, 436);
    if (root.isMember("positionY")) mPositionY = Clamp(root["positionY"].asInt(), 0, 228);
    if (root.isMember("positionPX")) mPositionPX = Clamp(root["positionPX"].asInt(), 0, 228);
    if (root.isMember("positionPY")) mPositionPY = Clamp(root["positionPY"].asInt(), 0, 436);
    if (root.isMember("limittime")) {
      const int limit = root["limittime"].asInt();
      NEWRECORDTIMELIMIT = limit >= 100 ? 100.0f : (float)limit;
    }
    if (root.isMember("folderpath")) {
      mDestFolder = root["folderpath"].asString();
      printf("RecordVoiceScene::EnterScene(): destfolder:%s\n", mDestFolder.c_str());
    }
    if (root.isMember("audiofilename")) {
      mDestName = root["audiofilename"].asString();
      if (!mDestName.empty()) mDestFolder.clear();
      printf("RecordVoiceScene::EnterScene() -- DestName: %s\n", mDestName.c_str());
    }
    if (!mDestName.empty()) {
      const unsigned int ms = ReadClipLength(mDestName);
      if (ms != 0) {
        printf("Audio Length: %d ms\n", ms);
        mTimeLimit = ms / 1000.0f;
        PushReadyPlayUI();
        mCueStep = 0;
        mHasClip = 1;
      }
    }
  }

  UpdateFrameLocation();
  mDirectionChanged = 0;
  if (mHasClip) {
    PushReadyPlayUI();
  } else {
    PushReadyUI();
  }
}

void RecordVoiceScene::InitRecordParam() {
  mCurrentTime = 0;
  mRerecord = (mCurrentResId != -1);
  mCaptureOpen = 1;
  mbStopRecord = 0;
  mIsRecording = 1;
  mTimeLimit = NEWRECORDTIMELIMIT;
  mIsPaused = 0;
}

void RecordVoiceScene::Update(float dt) {
  if (mBackPressed) {
    if (!Audio().isSoundCuePlaying("SFX_BACK")) MicManager::sInstance().SetGameFinished(1);
    return;
  }

  switch (mCueStep) {
    case 1:
      Audio().playSoundCue("HL_ToRecord");
      mCueStep = 2;
      break;
    case 2:
      if (Audio().isSoundCuePlaying("HL_ToRecord")) {
        SetFocus(mRecordControl, 1);
      } else {
        ClearFocus(mRecordControl);
        mCueStep = 0;
      }
      break;
    case 3:
      Audio().playSoundCue("SFX_RECORD");
      mCueStep = 4;
      break;
    case 4:
      if (!Audio().isSoundCuePlaying("SFX_RECORD")) {
        InitRecordParam();
        mRecordState = kRecordRecording;
        mCueStep = 0;
      }
      break;
    case 5:
      if (!Audio().isSoundCuePlaying("SFX_STOP")) {
        Audio().playSoundCue("HL_ToSave");
        highlight_delay = 0;
        mCueStep = 6;
      }
      break;
    case 6:
      highlight_delay += dt;
      if (Audio().isSoundCuePlaying("HL_ToSave")) {
        if (highlight_delay > 1.2f) SetFocus(mBackControl, 1);
      } else {
        ClearFocus(mBackControl);
        mCueStep = 0;
      }
      break;
    default: break;
  }

  YGUIMenu::Update(dt);
  YGUIGrid* other = mCurrentGrid == mHorizontalGrid ? mVerticalGrid : mHorizontalGrid;
  if (other) other->Update(dt);

  UpdateProgressBar(dt);
  UpdateRecordState(dt);
  OnDraging();
  mDirectionChanged = 0;
}

void RecordVoiceScene::NotifyEventYGUI(ENotifyEventType type, void* message, void* control) {
  // Presses are ignored while the record cue plays.
  if (mCueStep != 0 && mCueStep != 1 && mCueStep != 2 && mCueStep != 5 && mCueStep != 6) return;
  if (type != eNotify_Message || message == 0) return;
  const YGUIMessage& msg = *static_cast<const YGUIMessage*>(message);
  if (msg.mType != 0) return;

  if (msg.mEvent == YGUIMessage::eEvent_Button && msg.mKey == YGUIMessage::eKey_Back) {
    mMicrophoneState->PopScene();
    return;
  }
  if (msg.mEvent != YGUIMessage::eEvent_StylusDown || control == 0) return;

  const std::string& name = static_cast<YGUIControl*>(control)->mName;
  if (name == "record") {
    puts("record!");
    Audio().stopSoundCue("HL_ToRecord");
    Audio().stopSoundCue("HL_ToSave");
    mCueStep = 3;
  } else if (name == "stop") {
    Audio().playSoundCue("SFX_STOP");
    if (mIsRecording) {
      puts("Press stop with mIsRecording = true");
      mCueStep = 5;
      mbStopRecord = 1;
      mTimeLimit = mCurrentTime;
    } else {
      puts("Press stop with mIsRecording = false");
      mRecordState = kRecordPlayStopped;
      mCurrentTime = 0;
    }
  } else if (name == "back") {
    Audio().stopSoundCue("HL_ToSave");
    Audio().playSoundCue("SFX_BACK");
    mBackPressed = 1;
  } else if (name == "play") {
    Audio().stopSoundCue("HL_ToSave");
    Audio().playSoundCue("SFX_PLAY");
    PlayRecordSound(0);
  } else if (name == "pause") {
    Audio().playSoundCue("SFX_PAUSE");
    mRecordState = kRecordPaused;
  }
}

void RecordVoiceScene::UpdateRecordState(float dt) {
  switch (mRecordState) {
    case kRecordOpenMic:
      Mic().OpenMic();
      mRecordState = kRecordIdle;
      break;
    case kRecordIdle:
      if (mHasClip) OnTouchProgressBar();
      break;
    case kRecordRecording:
      PushRecordingUI();
      if (mCurrentResId == -1) {
        Mic().StartRecord(0.0f, &mCurrentResId, this, mDestFolder, mDestName);
        // No room or no microphone: the pop-up over this panel, frozen.
        if (mCurrentResId == -1) mMicrophoneState->PushScene(mMicrophoneState->GetScene(kSceneNoMicrophone), eRA_Render);
      } else if (mRerecord) {
        Mic().StartRecordByResID(0.0f, mCurrentResId, this);
        mRerecord = 0;
      }
      mCurrentTime += dt;
      if (mbStopRecord) {
        OnOK();
      } else {
        if (mHorizontalGrid) mHorizontalGrid->PlayAnime("recording");
        if (mVerticalGrid) mVerticalGrid->PlayAnime("recording");
      }
      // The limit ends a recording one frame after it passes.
      if (mCurrentTime >= mTimeLimit + 0.1f) mbStopRecord = 1;
      break;
    case kRecordPlaying:
      if (mIsPaused) {
        puts("resume play");
        mIsPaused = 0;
        Audio().unPauseSoundWithoutCue();
        break;
      }
      PushPlayingUI();
      mCurrentTime += dt;
      if (mCurrentTime >= mTimeLimit + 0.1f) mRecordState = kRecordClipEnded;
      OnTouchProgressBar();
      if (!Audio().isSoundWithOutCuePlaying()) mRecordState = kRecordClipEnded;
      break;
    case kRecordClipEnded:
      PushReadyPlayUI();
      OnTouchProgressBar();
      break;
    case kRecordPaused:
      PushPauseUI();
      if (!mIsPaused) {
        puts("pausing");
        Audio().pauseSoundWithoutCue();
        mIsPaused = 1;
      }
      break;
    case kRecordPlayStopped:
      Audio().stopSoundWithoutCue();
      PushReadyPlayUI();
      OnTouchProgressBar();
      break;
    default: break;
  }
}

// Ends a recording: the clip is saved, and from here on mTimeLimit is its length.
void RecordVoiceScene::OnOK() {
  if (mHorizontalGrid) mHorizontalGrid->PlayAnime("stop");
  if (mVerticalGrid) mVerticalGrid->PlayAnime("stop");
  Mic().StopRecord(kMicEventStopped);
  mCaptureOpen = 0;
  if (mProgressBar) mProgressBar->mProgress = 0;
  mCueStep = 5;
  mTimeLimit = mCurrentTime;
  mIsRecording = 0;
  mRecordState = kRecordClipEnded;
}

// The microphone has saved the clip already when the device is lost; the stop
// within OnOK then returns at once.
void RecordVoiceScene::Notify(EMicStateEvent event) {
  if (event == kMicEventDeviceLost) OnOK();
}

void RecordVoiceScene::PlayRecordSound(unsigned int seconds) {
  if (!mIsPaused) {
    // The type follows the file name alone, even when a folder was asked for.
    const EResType type = mDestName.empty() ? eRT_Audio : eRT_SpecificFolderAudio;
    MicManager& manager = MicManager::sInstance();
    ResInfo* res = manager.GetMediaCenter().GetResInfo(type, mCurrentResId, false);
    std::string path;
    if (res == 0) {
      path = mDestName;
    } else if (!mDestName.empty()) {
      path = res->mName;
    } else {
      path = manager.GetArchiver().mMusicPath + res->mName;
    }
    printf("[Play Record Voice] %s\n", path.c_str());
    AudioDevice& audio = Audio();
    audio.stopSoundWithoutCue();
    audio.update(0);
    audio.playSoundWithoutCue(path);
    audio.update(0);
    mCurrentTime = (float)seconds;
    // Half the time on a millisecond clock, as the device does; the bar goes on
    // from `seconds`.
    if (seconds != 0) audio.setSoundTime(seconds * 500);
  }
  mIsRecording = 0;
  mRecordState = kRecordPlaying;
}

// A tap on the bar jumps there and plays; holding does not scrub.
void RecordVoiceScene::OnTouchProgressBar() {
  const InputManager& input = InputManager::sInstance();
  if (!input.mTouchNow.down) return;
  const Math3D::vec2 point = ConvertPoint(input.mTouchNow.x, input.mTouchNow.y);
  const int x = (int)point.x;
  const int y = (int)point.y;
  if (!mProgressBar->IsOnProgressBar(x, y) || input.mTouchPhase == InputManager::eTP_Held) return;
  int barX = 0;
  int barY = 0;
  mProgressBar->GetPosition(barX, barY);
  const float time = ((float)(x - barX) / (float)mProgressBar->GetLength()) * mTimeLimit;
  mRecordState = kRecordPlayStopped;
  mCurrentTime = time;
  PlayRecordSound((unsigned int)time);
}

void RecordVoiceScene::UpdateProgressBar(float dt) {
  if (mIsPaused) return;
  float progress = 0;
  if (mRecordState != kRecordClipEnded) {
    progress = mCurrentTime / mTimeLimit;
    if (progress < 0) progress = 0;
    if (progress > 1) progress = 1;
  }
  mProgressBar->mProgress = progress;
  mProgressBar->Update(dt);
}

//                back play stop record pause flat bar_red     focus cleared on
// PushReadyUI     V E  V D  - D   V E   - D   .    -          record
void RecordVoiceScene::PushReadyUI() {
  Show(mBackControl, 1, 1);
  Show(mPlayControl, 1, 0);
  Show(mStopControl, 0, 0);
  Show(mRecordControl, 1, 1);
  Show(mPauseControl, 0, 0);
  Show(mBarRedControl, 0, -1);
  ClearFocus(mRecordControl);
}

// PushReadyPlayUI V E  V E  - D   V E   - D   D    -          play, record
void RecordVoiceScene::PushReadyPlayUI() {
  Show(mBackControl, 1, 1);
  Show(mPlayControl, 1, 1);
  Show(mStopControl, 0, 0);
  Show(mRecordControl, 1, 1);
  Show(mPauseControl, 0, 0);
  Show(mTimeFlatControl, -1, 0);
  Show(mBarRedControl, 0, -1);
  ClearFocus(mPlayControl);
  ClearFocus(mRecordControl);
}

// PushRecordingUI V D  V D  V E   - D   - D   .    V
void RecordVoiceScene::PushRecordingUI() {
  Show(mBackControl, 1, 0);
  Show(mPlayControl, 1, 0);
  Show(mStopControl, 1, 1);
  Show(mRecordControl, 0, 0);
  Show(mPauseControl, 0, 0);
  Show(mBarRedControl, 1, -1);
}

// PushPlayingUI   . D  - D  V E   - D   V E   D    -          pause, stop
void RecordVoiceScene::PushPlayingUI() {
  Show(mBackControl, -1, 0);
  Show(mPlayControl, 0, 0);
  Show(mStopControl, 1, 1);
  Show(mRecordControl, 0, 0);
  Show(mPauseControl, 1, 1);
  Show(mTimeFlatControl, -1, 0);
  Show(mBarRedControl, 0, -1);
  ClearFocus(mPauseControl);
  ClearFocus(mStopControl);
}

// PushPauseUI     . E  V E  - D   V E   - D   D    -
void RecordVoiceScene::PushPauseUI() {
  Show(mBackControl, -1, 1);
  Show(mPlayControl, 1, 1);
  Show(mStopControl, 0, 0);
  Show(mRecordControl, 1, 1);
  Show(mPauseControl, 0, 0);
  Show(mTimeFlatControl, -1, 0);
  Show(mBarRedControl, 0, -1);
}

void RecordVoiceScene::Render() {
  mCanvasMenuLayerRef->Clear();
  RenderYGUI(*mCanvasMenuLayerRef);
  mProgressBar->RenderToLayer(*mCanvasMenuLayerRef, mOrientation);
  mCanvasRenderRef->PreDraw();
  mCanvasRenderRef->DrawLayer(mCanvasMenuLayerRef, 1.0f);
  mCanvasRenderRef->PostDraw();
}

void RecordVoiceScene::BindControls() {
  static const char* const kHidden[] = {"bar_blue", "bar_yellow", "bar"};
  for (int i = 0; i < 3; ++i) {
    // The bar is drawn by the progress bar instead.
    YGUIControl* control = GetControl(kHidden[i]);
    if (control) control->mVisible = 0;
  }
  struct Binding {
    const char* name;
    YGUIControl** field;
    int slot;  // index of x in ContrlPos
  };
  const Binding bindings[] = {
      {"mic_time_flat", &mTimeFlatControl, 10}, {"record", &mRecordControl, 6}, {"play", &mPlayControl, 2},
      {"back", &mBackControl, 0},              {"bar_red", &mBarRedControl, 12}, {"pause", &mPauseControl, 8},
      {"stop", &mStopControl, 4},
  };
  for (const Binding& binding : bindings) {
    YGUIControl* control = GetControl(binding.name);
    *binding.field = control;
    if (control == 0) continue;
    ContrlPos[binding.slot] = control->GetPositionX();
    ContrlPos[binding.slot + 1] = control->GetPositionY();
    if (binding.field == &mPlayControl) control->Disable();
  }
}

int RecordVoiceScene::SwitchDirection(EOrientationStatus orientation) {
  YGUIMenu::SwitchDirection(orientation);
  switch (mRecordState) {
    case kRecordPlaying: PushPlayingUI(); break;
    case kRecordPaused: PushPauseUI(); break;
    case kRecordRecording: PushRecordingUI(); break;
    // A clip's play button comes back only with the next state update.
    case kRecordOpenMic:
    case kRecordIdle:
    case kRecordClipEnded:
    case kRecordPlayStopped: PushReadyUI(); break;
    default: break;
  }
  UpdateFrameLocation();
  mDirectionChanged = 1;
  return 1;
}

// The whole panel follows any held touch, wherever it began.
void RecordVoiceScene::OnDraging() {
  const InputManager& input = InputManager::sInstance();
  const int x = input.mTouchNow.x;
  const int y = input.mTouchNow.y;
  YGUIControl* const controls[7] = {mBackControl,  mPlayControl,     mStopControl,  mRecordControl,
                                    mPauseControl, mTimeFlatControl, mBarRedControl};

  if ((input.mTouchNow.down && mDragStartX == 0 && mDragStartY == 0) || mDirectionChanged) {
    mDragStartX = x;
    mDragStartY = y;
    mProgressBar->GetPosition(tempX, tempY);
    for (int i = 0; i < 7; ++i) {
      if (controls[i] == 0) continue;
      ContrlPos[2 * i] = controls[i]->GetPositionX();
      ContrlPos[2 * i + 1] = controls[i]->GetPositionY();
    }
    touched = 1;
  }

  if (input.mTouchPhase == InputManager::eTP_Held) {
    int dx;
    int dy;
    if (mIsHorizontal) {
      dx = x - mDragStartX;
      dy = y - mDragStartY;
    } else {
      dx = y - mDragStartY;
      dy = mDragStartX - x;
    }
    if (mOrientation == eOS_HorizontalUpsideDown || mOrientation == eOS_VerticalUpsideDown) {
      dx = -dx;
      dy = -dy;
    }
    const bool upright = mOrientation == eOS_Vertical || mOrientation == eOS_VerticalUpsideDown;
    const int screenWidth = upright ? 272 : 480;
    const int screenHeight = upright ? 480 : 272;
    // The panel stays on the screen.
    const int flatWidth = mTimeFlatControl ? mTimeFlatControl->GetWidth() : 0;
    const int flatHeight = mTimeFlatControl ? mTimeFlatControl->GetHeight() : 0;
    if (ContrlPos[10] + dx < 0) dx = -ContrlPos[10];
    if (ContrlPos[11] + dy < 0) dy = -ContrlPos[11];
    if (ContrlPos[10] + dx + flatWidth > screenWidth) dx = screenWidth - ContrlPos[10] - flatWidth;
    if (ContrlPos[11] + dy + flatHeight > screenHeight) dy = screenHeight - ContrlPos[11] - flatHeight;
    for (int i = 0; i < 7; ++i) {
      if (controls[i]) controls[i]->SetPosition(ContrlPos[2 * i] + dx, ContrlPos[2 * i + 1] + dy);
    }
    mProgressBar->SetPosition(tempX + dx, tempY + dy);
  }

  if (input.mTouchPhase == InputManager::eTP_None) {
    mDragStartX = 0;
    mDragStartY = 0;
    if (touched) {
      // The new place is kept for this orientation only.
      const int movedX = mTimeFlatControl ? mTimeFlatControl->GetPositionX() - ContrlPos[10] : 0;
      const int movedY = mTimeFlatControl ? mTimeFlatControl->GetPositionY() - ContrlPos[11] : 0;
      if (mIsHorizontal) {
        mPositionX += movedX;
        mPositionY += movedY;
      } else {
        mPositionPX += movedX;
        mPositionPY += movedY;
      }
      UpdateFrameLocation();
      touched = 0;
    }
  }
}

void RecordVoiceScene::ExitScene() {
  // A recording in progress is saved, also when the title ends in its middle.
  Mic().StopRecord(kMicEventStopped);
  Audio().stopAll();

  ZeroFileScope();
  mProgressBar->Destroy();
  delete mProgressBar;
  mProgressBar = 0;

  MicManager& manager = MicManager::sInstance();
  manager.DestroyCanvasLayer(kCanvasLayerRGBA);
  manager.DestroyCanvasRender();
  YGUIMenu::ExitScene();

  Catalog::CJSonFile* params = GetTheApp() ? GetTheApp()->GetParams() : 0;
  if (params == 0) return;
  std::string answer;
  if (mCurrentResId == -1) {
    answer = mDestName;
  } else if (!mDestFolder.empty() || !mDestName.empty()) {
    ResInfo* res = manager.GetMediaCenter().GetResInfo(eRT_SpecificFolderAudio, mCurrentResId, false);
    if (res) answer = res->mName;
    printf("voicename:%s\n", answer.c_str());
  } else {
    ResInfo* res = manager.GetMediaCenter().GetResInfo(eRT_Audio, mCurrentResId, false);
    if (res) answer = manager.GetArchiver().mMusicPath + res->mName;
    printf("voicename:%s\n", answer.c_str());
  }
  params->GetRoot()["filename"] = answer;
}

// ---------------------------------------------------------------------------
// The panel's place: the anchor mic_time_flat goes to the position of the
// orientation in force, and everything else keeps its distance to it.
// ---------------------------------------------------------------------------
void RecordVoiceScene::UpdateFrameLocation() {
  const int baseX = mIsHorizontal ? mPositionX : mPositionPX;
  const int baseY = mIsHorizontal ? mPositionY : mPositionPY;
  const int dx = baseX - ContrlPos[10];
  const int dy = baseY - ContrlPos[11];
  YGUIControl* const controls[7] = {mBackControl,  mPlayControl,     mStopControl,  mRecordControl,
                                    mPauseControl, mTimeFlatControl, mBarRedControl};
  for (int i = 0; i < 7; ++i) {
    YGUIControl* p = controls[i];
    // Each of the seven must be in the layout.
    // The move keeps the layout's distances.
    ASSERT_AT_LINE(p != 0, 305);  // the line crash reports name
    p->SetPosition(ContrlPos[2 * i] + dx, ContrlPos[2 * i + 1] + dy);
  }
  // The bar rides beside the record button: to its right when horizontal,
  // to its left and above when vertical.
  const int recordX = mRecordControl->GetPositionX();
  const int recordY = mRecordControl->GetPositionY();
  const int barX = mIsHorizontal ? recordX + 48 : recordX - 179;
  const int barY = mIsHorizontal ? recordY + 16 : recordY - 22;
  // The bar exists from EnterScene to ExitScene; the panel is only placed
  // in between.
  //
  //
  //
  //
  //
  ASSERT_AT_LINE(mProgressBar, 321);  // the line crash reports name
  mProgressBar->SetPosition(barX, barY);
}
