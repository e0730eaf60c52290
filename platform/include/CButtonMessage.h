#pragma once
#include "IEventMessage.h"

const tEventType kButtonStateChanged = 0x10000001;

// Button masks of the device.
const U32 kButtonUp = 0x1;
const U32 kButtonDown = 0x2;
const U32 kButtonRight = 0x4;
const U32 kButtonLeft = 0x8;
const U32 kButtonA = 0x10;
const U32 kButtonB = 0x20;
const U32 kButtonLeftShoulder = 0x40;
const U32 kButtonRightShoulder = 0x80;
const U32 kButtonMenu = 0x100;
const U32 kButtonHint = 0x200;
const U32 kButtonPause = 0x10000;

struct tButtonData {
  U32 buttonState;       // every button down now
  U32 buttonTransition;  // the buttons that changed with this event
};

class CButtonMessage : public IEventMessage {
 public:
  explicit CButtonMessage(const tButtonData& data) : IEventMessage(kButtonStateChanged), mData(data) {}
  const tButtonData& GetButtonState() const { return mData; }

 private:
  tButtonData mData;
};
