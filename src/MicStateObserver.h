#ifndef SRC_MICSTATEOBSERVER_H
#define SRC_MICSTATEOBSERVER_H

enum EMicStateEvent {
  kMicEventStopped = 2,     // the program stopped the recording
  kMicEventDeviceLost = 3,  // the microphone went away while recording
};

// Told when a recording ends; a scene that records implements it.
class MicStateObserver {
 public:
  virtual ~MicStateObserver() {}
  virtual void Notify(EMicStateEvent event) = 0;
};

#endif
