#include "Tamarin/ZvWidgetInstance.h"

#include <EGL/egl.h>
#include <GLES/gl.h>
#include <assert.h>
#include <stdio.h>
#include <string.h>
#include <unistd.h>

#include "Base/XAssert.h"
#include "BaseFramework/GameManager.h"
#include "CAccelerometerSvc.h"
#include "CAppManager.h"
#include "CButtonSvc.h"
#include "CDisplaySvc.h"
#include "CEventSvc.h"
#include "CKernelSvc.h"
#include "CPowerSvc.h"
#include "CSystemData.h"
#include "CVideoSvc.h"
#include "SolvaOpenGLConfig.h"
#include "Tamarin/ShellListeners.h"
#include "Tamarin/SolvaServices.h"

using namespace Vantrel::Solva;

ZvWidgetInstance* ZvWidgetInstance::smActiveIntance = 0;
int ZvWidgetInstance::smEnableOgl = 0;

namespace {

unsigned ClockNow() { return gKernelSvc->GetElapsedTimeAsMSecs(); }

// getcwd into a zeroed buffer of the device's size.
std::string CurrentFolder() {
  char buffer[1000];
  memset(buffer, 0, sizeof buffer);
  if (getcwd(buffer, sizeof buffer) == 0) buffer[0] = 0;
  return buffer;
}

void SwapEglBuffers(SolvaOpenGLConfig* config) {
  eglWaitGL();
  eglSwapBuffers(static_cast<EGLDisplay>(config->eglDisplay), static_cast<EGLSurface>(config->eglSurface));
}

}  // namespace

ZvWidgetInstance::ZvWidgetInstance(void* params)
    : mGameManager(0), mLastFrameTime(0), mOpenGLConfig(0), mReserved(0) {
  smActiveIntance = this;
  if (params != 0) mParams = *static_cast<boost::shared_ptr<Catalog::CJSonFile>*>(params);
}

ZvWidgetInstance::~ZvWidgetInstance() {}

void ZvWidgetInstance::SetGameManager(GameManager* gameManager) {
  if (gameManager == 0) puts("gameManager is NULL");
  mGameManager = gameManager;
}

double ZvWidgetInstance::elapseTime() {
  CKernelSvc kernel;
  return static_cast<double>(kernel.GetElapsedTimeAsMSecs());
}

void ZvWidgetInstance::PushWorkingPath() {
  CurrentFolder();
  const Glib::ustring titlePath = CSystemData::Instance()->GetCurrentTitlePath();
  if (chdir(titlePath.c_str()) != 0) printf("cannot enter the title folder %s\n", titlePath.c_str());
  CurrentFolder();
}

void ZvWidgetInstance::PopWorkingPath() {
  if (!mWorkingPath.empty() && chdir(mWorkingPath.c_str()) != 0) {
    printf("cannot return to the folder %s\n", mWorkingPath.c_str());
  }
}

void ZvWidgetInstance::Enter() {
  mWorkingPath = CurrentFolder();
  PushWorkingPath();

  gKernelSvc = new CKernelSvc();
  gPowerSvc = new CPowerSvc();
  gEventSvc = new CEventSvc();
  gButtonSvc = new CButtonSvc();
  gDisplaySvc = new CDisplaySvc();
  gAccelerometerSvc = new CAccelerometerSvc();
  gVideoSvc = new CVideoSvc();

  if (smEnableOgl) InitSolvaOpenGL();

  mGameManager->Initialize();

  // A failed registration leaves Enter here: nothing is retried, the clock is not
  // set, and the title runs on without the later listeners.
  puts("Register gPowerListener ");
  if (gEventSvc->RegisterEventListener(&gPowerListener, 0) != kNoErr) {
    puts("FAILURE to load event manager!");
    return;
  }
  puts("Register gEventListerner ");
  if (gButtonSvc->RegisterEventListener(&gEventListerner) != kNoErr) {
    puts("FAILURE to load button server!");
    return;
  }
  puts("Register gTouchListener ");
  if (gEventSvc->RegisterEventListener(&gTouchListener, 0) != kNoErr) {
    puts("FAILURE to load touch server!");
    return;
  }
  puts("Register gAccelerometerListener ");
  if (gAccelerometerSvc->IsAccelerometerPresent()) {
    if (gEventSvc->RegisterEventListener(&gAccelerometerListener, 0) != kNoErr) {
      puts("FAILURE to load Acclerometer!");
      return;
    }
    gAccelerometerSvc->SetAccelerometerRate(3);
    gAccelerometerSvc->SetAccelerometerMode(3);
  }

  gIsLowBattery = 0;
  mLastFrameTime = ClockNow();
  mTimer.start();
}

void ZvWidgetInstance::Update() {
  const unsigned now = ClockNow();
  const unsigned delta = now - mLastFrameTime;
  mLastFrameTime = ClockNow();
  Frame(delta);
}

void ZvWidgetInstance::Frame(unsigned int ms) {
  // No cap and no smoothing: a stall is one long frame.
  const float dt = static_cast<float>(ms) / 1000.0f;
  mGameManager->Update(dt);
  mGameManager->Render();
  if (smEnableOgl && mGameManager->needRender()) SwapEglBuffers(mOpenGLConfig);
  if (mGameManager->IsGameFinished()) CAppManager::Instance()->PopApp();
}

void ZvWidgetInstance::Suspend() {
  if (!mWorkingPath.empty() && chdir(mWorkingPath.c_str()) != 0) {
    printf("cannot return to the folder %s\n", mWorkingPath.c_str());
  }
}

void ZvWidgetInstance::Resume() {
  PushWorkingPath();
  mLastFrameTime = ClockNow();
}

int ZvWidgetInstance::ExitReason(unsigned char pendingExitCode, bool lowBattery, bool gameFinished) {
  int reason;
  switch (pendingExitCode) {
    case 0: reason = 0; break;
    case 2:
    case 3:
    case 6: reason = 3; break;
    default: reason = 1; break;  // 1, 4, 5 and everything above 6
  }
  if (lowBattery) {
    reason = 3;
  } else if (reason == 1 && !gameFinished) {
    reason = 3;
  }
  return reason;
}

void ZvWidgetInstance::Exit() {
  const int reason = ExitReason(CAppManager::Instance()->GetPendingExitCode(), gIsLowBattery != 0,
                                mGameManager->IsGameFinished() != 0);
  mGameManager->SetExitReason(reason);
  mGameManager = 0;
  smActiveIntance = 0;

  OnPreExit();

  // The game manager is gone while the listeners are still registered.
  gEventSvc->UnregisterEventListener(&gPowerListener);
  gButtonSvc->UnregisterEventListener(&gEventListerner);
  gEventSvc->UnregisterEventListener(&gTouchListener);
  if (gAccelerometerSvc->IsAccelerometerPresent()) gEventSvc->UnregisterEventListener(&gAccelerometerListener);

  delete gPowerSvc;
  gPowerSvc = 0;
  delete gEventSvc;
  gEventSvc = 0;
  delete gButtonSvc;
  gButtonSvc = 0;
  delete gKernelSvc;
  gKernelSvc = 0;
  delete gDisplaySvc;
  gDisplaySvc = 0;
  delete gAccelerometerSvc;
  gAccelerometerSvc = 0;
  delete gVideoSvc;
  gVideoSvc = 0;

  if (!mWorkingPath.empty() && chdir(mWorkingPath.c_str()) != 0) {
    printf("cannot return to the folder %s\n", mWorkingPath.c_str());
  }
  if (smEnableOgl) CloseSolvaOpenGL();
}

void ZvWidgetInstance::SwapRenderBuffer() {
  if (smEnableOgl) SwapEglBuffers(mOpenGLConfig);
}

void ZvWidgetInstance::CloseSolvaOpenGL() {
  glClearColorx(0, 0, 0, 0);
  glClear(GL_COLOR_BUFFER_BIT);
  SwapEglBuffers(mOpenGLConfig);
  puts("[CloseSolvaOpenGL]");
}

// ---------------------------------------------------------------------------
// OpenGL set-up: a 480 x 272 orthographic projection in 16.16 fixed point,
// blending on, depth test off, the screen cleared to transparent black.
// ---------------------------------------------------------------------------
namespace {
const GLfixed kFixedOne = 1 << 16;
}
void ZvWidgetInstance::InitSolvaOpenGL() {
  ASSERT_AT_LINE(mOpenGLConfig != 0, 538);  // the line crash reports name
  glMatrixMode(GL_PROJECTION);
  glLoadIdentity();
  glOrthox(0, 480 * kFixedOne, 272 * kFixedOne, 0, -kFixedOne, kFixedOne);
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();
  glEnable(GL_BLEND);
  glDepthFunc(GL_LEQUAL);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  glEnable(GL_TEXTURE_2D);
  glDisable(GL_DEPTH_TEST);
  glClearColorx(0, 0, 0, 0);
  glClear(GL_COLOR_BUFFER_BIT);
  SwapEglBuffers(mOpenGLConfig);
  puts("[SolvaOpenGL create]");
}
