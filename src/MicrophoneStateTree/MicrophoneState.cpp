#include "MicrophoneStateTree/MicrophoneState.h"

#include <string>

#include "CJSonFile.h"
#include "MediaCenter/MediaCenter.h"
#include "MicManager.h"
#include "MicrophoneStateTree/MicroPhoneOperateScene/MemoryFullScene.h"
#include "MicrophoneStateTree/MicroPhoneOperateScene/NoMicrophoneScene.h"
#include "MicrophoneStateTree/MicroPhoneOperateScene/RecordVoiceScene.h"
#include "VT/ZvMicrophoneWidgetInstance.h"

MicrophoneState::MicrophoneState() : mMicrophone(0), mMediaCenter(0) {
  for (int i = 0; i < 3; ++i) mScenes[i] = 0;
}

MicrophoneState::~MicrophoneState() {}

void MicrophoneState::EnterState() {
  std::string horizontal = "menu_mic_widget.xml";
  std::string vertical = "menu_mic_widget_vert.xml";

  int viewmode = 2;
  Catalog::CJSonFile* params = GetTheApp() ? GetTheApp()->GetParams() : 0;
  if (params) {
    const Catalog::Value& root = params->GetRoot();
    if (root.isMember("viewmode")) viewmode = root["viewmode"].asInt();
  }
  if (viewmode == 0) vertical.clear();    // horizontal only
  if (viewmode == 1) horizontal.clear();  // vertical only

  mScenes[kSceneRecordVoice] = new RecordVoiceScene(this, horizontal, vertical);
  mScenes[kSceneNoMicrophone] = new NoMicrophoneScene(this);
  mScenes[kSceneMemoryFull] = new MemoryFullScene(this);

  mMediaCenter = &MicManager::sInstance().GetMediaCenter();
  // The room is judged for the gallery even when the clip is to go elsewhere.
  if (mMediaCenter->RequestResSpace(eRT_Audio) == eMedia_Ok) {
    PushScene(mScenes[kSceneRecordVoice], eRA_None);
  } else {
    PushScene(mScenes[kSceneMemoryFull], eRA_None);
  }
}

void MicrophoneState::ExitState() {
  GameState::ExitState();
  mMicrophone = 0;
  mMediaCenter = 0;
  for (int i = 0; i < 3; ++i) {
    delete mScenes[i];
    mScenes[i] = 0;
  }
}

void MicrophoneState::Render() { GameState::Render(); }
