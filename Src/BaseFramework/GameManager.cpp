#include "BaseFramework/GameManager.h"

#include "BaseFramework/GameState.h"
#include "BaseFramework/InputManager.h"
#include "BaseFramework/ZvLogging.h"
#include "Canvas/ColorBlendTable.h"
#include "ConfigSystem/CameraConfig.h"
#include "MediaCenter/Archive.h"
#include "MediaCenter/MediaCenter.h"
#include "RenderSystem/GLTextureManager.h"
#include "RenderSystem/RenderStateStack.h"
#include "RenderSystem/XFontManager.h"
#include "Tamarin/ZvWidgetInstance.h"

GameManager::GameManager()
    : mGameFinished(0),
      mArchiver(0),
      mMediaCenter(0),
      mLogging(0),
      mCurrentState(0),
      mNextState(0),
      mTransitionPhase(eTP_Idle),
      mStateLocked(0),
      mExitReason(1),
      mWafArchiveManager(0) {
  InitColorBlendTable();
}

GameManager::~GameManager() {}

void GameManager::Initialize() {
  CameraConfig::sCreate();
  InputManager::sCreate();
  XFontManager::sCreate();
  GLTextureManager::sCreate();
  CameraConfig::sInstance().LoadConfig();
  mLogging = new ZvLogging();
  RenderStateStack::initialize();
  if (ZvWidgetInstance::GetIsUseOgl()) XFontManager::sInstance().initialize();
}

void GameManager::Destroy() {
  // A title without a media store (one that never made them) has nothing to end.
  if (mArchiver != 0) mArchiver->Destroy();
  if (mMediaCenter != 0) mMediaCenter->Destroy();
  delete mLogging;
  mLogging = 0;
  delete InputManager::instance_;
  InputManager::instance_ = 0;
  RenderStateStack::destory();
  CameraConfig::sInstance().ReleaseConfig();
  delete CameraConfig::instance_;
  CameraConfig::instance_ = 0;
  // Without 3D the font manager stays allocated, as on the device.
  if (ZvWidgetInstance::GetIsUseOgl()) {
    delete XFontManager::instance_;
    XFontManager::instance_ = 0;
  }
  delete GLTextureManager::instance_;
  GLTextureManager::instance_ = 0;
}

void GameManager::Update(float dt) {
  switch (mTransitionPhase) {
    case eTP_LaunchPending:
      if (mCurrentState != 0) mCurrentState->ExitState();
      mCurrentState = mNextState;
      mCurrentState->EnterState();
      mTransitionPhase = eTP_InTransition;
      break;
    case eTP_InTransition:
      if (mCurrentState->ProcessTransition() != 0) mTransitionPhase = eTP_Running;
      break;
    case eTP_Running:
      mCurrentState->Update(dt);
      break;
    default:
      break;
  }
}

void GameManager::Render() {
  if (mCurrentState != 0 && mStateLocked == 0) mCurrentState->Render();
}

int GameManager::IsGameFinished() { return mGameFinished; }

void GameManager::SetGameFinished(int finished) { mGameFinished = finished; }

int GameManager::LaunchState(GameState* InState) {
  assert(InState != 0);
  if (mStateLocked != 0) return 0;
  mNextState = InState;
  mTransitionPhase = eTP_LaunchPending;
  return 1;
}

void GameManager::ExitState() {
  if (mCurrentState != 0) {
    mCurrentState->ExitState();
    mCurrentState = 0;
  }
}

bool GameManager::needRender() { return mCurrentState != 0 && mCurrentState->needRender(); }
