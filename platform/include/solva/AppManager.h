#pragma once
// Device-control API: the application manager's state.
#include <cstdint>

namespace solva {

// The code the manager gives when it ends the title itself.
void SetPendingExitCode(uint8_t code);
// Whether the title asked to be ended (CAppManager::PopApp), and forgetting it.
bool PopAppRequested();
void ClearPopAppRequest();

}  // namespace solva
