#pragma once
// The device's application manager, as a running title sees it.
#include "PlatformTypes.h"

class CLogFile;

class CAppManager {
 public:
  static CAppManager* Instance();

  // Asks the manager to end the running title; it comes back with Exit().
  void PopApp();
  // Why the manager ends the title, when it ends it itself (0 when it does not).
  U8 GetPendingExitCode() const;
  // The manager's own log, which also takes the records a title reports about
  // its levels, tutorials, hints and questions.
  CLogFile* GetLogFile();

 private:
  CAppManager() = default;
};
