#pragma once
// The simulator's script language: one command a line, '#' starts a comment.
// A script is parsed whole before it runs, so a mistake anywhere stops the run
// before the title starts.
#include <cstdint>
#include <string>
#include <vector>

struct ScriptCommand {
  enum Kind {
    Wait,        // seconds
    Frames,      // count
    Down,        // x y
    Move,        // x y
    Up,          // x y: where the finger left (0 0 when not given)
    Tap,         // x y
    Press,       // button index
    Release,     // button index
    Click,       // button index
    Rotate,      // orientation
    MicUnplug,
    MicPlug,
    PowerLow,
    PowerOk,
    Suspend,
    Resume,      // seconds away
    FreeBytes,   // bytes
    Screenshot,  // file
    Exit,        // pending-exit code
    Mod,         // player, folder: give the player a downloaded folder
  };

  int line = 0;
  Kind kind = Frames;
  double seconds = 0;
  int64_t number = 0;
  int x = 0;
  int y = 0;
  std::string text;
};

class Script {
 public:
  // The command as a line of the language (without the line end); Parse gives
  // the same command back.
  static std::string Format(const ScriptCommand& command);
  // How many frames the command runs by itself at `fps` (wait, frames, tap, click).
  static int64_t FramesOf(const ScriptCommand& command, int fps);

  // Parses `text`; on a mistake, false and "NAME:LINE: what is wrong" in `error`.
  bool Parse(const std::string& text, const std::string& name, std::string* error);
  bool Load(const std::string& path, std::string* error);

  const std::vector<ScriptCommand>& Commands() const { return mCommands; }

  // The mask bit of a button index, 0 for an index with no key on the device.
  static uint32_t ButtonMask(int index);
  // A button by index ("5") or name ("back"); -1 if unknown.
  static int ButtonIndex(const std::string& word);
  // The name of a button index, or its number when it has none.
  static std::string ButtonName(int index);

 private:
  std::vector<ScriptCommand> mCommands;
};
