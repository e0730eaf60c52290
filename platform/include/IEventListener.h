#pragma once
// A receiver of device events. It names the event types it handles with one or
// more handled-type words: a word 0x1000GLLL covers the events of group G (bits 12
// to 15) whose low twelve bits lie within LLL.
#include "IEventMessage.h"

class IEventListener {
 public:
  // `types` must outlive the listener (the listeners keep static words).
  IEventListener(const tEventType* types, U32 count) : mTypes(types), mCount(count) {}
  virtual ~IEventListener() {}

  // Called on the frame thread, between two frames. The result is the listener's.
  virtual tErrType Notify(const IEventMessage& msg) = 0;

  bool HandlesType(tEventType type) const {
    for (U32 i = 0; i < mCount; ++i) {
      const tEventType word = mTypes[i];
      if ((word & 0xFFFFF000u) == (type & 0xFFFFF000u) && (type & 0xFFFu & ~(word & 0xFFFu)) == 0) return true;
    }
    return false;
  }

 private:
  const tEventType* mTypes;
  U32 mCount;
};
