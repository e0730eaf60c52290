#pragma once
// An event of the device, identified by its type word.
#include "PlatformTypes.h"

typedef U32 tEventType;

class IEventMessage {
 public:
  explicit IEventMessage(tEventType type) : mType(type) {}
  virtual ~IEventMessage() {}
  tEventType GetEventType() const { return mType; }

 private:
  tEventType mType;
};
