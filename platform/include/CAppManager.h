#pragma once
// The device's application manager, as a running title sees it.
#include "PlatformTypes.h"

class CAppManager {
 public:
  static CAppManager* Instance();

  // Asks the manager to end the running title; it comes back with Exit().
  void PopApp();
  // Why the manager ends the title, when it ends it itself (0 when it does not).
  U8 GetPendingExitCode() const;

 private:
  CAppManager() = default;
};
