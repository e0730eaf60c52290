#pragma once
// Device-control API: the application manager's state.
#include <cstdint>
#include <string>

namespace solva {

// The code the manager gives when it ends the title itself.
void SetPendingExitCode(uint8_t code);
// Whether the title asked to be ended (CAppManager::PopApp), and forgetting it.
bool PopAppRequested();
void ClearPopAppRequest();

// The device's manager runs a title from the title's own folder: this makes the
// folder given to SetTitlePath the working directory, as the manager does before
// it enters the title. False, with `error`, when the folder cannot be entered.
bool EnterTitleFolder(std::string* error = nullptr);

// The manager suspends the running title or resumes it (the title's own Suspend
// and Resume are the caller's to call). While it is suspended the device pauses
// the title's sound output: each sound fades out and stands still, whatever the
// title had paused, and on resume goes on where it stood.
void SetTitleSuspended(bool suspended);
bool TitleSuspended();

}  // namespace solva
