#include "MicManager.h"

#include <assert.h>

#include "Base/StringID.h"
#include "Base/XAssert.h"
#include "BaseFramework/InputManager.h"
#include "Canvas/CanvasLayer.h"
#include "Canvas/CanvasRender.h"
#include "Canvas/VT/ZvCanvasFactory.h"
#include "External/waf/WafArchiveManager.h"
#include "MediaCenter/MediaCenter.h"
#include "MediaCenter/ResInfo.h"
#include "MediaCenter/VT/ZvArchive.h"
#include "MicrophoneStateTree/MicrophoneState.h"
#include "Sound/TamarinAudioDevice.h"
#include "ZvMicrophone.h"

MicManager::MicManager()
    : mMicrophoneState(0),
      mMicrophone(0),
      mAudioDevice(0),
      mFramesPerSecond(0),
      mCanvasRender(0),
      mCanvasFactory(0) {
  for (int i = 0; i < 3; ++i) mCanvasLayers[i] = 0;
}

MicManager::~MicManager() {}

void MicManager::setStepLoadFrequency(int frequency) { mStepLoadFrequency.push_back(frequency); }

int MicManager::stepLoadFrequency() { return mStepLoadFrequency.back(); }

void MicManager::resumeStepLoadFrequency() {
  if (!mStepLoadFrequency.empty()) mStepLoadFrequency.pop_back();
}

void MicManager::enableInactivity(int /*enable*/) {}

CanvasLayer* MicManager::GetCanvasLayer(ECanvasLayerType type) {
  switch (type) {
    case kCanvasLayerRGBA:
    case kCanvasLayerOgl:
    case kCanvasLayerYUV: return mCanvasLayers[type];
    default: assert(0);
  }
  return 0;
}

void MicManager::DestroyCanvasLayer(ECanvasLayerType type) {
  if (mCanvasLayers[type] == 0) return;
  mCanvasLayers[type]->Destroy();
  delete mCanvasLayers[type];
  mCanvasLayers[type] = 0;
}

CanvasRender* MicManager::GetCanvasRender() { return mCanvasRender; }

void MicManager::DestroyCanvasRender() {
  delete mCanvasRender;
  mCanvasRender = 0;
}

// Start-up, in the one order every part depends on: configuration and input,
// the archive before the media store that copies its paths, the store before
// the microphone that records into it, and the state last.
void MicManager::Initialize() {
  setStepLoadFrequency(7);
  GameManager::Initialize();

  mArchiver = new ZvArchive();
  mArchiver->Initialize(4);

  mWafArchiveManager = WafArchiveManager::sCreate();
  mWafArchiveManager->Initialize(mArchiver->mTitlePath.c_str());

  mMediaCenter = new MediaCenter(this);
  mMediaCenter->Initialize();
  // Finishes any save or deletion a power cut broke off.
  mMediaCenter->InitResInfo(eRT_Audio, "");
  mMediaCenter->InitResInfo(eRT_SpecificFolderAudio, "");

  // Layers come from the device's factory: RGBA for this title, the others for
  // titles that show video or draw in 3D.
  mCanvasFactory = new ZvCanvasFactory();

  // The sound device: the cues of the project lead the child through the steps,
  // and the same device plays the recorded clip back. It is the platform's;
  // without it the title has no voice, which is a fault of the build, not of
  // the child's use.
  TamarinAudioDevice::sCreate();
  assert(AudioDevice::sInstance());
  mAudioDevice = AudioDevice::sInstance();
  mAudioDevice->Initialize("res/Sound/MicrophoneWidget.soundproject");
  mAudioDevice->setMusicVolume(100);
  mAudioDevice->setVoiceVolume(100);
  mAudioDevice->pauseAll();

  CreateCanvasLayer(kCanvasLayerRGBA, 0, 0, 480, 272);
  CreateCanvasRender();

  mMicrophone = new ZvMicrophone();

  mMicrophoneState = new MicrophoneState();
  LaunchState(mMicrophoneState);
}

// Shut-down: scenes and state first (a recording in progress is saved there),
// then what they used, then the framework's own services.
void MicManager::Destroy() {
  GameManager::ExitState();

  mAudioDevice->unPauseAll();
  mAudioDevice->stopAll();
  // Stopped cues stay listed, pointing into the project, until an update lets
  // them go; they go now, before the project is deleted under them.
  mAudioDevice->update(0);
  mAudioDevice->Destroy();
  AudioDevice::sDestroy();
  mAudioDevice = 0;

  StringID::Destroy();

  DestroyCanvasLayer(kCanvasLayerRGBA);
  DestroyCanvasLayer(kCanvasLayerOgl);
  DestroyCanvasLayer(kCanvasLayerYUV);
  DestroyCanvasRender();

  delete mCanvasFactory;
  mCanvasFactory = 0;

  mMicrophone->CloseMic();
  delete mMicrophone;
  mMicrophone = 0;

  GameManager::Destroy();

  delete mMediaCenter;
  mMediaCenter = 0;
  delete mArchiver;
  mArchiver = 0;
  delete WafArchiveManager::instance_;
  WafArchiveManager::instance_ = 0;
  mWafArchiveManager = 0;

  // The state's scenes went with ExitState; the state itself goes last.
  delete mMicrophoneState;
  mMicrophoneState = 0;
}

void MicManager::Update(float dt) {
  static unsigned TotalFrames = 0;
  static float FpsCountCycle = 0;

  InputManager::sInstance().Update(dt);
  GameManager::Update(dt);
  mAudioDevice->update(dt);

  TotalFrames += 1;
  FpsCountCycle += dt;
  if (FpsCountCycle >= 1.0f) {
    mFramesPerSecond = static_cast<float>(TotalFrames) / FpsCountCycle;
    TotalFrames = 0;
    FpsCountCycle = 0;
  }
}

void MicManager::Render() { GameManager::Render(); }

CanvasLayer* MicManager::CreateCanvasLayer(ECanvasLayerType type, int x, int y, int width, int height) {
  assert(mCanvasFactory);
  switch (type) {
    case kCanvasLayerRGBA:
    case kCanvasLayerOgl:
    case kCanvasLayerYUV: break;
    default: assert(0);
  }
  if (mCanvasLayers[type] != 0) return mCanvasLayers[type];
  switch (type) {
    case kCanvasLayerRGBA: mCanvasLayers[type] = mCanvasFactory->CreateRGBALayer(x, y, width, height); break;
    case kCanvasLayerOgl: mCanvasLayers[type] = mCanvasFactory->CreateOglLayer(x, y, width, height); break;
    case kCanvasLayerYUV: mCanvasLayers[type] = mCanvasFactory->CreateYUVLayer(x, y, width, height); break;
  }
  return mCanvasLayers[type];
}

// ---------------------------------------------------------------------------
// The render that pushes the layers to the display: one for the title, made on
// first use by the factory of the device.
// ---------------------------------------------------------------------------
CanvasRender* MicManager::CreateCanvasRender() {
  ASSERT_AT_LINE(mCanvasFactory, 288);  // the line crash reports name
  if (mCanvasRender == 0) mCanvasRender = mCanvasFactory->CreateRender();
  return mCanvasRender;
}
