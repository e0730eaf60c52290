#pragma once
#include "IEventMessage.h"

const tEventType kTouchStateChanged = 0x10004801;

struct tTouchData {
  U16 touchState;  // non-zero while the screen is touched
  S16 x;
  S16 y;
};

class CTouchMessage : public IEventMessage {
 public:
  explicit CTouchMessage(const tTouchData& data) : IEventMessage(kTouchStateChanged), mData(data) {}
  const tTouchData& GetTouchState() const { return mData; }

 private:
  tTouchData mData;
};
