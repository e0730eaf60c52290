#pragma once
// The simulator's window as a person meets it: the mouse is the touch screen, keys
// are the device's buttons, and a few keys play the outside world (turning the
// device, the microphone, suspend, a screenshot).
#include <cstdint>
#include <string>

class WindowInput {
 public:
  // What the person asked of the simulator itself in one poll.
  struct Actions {
    bool quit = false;
    bool toggleSuspend = false;
    bool screenshot = false;
  };

  // Takes every waiting window event: device events are queued on the device,
  // the rest is returned in `actions`.
  void Poll(Actions* actions);

  // The keys, for the help text.
  static const char* KeyHelp();

 private:
  uint32_t mButtons = 0;
  bool mTouching = false;
  bool mMicPresent = true;
  int mOrientation = 0;
};
