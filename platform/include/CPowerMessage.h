#pragma once
#include "IEventMessage.h"

const tEventType kPowerStateChanged = 0x10003801;

enum tPowerState {
  kPowerNull = 0,
  kPowerNormal = 1,
  kPowerExternal = 2,
  kPowerLow = 3,
  kPowerCritical = 4,
  kPowerShutdown = 5,
};

class CPowerMessage : public IEventMessage {
 public:
  explicit CPowerMessage(int state) : IEventMessage(kPowerStateChanged), mState(state) {}
  int GetPowerState() const { return mState; }

 private:
  int mState;
};
