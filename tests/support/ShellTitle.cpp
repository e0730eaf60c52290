#include "support/ShellTitle.h"

#include <stdio.h>

#include "Base/StringID.h"
#include "BaseFramework/InputManager.h"
#include "CKernelSvc.h"
#include "Tamarin/ShellListeners.h"
#include "Tamarin/SolvaServices.h"
#include "solva/Events.h"

namespace shelltitle {

std::vector<std::string>& CallLog() {
  static std::vector<std::string> log;
  return log;
}

std::function<void()>& InitializeHook() {
  static std::function<void()> hook;
  return hook;
}

int& LastExitReason() {
  static int reason = -1;
  return reason;
}

void LoggingScene::EnterScene() { CallLog().push_back(mName + ".Enter"); }
void LoggingScene::SuspendScene() { CallLog().push_back(mName + ".Suspend"); }
void LoggingScene::ResumeScene() { CallLog().push_back(mName + ".Resume"); }
void LoggingScene::ExitScene() { CallLog().push_back(mName + ".Exit"); }

void LoggingScene::Update(float dt) {
  CallLog().push_back(mName + ".Update");
  ++updates;
  lastDt = dt;
  if (onUpdate) onUpdate(*this, dt);
}

void LoggingScene::Render() {
  CallLog().push_back(mName + ".Render");
  ++renders;
}

void MainScene::Update(float dt) {
  LoggingScene::Update(dt);
  ++frames;
  if (dt > maxDt) maxDt = dt;
  InputManager& input = InputManager::sInstance();
  if (input.mTouchPhase == InputManager::eTP_JustDown) {
    ++taps;
    lastX = input.mTouchNow.x;
    lastY = input.mTouchNow.y;
  }
  for (int i = 0; i < InputManager::kButtonCount; ++i) {
    if (input.mButtonState[i] == InputManager::eBS_JustPressed) buttons += (buttons.empty() ? "" : ",") + std::to_string(i);
  }
  if (input.mButtonState[5] == InputManager::eBS_JustPressed) ShellTitleManager::sInstance().SetGameFinished(1);
}

void ShellTitleState::EnterState() {
  CallLog().push_back("state.Enter");
  mMain = new MainScene();
  PushScene(mMain, eRA_UpdateAndRender);
}

void ShellTitleState::ExitState() {
  GameState::ExitState();
  delete mMain;
  mMain = nullptr;
}

void ShellTitleManager::Initialize() {
  CallLog().push_back("manager.Initialize");
  if (InitializeHook()) InitializeHook()();
  GameManager::Initialize();
  mState = new ShellTitleState();
  LaunchState(mState);
}

std::vector<bool>& ListenersAtManagerDestroy() {
  static std::vector<bool> registered;
  return registered;
}

void ShellTitleManager::Destroy() {
  CallLog().push_back("manager.Destroy");
  ListenersAtManagerDestroy() = {solva::ListenerRegistered(&gPowerListener), solva::ListenerRegistered(&gEventListerner),
                                 solva::ListenerRegistered(&gTouchListener),
                                 solva::ListenerRegistered(&gAccelerometerListener)};
  GameManager::ExitState();
  StringID::Destroy();
  GameManager::Destroy();
  delete mState;
  mState = nullptr;
}

void ShellTitleManager::Update(float dt) {
  InputManager::sInstance().Update(dt);
  GameManager::Update(dt);
}

void ShellTitleManager::Render() { GameManager::Render(); }

void ShellTitleInstance::Enter() {
  ShellTitleManager::sCreate();
  SetGameManager(&ShellTitleManager::sInstance());
  ZvWidgetInstance::Enter();
}

void ShellTitleInstance::Suspend() {
  ZvWidgetInstance::Suspend();
  mSuspendElapsed = gKernelSvc->GetElapsedTimeAsMSecs() - mLastFrameTime;
}

void ShellTitleInstance::Resume() {
  mLastFrameTime = gKernelSvc->GetElapsedTimeAsMSecs() - mSuspendElapsed;
}

void ShellTitleInstance::OnPreExit() {
  ShellTitleManager& manager = ShellTitleManager::sInstance();
  LastExitReason() = manager.GetExitReason();
  // The answer to the launcher, written while the scenes still know what they saw.
  MainScene* main = manager.state() ? manager.state()->main() : nullptr;
  Catalog::CJSonFile* params = GetParams();
  if (params != nullptr && main != nullptr) {
    Catalog::Value& root = params->GetRoot();
    root["taps"] = main->taps;
    Catalog::Value touch = Catalog::Value::Array();
    touch.append(main->lastX);
    touch.append(main->lastY);
    root["lastTouch"] = touch;
    root["buttons"] = main->buttons;
    root["orientation"] = int(InputManager::sInstance().mOrientation);
    root["frames"] = main->frames;
    root["maxDtMs"] = int(main->maxDt * 1000.0f + 0.5f);
    root["exitReason"] = manager.GetExitReason();
    root["finished"] = manager.IsGameFinished();
  }
  manager.Destroy();
  delete ShellTitleManager::instance_;
  ShellTitleManager::instance_ = nullptr;
}

}  // namespace shelltitle
