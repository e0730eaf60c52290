#include "solva/AppManager.h"

#include <atomic>

#include "CAppManager.h"
#include "CLogFile.h"
#include "DeviceReset.h"
#include "LogFolder.h"

namespace {
std::atomic<uint8_t> gPendingExitCode{0};
std::atomic<bool> gPopRequested{false};

void ResetAppManager() {
  gPendingExitCode = 0;
  gPopRequested = false;
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
}  // namespace solva
