#pragma once
#include "IEventMessage.h"

const tEventType kAccelerometerDataChanged = 0x10005401;
const tEventType kOrientationChanged = 0x10005402;

// 0 horizontal, 1 vertical, 2 horizontal upside down, 3 vertical upside down.
typedef S32 tOrientation;

class CAccelerometerMessage : public IEventMessage {
 public:
  CAccelerometerMessage(tEventType type, tOrientation orientation) : IEventMessage(type), mOrientation(orientation) {}
  tOrientation GetOrientation() const { return mOrientation; }

 private:
  tOrientation mOrientation;
};
