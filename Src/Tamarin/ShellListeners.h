#ifndef SRC_TAMARIN_SHELLLISTENERS_H
#define SRC_TAMARIN_SHELLLISTENERS_H
// The shell's event listeners and the file-scope objects the shell registers. Each
// keeps the type of the last event it was told, and writes only plain fields that
// the frame samples once (InputManager's raw levels, gIsLowBattery). The game
// manager goes before they are unregistered, so each tests that InputManager
// still exists.
#include "IEventListener.h"

class MyBtnEventListener : public IEventListener {
 public:
  MyBtnEventListener();
  virtual tErrType Notify(const IEventMessage& msg);
  tEventType mLastEventType;
};

class MyPowerListener : public IEventListener {
 public:
  MyPowerListener();
  virtual tErrType Notify(const IEventMessage& msg);
  tEventType mLastEventType;
};

class MyTouchEventListener : public IEventListener {
 public:
  MyTouchEventListener();
  virtual tErrType Notify(const IEventMessage& msg);
  tEventType mLastEventType;
};

class MyAccelerometerListener : public IEventListener {
 public:
  MyAccelerometerListener();
  virtual tErrType Notify(const IEventMessage& msg);
  tEventType mLastEventType;
};

extern const tEventType kMyHandledTypes;
extern const tEventType kPowerHandledTypes;
extern const tEventType kMyTouchHandleTypes;
extern const tEventType kMyAccelerometerTypes;

extern MyBtnEventListener gEventListerner;  // spelled so
extern MyPowerListener gPowerListener;
extern MyTouchEventListener gTouchListener;
extern MyAccelerometerListener gAccelerometerListener;

// Set while the battery is low; colours the exit reason.
extern unsigned char gIsLowBattery;

#endif
