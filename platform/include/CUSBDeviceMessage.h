#pragma once
#include "IEventMessage.h"

const tEventType kUSBDeviceStateChange = 0x10004001;

// Values of tUSBDeviceData's words.
const U32 kUSBDeviceDisconnected = 0;
const U32 kUSBDeviceConnected = 1;
const U32 kUSBDeviceDriverNone = 0;
const U32 kUSBDeviceDriverAudio = 2;
const U32 kUSBDeviceSupportsNone = 0;
const U32 kUSBDeviceSupportsMicrophone = 0x4;

struct tUSBDeviceData {
  U32 USBDeviceState;
  U32 USBDeviceDriver;
  U32 USBDeviceSupports;
};

class CUSBDeviceMessage : public IEventMessage {
 public:
  explicit CUSBDeviceMessage(const tUSBDeviceData& data) : IEventMessage(kUSBDeviceStateChange), mData(data) {}
  const tUSBDeviceData& GetUSBDeviceState() const { return mData; }

 private:
  tUSBDeviceData mData;
};
