#include "Tamarin/ShellListeners.h"

#include <stdio.h>

#include "BaseFramework/InputManager.h"
#include "CAccelerometerMessage.h"
#include "CButtonMessage.h"
#include "CPowerMessage.h"
#include "CTouchMessage.h"
#include "Tamarin/SolvaServices.h"

const tEventType kMyHandledTypes = 0x10000FFF;
const tEventType kPowerHandledTypes = 0x10003BFF;
const tEventType kMyTouchHandleTypes = 0x10004BFF;
const tEventType kMyAccelerometerTypes = 0x100057FF;

MyBtnEventListener gEventListerner;
MyPowerListener gPowerListener;
MyTouchEventListener gTouchListener;
MyAccelerometerListener gAccelerometerListener;

unsigned char gIsLowBattery = 0;

namespace {

// The button mask bits and the input indices they raise. Bit 0x1 raises two.
struct ButtonBit {
  U32 mask;
  int index;
  const char* message;
};
const ButtonBit kButtonBits[] = {
    {0x1, 0, "BUTTON UP!"},  {0x1, 15, 0},  {0x2, 1, "BUTTON DOWN!"}, {0x4, 2, "BUTTON RIGHT!"},
    {0x8, 3, "BUTTON LEFT!"}, {0x10, 4, 0},  {0x20, 5, 0},             {0x40, 6, 0},
    {0x80, 7, 0},            {0x100, 12, 0}, {0x200, 13, 0},           {0x10000, 16, 0},
};

}  // namespace

MyBtnEventListener::MyBtnEventListener() : IEventListener(&kMyHandledTypes, 1), mLastEventType(0) {}

tErrType MyBtnEventListener::Notify(const IEventMessage& msg) {
  mLastEventType = msg.GetEventType();
  const U32 mask = static_cast<const CButtonMessage&>(msg).GetButtonState().buttonState;
  InputManager* input = InputManager::instance_;
  if (input == 0) {
    puts("receive Button message after exit!");
    return 1;
  }
  // Each event carries every button now down, so it rewrites all levels.
  input->ReleaseAll();
  printf("BUTTON:%x!\n", mask);
  for (size_t i = 0; i < sizeof kButtonBits / sizeof kButtonBits[0]; ++i) {
    if ((mask & kButtonBits[i].mask) == 0) continue;
    input->mButtonRaw[kButtonBits[i].index] = 1;
    if (kButtonBits[i].message != 0) puts(kButtonBits[i].message);
  }
  return 1;
}

MyPowerListener::MyPowerListener() : IEventListener(&kPowerHandledTypes, 1), mLastEventType(0) {}

tErrType MyPowerListener::Notify(const IEventMessage& msg) {
  mLastEventType = msg.GetEventType();
  if (mLastEventType == kPowerStateChanged) {
    puts("kPowerStateChanged!");
    const int state = static_cast<const CPowerMessage&>(msg).GetPowerState();
    if (state == 3) {
      gIsLowBattery = 1;
    } else if (state == 1) {
      gIsLowBattery = 0;
    }
  }
  return kNoErr;
}

MyTouchEventListener::MyTouchEventListener() : IEventListener(&kMyTouchHandleTypes, 1), mLastEventType(0) {}

tErrType MyTouchEventListener::Notify(const IEventMessage& msg) {
  mLastEventType = msg.GetEventType();
  if (gEventSvc == 0) {
    puts("receive Touch message after exit!");
    return 1;
  }
  const tTouchData& touch = static_cast<const CTouchMessage&>(msg).GetTouchState();
  InputManager* input = InputManager::instance_;
  if (input != 0) {
    input->mTouchRaw.down = touch.touchState != 0;
    input->mTouchRaw.y = touch.y;
    input->mTouchRaw.x = touch.x;
  }
  return 1;
}

MyAccelerometerListener::MyAccelerometerListener() : IEventListener(&kMyAccelerometerTypes, 1), mLastEventType(0) {}

tErrType MyAccelerometerListener::Notify(const IEventMessage& msg) {
  mLastEventType = msg.GetEventType();
  if (mLastEventType != kOrientationChanged) return 1;
  const tOrientation orientation = static_cast<const CAccelerometerMessage&>(msg).GetOrientation();
  InputManager* input = InputManager::instance_;
  if (input != 0) {
    input->mOrientationChanged = 1;
    input->mOrientation = static_cast<EOrientationStatus>(orientation);
  } else {
    puts("receive Accelerometer message after exit!");
  }
  return 1;
}
