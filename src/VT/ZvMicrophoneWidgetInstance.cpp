#include "VT/ZvMicrophoneWidgetInstance.h"

#include <assert.h>
#include <stdio.h>

#include "CKernelSvc.h"
#include "MicManager.h"
#include "Sound/TamarinAudioDevice.h"
#include "Tamarin/SolvaServices.h"
#include "ZvMicrophone.h"

namespace {
ZvMicrophoneWidgetInstance* gTheApp = 0;
}

ZvMicrophoneWidgetInstance* GetTheApp() { return gTheApp; }

ZvMicrophoneWidgetInstance::ZvMicrophoneWidgetInstance(void* params)
    : ZvWidgetInstance(params), mSuspendElapsed(0) {
  gTheApp = this;
}

ZvMicrophoneWidgetInstance::~ZvMicrophoneWidgetInstance() {}

void ZvMicrophoneWidgetInstance::Enter() {
  puts("Widgets----Enter Microphone Widget------");
  Init();
  ZvWidgetInstance::Enter();
}

int ZvMicrophoneWidgetInstance::Init() {
  SetIsUseOgl(0);
  MicManager* manager = MicManager::sCreate();
  SetGameManager(manager);
  return 1;
}

void ZvMicrophoneWidgetInstance::Update() { ZvWidgetInstance::Update(); }

void ZvMicrophoneWidgetInstance::Frame(unsigned int ms) { ZvWidgetInstance::Frame(ms); }

int ZvMicrophoneWidgetInstance::Frame() {
  ZvWidgetInstance::Update();
  return 1;
}

int ZvMicrophoneWidgetInstance::ShutDown() {
  Exit();
  return 1;
}

void ZvMicrophoneWidgetInstance::OnPreExit() {
  MicManager::sInstance().Destroy();
  delete MicManager::instance_;
  MicManager::instance_ = 0;
}

void ZvMicrophoneWidgetInstance::Exit() {
  ZvWidgetInstance::Exit();
  puts("Widgets----Exit Microphone Widget------");
}

// A recording pauses with the title, and the time away never reaches dt: the
// part of a frame already gone is kept and given back at Resume.
void ZvMicrophoneWidgetInstance::Suspend() {
  ZvWidgetInstance::Suspend();
  ZvMicrophone* mic = MicManager::sInstance().GetMicrophone();
  if (mic->IsValid()) mic->pauseRecord();
  mSuspendElapsed = gKernelSvc->GetElapsedTimeAsMSecs() - mLastFrameTime;
}

// Unlike the framework's Resume this one does not go back to the title's folder:
// the working directory stays where Suspend left it. The clock is given back the
// part of a frame that had passed at Suspend, so the next dt is an ordinary one
// however long the title was away; then the sound device and the recording go
// on where they stopped. A resume without a game manager is a fault of the
// application manager's order of calls, caught before anything else of the
// title runs.
void ZvMicrophoneWidgetInstance::Resume() {
  puts("[TamarinApp] Enter resume");
  mLastFrameTime = gKernelSvc->GetElapsedTimeAsMSecs() - mSuspendElapsed;
  static_cast<TamarinAudioDevice*>(MicManager::sInstance().GetAudioDevice())->resume();
  GameManager* MyManager = mGameManager;
  assert(MyManager);
  ZvMicrophone* mic = MicManager::sInstance().GetMicrophone();
  if (mic->IsValid()) mic->resumeRecord();
}
