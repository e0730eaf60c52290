#include "ZvMicrophone.h"

#include <stdio.h>

#include "Base/XAssert.h"
#include "CUSBDeviceMessage.h"
#include "MediaCenter/Archive.h"
#include "MediaCenter/MediaCenter.h"
#include "MicManager.h"

const tEventType MyMicMsgTypes = 0x100043FF;

ZvMicrophone::ZvMicrophone()
    : IEventListener(&MyMicMsgTypes, 1),
      mIsValid(0),
      mCameraSvc(new Vantrel::Solva::CCameraSvc()),
      mCurrentRecordingHndl(kInvalidAudCapHndl),
      mUsbSvc(new Vantrel::Solva::CUSBDeviceSvc()) {}

ZvMicrophone::~ZvMicrophone() {
  CloseMic();
  delete mCameraSvc;
  delete mUsbSvc;
}

int ZvMicrophone::IsValid() { return mIsValid; }

int ZvMicrophone::IsMicrophonePresent() {
  XASSERT(mCameraSvc);
  return mCameraSvc->IsCameraPresent() ? 1 : 0;
}

int ZvMicrophone::OpenMic() {
  puts("---------ZvMicrophone::OpenMic()---------");
  if (IsValid()) return EMC_Ok;
  XASSERT(mCameraSvc);
  if (!IsMicrophonePresent()) {
    puts("[ZvMicrophone][OpenMic] EMC_InvalidDevice.");
    return EMC_InvalidDevice;
  }
  mIsValid = 1;
  Microphone::OpenMic();
  const tErrType Rtv = mUsbSvc->RegisterEventListener(this);
  XASSERT(Rtv == kNoErr);
  puts("[ZvMicrophone][OpenMic] Mic opened.");
  return EMC_Ok;
}

int ZvMicrophone::CloseMic() {
  Microphone::CloseMic();
  if (IsValid()) {
    mIsValid = 0;
    XASSERT(mUsbSvc);
    mUsbSvc->UnregisterEventListener(this);
  }
  puts("[ZvMicrophone][OpenMic] Mic closed.");
  return EMC_Ok;
}

int ZvMicrophone::OnStartRecord(int /*resId*/) {
  puts("---------ZvMicrophone::OnStartRecord---------");
  MicManager& manager = MicManager::sInstance();
  MediaCenter* mMediaCenter = &manager.GetMediaCenter();
  XASSERT(mMediaCenter);
  Archive* mArchiver = &manager.GetArchiver();
  XASSERT(mArchiver);

  const tErrType errorType = mCameraSvc->SetCameraAudioPath(mArchiver->mMusicPath);
  XASSERT(errorType == kNoErr);
  const std::string path = mMediaCenter->temporaryAudioName();
  // A stale temporary from an interrupted run goes first.
  mArchiver->ArchiveDeleteFile(path);
  mCurrentRecordingHndl = mCameraSvc->StartAudioCapture(path, 0, 0, 0);
  XASSERT(mCurrentRecordingHndl != kInvalidAudCapHndl);
  puts("---------ZvMicrophone::OnStartRecord---------END");
  return EMC_Ok;
}

int ZvMicrophone::OnStopRecord(int /*resId*/) {
  puts("---------ZvMicrophone::OnStopRecord---------");
  XASSERT(mCurrentRecordingHndl != kInvalidAudCapHndl);
  mCameraSvc->StopAudioCapture(mCurrentRecordingHndl);
  mCurrentRecordingHndl = kInvalidAudCapHndl;
  return EMC_Ok;
}

int ZvMicrophone::OnPauseRecord() {
  puts("---------ZvMicrophone::OnPauseRecord---------");
  return mCameraSvc->PauseAudioCapture(mCurrentRecordingHndl) ? EMC_Ok : EMC_CaptureFailed;
}

int ZvMicrophone::OnResumeRecord() {
  return mCameraSvc->ResumeAudioCapture(mCurrentRecordingHndl) ? EMC_Ok : EMC_CaptureFailed;
}

tErrType ZvMicrophone::Notify(const IEventMessage& msg) {
  if (msg.GetEventType() == kUSBDeviceStateChange) {
    const CUSBDeviceMessage* UsbMsg = dynamic_cast<const CUSBDeviceMessage*>(&msg);
    XASSERT(UsbMsg);
    const tUSBDeviceData& state = UsbMsg->GetUSBDeviceState();
    printf("[ZvMicrophone][USB_Notify] State %d, Driver %d, Supports %d \n", int(state.USBDeviceState),
           int(state.USBDeviceDriver), int(state.USBDeviceSupports));
    if (!IsMicrophonePresent()) {
      // The clip so far is kept and saved like any other.
      StopRecord(kMicEventDeviceLost);
      puts("[ZvMicrophone][USB_Notify] Stop microphone works.");
    }
    puts("[ZvMicrophone][USB_Notify] Process complete.");
  } else {
    puts("[ZvMicrophone][Notify] Process complete.");
  }
  return 0;
}
