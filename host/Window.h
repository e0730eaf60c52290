#pragma once
// The simulator's window as a person meets it: the mouse is the touch screen, keys
// are the device's buttons, and a few keys play the outside world (turning the
// device, the microphone, the battery, suspend, a screenshot). What the person
// does to the device comes back as commands of the script language, so that the
// simulator carries them out, and records them, as it does a script's.
#include <cstdint>
#include <string>
#include <vector>

#include "DevicePanel.h"
#include "Script.h"

class WindowInput {
 public:
  // The outside world as it stands, for the keys that toggle it.
  struct World {
    bool micPresent = true;
    int orientation = 0;
    bool powerLow = false;
    bool suspended = false;
  };

  // What the person asked of the simulator itself.
  struct Actions {
    bool quit = false;
    bool toggleSuspend = false;
    bool screenshot = false;
  };

  // Takes every waiting window event. While the title is suspended the device
  // takes no input: only resuming, a screenshot and closing the window work. A
  // click on a toggle of the panel does what its key does.
  void Poll(const World& world, std::vector<ScriptCommand>* commands, Actions* actions);

  // The panel beside the device; false, with a message, when it cannot be drawn
  // (the window works without it).
  bool OpenPanel(std::string* error);
  bool ShowPanel(const DevicePanel::State& state) { return mPanel.Show(state); }

  // The keys, for the help text.
  static const char* KeyHelp();

 private:
  // What a toggle's key or click asks for, given the world as this poll leaves it.
  void Toggle(DevicePanel::Action action, World* world, std::vector<ScriptCommand>* commands, Actions* actions);

  uint32_t mButtons = 0;
  bool mTouching = false;
  DevicePanel mPanel;
};
