#include "FaultInjection.h"

#include <signal.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "DeviceReset.h"
#include "SolvaFileOps.h"
#include "solva/FaultInjection.h"

namespace solva {
namespace {

// Capture writes from its own thread, hence atomics.
std::atomic<int> gCutAfter{0};
std::atomic<int> gDone{0};
std::atomic<bool> gSync{true};

int FromEnvironment() {
  const char* text = getenv("SOLVA_POWER_CUT_AFTER");
  if (text == nullptr || *text == 0) return 0;
  char* end = nullptr;
  const long value = strtol(text, &end, 10);
  if (*end != 0 || value <= 0 || value > 1000000000L) {
    fprintf(stderr, "solva: SOLVA_POWER_CUT_AFTER=%s is not a positive count; no power cut armed\n", text);
    return 0;
  }
  return int(value);
}

void ResetFaults() {
  gCutAfter = FromEnvironment();
  gDone = 0;
  gSync = true;
}

// Armed at load time, so that a title run by the simulator is cut as well.
struct ArmFromEnvironment {
  ArmFromEnvironment() { gCutAfter = FromEnvironment(); }
} gArmFromEnvironment;

detail::ResetHook gFaultReset(&ResetFaults);

[[noreturn]] void PowerCut(int done) {
  // Unbuffered, so that nothing the process still holds reaches the disk.
  char line[96];
  const int length = snprintf(line, sizeof line, "solva: power cut after file operation %d\n", done);
  if (length > 0) (void)!write(STDERR_FILENO, line, size_t(length));
  kill(getpid(), SIGKILL);
  _exit(137);  // not reached; SIGKILL cannot be caught
}

}  // namespace

namespace detail {

void FileOperationDone() {
  const int done = ++gDone;
  const int cut = gCutAfter.load();
  if (cut > 0 && done == cut) PowerCut(done);
}

}  // namespace detail

void SetPowerCutAfter(int operations) {
  gDone = 0;
  gCutAfter = operations > 0 ? operations : 0;
}

int PowerCutAfter() { return gCutAfter; }
int FileOperationCount() { return gDone; }
void SetSyncWrites(bool sync) { gSync = sync; }
bool SyncWrites() { return gSync; }

}  // namespace solva

int solvaRename(const char* from, const char* to) {
  const int result = rename(from, to);
  const int saved = errno;
  solva::detail::FileOperationDone();
  errno = saved;
  return result;
}

int solvaRemove(const char* path) {
  const int result = remove(path);
  const int saved = errno;
  solva::detail::FileOperationDone();
  errno = saved;
  return result;
}

void solvaFileWritten() { solva::detail::FileOperationDone(); }
