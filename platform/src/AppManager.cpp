#include "solva/AppManager.h"

#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstring>

#include "AudioMixer.h"
#include "CAppManager.h"
#include "CLogFile.h"
#include "CSystemData.h"
#include "DeviceReset.h"
#include "LogFolder.h"

namespace {
std::atomic<uint8_t> gPendingExitCode{0};
std::atomic<bool> gPopRequested{false};
std::atomic<bool> gTitleSuspended{false};

void ResetAppManager() {
  gPendingExitCode = 0;
  gPopRequested = false;
  gTitleSuspended = false;  // the mixer forgets its suspension with its own reset
}
solva::detail::ResetHook gAppManagerReset(&ResetAppManager);
}  // namespace

CAppManager* CAppManager::Instance() {
  static CAppManager instance;
  return &instance;
}

void CAppManager::PopApp() { gPopRequested = true; }

U8 CAppManager::GetPendingExitCode() const { return gPendingExitCode; }

CLogFile* CAppManager::GetLogFile() {
  static CLogFile log(solva::detail::kAppManagerLogName);
  return &log;
}

namespace solva {
void SetPendingExitCode(uint8_t code) { gPendingExitCode = code; }
bool PopAppRequested() { return gPopRequested; }
void ClearPopAppRequest() { gPopRequested = false; }

bool EnterTitleFolder(std::string* error) {
  const std::string folder = CSystemData::Instance()->GetCurrentTitlePath().raw();
  if (chdir(folder.c_str()) == 0) return true;
  if (error) *error = "cannot enter the title folder " + folder + ": " + strerror(errno);
  return false;
}

void SetTitleSuspended(bool suspended) {
  gTitleSuspended = suspended;
  detail::MixerSuspendDevice(suspended);
}

bool TitleSuspended() { return gTitleSuspended; }
}  // namespace solva
