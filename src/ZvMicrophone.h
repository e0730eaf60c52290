#ifndef SRC_ZVMICROPHONE_H
#define SRC_ZVMICROPHONE_H
// The microphone on the device: the capture service records, and the USB service
// says when the microphone goes away.
#include "CCameraSvc.h"
#include "CUSBDeviceSvc.h"
#include "IEventListener.h"
#include "Microphone.h"

extern const tEventType MyMicMsgTypes;

class ZvMicrophone : public Microphone, public IEventListener {
 public:
  ZvMicrophone();
  virtual ~ZvMicrophone();

  virtual int OpenMic();
  virtual int CloseMic();
  virtual int IsValid();
  virtual int IsMicrophonePresent();
  virtual int OnStartRecord(int resId);
  virtual int OnStopRecord(int resId);
  virtual int OnPauseRecord();
  virtual int OnResumeRecord();
  virtual tErrType Notify(const IEventMessage& msg);

  tAudCapHndl GetRecordingHandle() const { return mCurrentRecordingHndl; }

 private:
  int mIsValid;
  Vantrel::Solva::CCameraSvc* mCameraSvc;
  tAudCapHndl mCurrentRecordingHndl;
  Vantrel::Solva::CUSBDeviceSvc* mUsbSvc;
};

#endif
