#pragma once
// Writes a session down in the script language as it happens: each command as a
// line, preceded by the device time that passed since the line before as a
// "wait". Played back headless at the same frame rate, the script gives the
// title the same events at the same frames. The window's input, a script being
// run and any other source of commands are written the same way.
#include <cstdint>
#include <fstream>
#include <string>

#include "Script.h"

class ScriptWriter {
 public:
  explicit ScriptWriter(int fps) : mFps(fps) {}

  // From now on every line also goes to `path` at once, after `header` (comment
  // lines, each starting with '#'). False, with a message, when it cannot be written.
  bool Open(const std::string& path, const std::string& header, std::string* error);

  // `command` is carried out when `frame` frames have run.
  void Add(uint64_t frame, const ScriptCommand& command);
  // The session ended when `frame` frames had run. False, with a message, when
  // the file could not be written.
  bool Finish(uint64_t frame, std::string* error);

  // Everything written so far, header included.
  const std::string& Text() const { return mText; }

 private:
  void Line(const std::string& line);
  void WaitUntil(uint64_t frame);

  const int mFps;
  uint64_t mFrame = 0;  // where the last line leaves the session
  std::string mText;
  std::string mPath;
  std::ofstream mFile;
};
