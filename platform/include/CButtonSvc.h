#pragma once
#include "CButtonMessage.h"
#include "IEventListener.h"

namespace Vantrel {
namespace Solva {

// Delivers button events.
class CButtonSvc {
 public:
  CButtonSvc();
  virtual ~CButtonSvc();
  tErrType RegisterEventListener(const IEventListener* listener);
  tErrType UnregisterEventListener(const IEventListener* listener);
  tButtonData GetButtonState() const;
};

}  // namespace Solva
}  // namespace Vantrel
