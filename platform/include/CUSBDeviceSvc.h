#pragma once
#include "CUSBDeviceMessage.h"
#include "IEventListener.h"

namespace Vantrel {
namespace Solva {

// Tells its listeners when a USB device (the microphone) comes or goes.
class CUSBDeviceSvc {
 public:
  CUSBDeviceSvc();
  virtual ~CUSBDeviceSvc();
  tErrType RegisterEventListener(const IEventListener* listener);
  tErrType UnregisterEventListener(const IEventListener* listener);
  tUSBDeviceData GetUSBDeviceState() const;
};

}  // namespace Solva
}  // namespace Vantrel
