#ifndef SRC_MICROPHONE_H
#define SRC_MICROPHONE_H
// One recording at a time: asks the media store for a resource, and on stop hands
// the finished file to the store under a protected operation. The platform's side
// (the capture itself) is ZvMicrophone's.
#include <string>

#include "MicStateObserver.h"

class MediaCenter;

// Results of the record operations; 0 is success.
enum EMicErrorCode {
  EMC_Ok = 0,
  EMC_NoSpace = 1,
  EMC_CaptureFailed = 3,
  EMC_InvalidDevice = 4,
  EMC_NotRecording = 5,
  EMC_NotPaused = 6,
};

class Microphone {
 public:
  // Values of mState.
  enum EState {
    eState_Idle = 0,
    eState_Recording = 1,
    eState_Paused = 2,
  };

  Microphone();
  virtual ~Microphone();

  virtual int OpenMic();
  virtual int CloseMic();
  virtual int IsValid() = 0;
  virtual int IsMicrophonePresent() = 0;
  virtual int OnStartRecord(int resId) = 0;
  virtual int OnStopRecord(int resId) = 0;
  virtual int OnPauseRecord() = 0;
  virtual int OnResumeRecord() = 0;

  // `reserved` is not read. A folder or a name (never both) sends the clip out
  // of the gallery's music folder.
  int StartRecord(float reserved, int* outResId, MicStateObserver* observer, const std::string& folder,
                  const std::string& name);
  // Records again into an existing resource.
  int StartRecordByResID(float reserved, int resId, MicStateObserver* observer);
  int StopRecord(EMicStateEvent event);
  int pauseRecord();
  int resumeRecord();

  int GetState() const { return mState; }
  int GetCurrentAudioRes() const { return mCurrentAudioRes; }

 protected:
  int mState;
  MicStateObserver* mObserver;
  MediaCenter* mMediaCenter;
  int mCurrentAudioRes;
  std::string mDestFolder;
  std::string mDestName;
};

#endif
