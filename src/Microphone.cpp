#include "Microphone.h"

#include <stdio.h>

#include "Base/XAssert.h"
#include "MediaCenter/MediaCenter.h"
#include "MediaCenter/ResInfo.h"
#include "MicManager.h"

Microphone::Microphone()
    : mState(eState_Idle), mObserver(0), mMediaCenter(0), mCurrentAudioRes(INVALID_RES_ID) {}

Microphone::~Microphone() {}

int Microphone::OpenMic() {
  mObserver = 0;
  mCurrentAudioRes = INVALID_RES_ID;
  mState = eState_Idle;
  mMediaCenter = &MicManager::sInstance().GetMediaCenter();
  return EMC_Ok;
}

int Microphone::CloseMic() {
  // A paused recording is left as it is.
  if (mState == eState_Recording) StopRecord(kMicEventStopped);
  mMediaCenter = 0;
  return EMC_Ok;
}

int Microphone::StartRecord(float /*reserved*/, int* outResId, MicStateObserver* observer, const std::string& folder,
                            const std::string& name) {
  if (!folder.empty() && !name.empty()) {
    XASSERT_MSG(!!! "Both folder and name are supplied.", folder_name_exclusive_error);
  }
  if (mState == eState_Recording) return EMC_Ok;
  if (!IsValid() || !IsMicrophonePresent()) return EMC_InvalidDevice;

  puts("mMediaCenter->CreateNewRes( eRT_Audio);");
  mDestFolder = folder;
  mDestName = name;
  const bool elsewhere = !folder.empty() || !name.empty();
  ResInfo* res = mMediaCenter->CreateNewRes(elsewhere ? eRT_SpecificFolderAudio : eRT_Audio);
  if (res == 0) {
    puts("not enough space.");
    return EMC_NoSpace;
  }
  mState = eState_Recording;
  mObserver = observer;
  mCurrentAudioRes = res->mResId;

  if (!folder.empty()) {
    res->mName = folder + res->mName;
  } else if (!name.empty()) {
    res->mName = name;
  }
  OnStartRecord(mCurrentAudioRes);
  if (outResId != 0) *outResId = mCurrentAudioRes;
  return EMC_Ok;
}

int Microphone::StartRecordByResID(float /*reserved*/, int resId, MicStateObserver* observer) {
  if (mState == eState_Recording) return EMC_Ok;
  if (!IsValid() || !IsMicrophonePresent()) return EMC_InvalidDevice;
  mState = eState_Recording;
  mObserver = observer;
  mCurrentAudioRes = resId;
  OnStartRecord(resId);
  return EMC_Ok;
}

int Microphone::StopRecord(EMicStateEvent event) {
  puts("Microphone::StopRecord");
  // A second stop is harmless; a paused recording stops like a running one.
  if (mState == eState_Idle) return EMC_Ok;
  OnStopRecord(mCurrentAudioRes);
  XASSERT(mCurrentAudioRes != INVALID_RES_ID);

  const EResType type = !mDestFolder.empty() || !mDestName.empty() ? eRT_SpecificFolderAudio : eRT_Audio;
  // The index is written before the file moves, inside the protected operation,
  // so that a power cut in between is undone at the next start.
  mMediaCenter->StartOperProtected(type, mCurrentAudioRes, MediaCenter::ePOT_Create);
  mMediaCenter->SaveResInfo(type);
  mMediaCenter->StoreAudioToDisk(type, mCurrentAudioRes);
  mMediaCenter->EndOperProtected(type);

  mState = eState_Idle;
  if (mObserver != 0) mObserver->Notify(event);
  mCurrentAudioRes = INVALID_RES_ID;
  return EMC_Ok;
}

int Microphone::pauseRecord() {
  if (mState != eState_Recording) return EMC_NotRecording;
  const int result = OnPauseRecord();
  if (result != EMC_Ok) return result;
  mState = eState_Paused;
  return EMC_Ok;
}

int Microphone::resumeRecord() {
  if (mState != eState_Paused) return EMC_NotPaused;
  const int result = OnResumeRecord();
  if (result != EMC_Ok) return result;
  mState = eState_Recording;
  return EMC_Ok;
}
