#pragma once
#include "IEventListener.h"

namespace Vantrel {
namespace Solva {

// Delivers power, touch and tilt events to the listeners registered with it, each
// only the types its handled-type words cover.
class CEventSvc {
 public:
  CEventSvc();
  virtual ~CEventSvc();
  tErrType RegisterEventListener(const IEventListener* listener, U32 priority);
  tErrType UnregisterEventListener(const IEventListener* listener);
};

}  // namespace Solva
}  // namespace Vantrel
