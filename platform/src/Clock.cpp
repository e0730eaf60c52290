#include <atomic>
#include <chrono>

#include "CKernelSvc.h"
#include "solva/Clock.h"

namespace solva {
namespace {

using SteadyClock = std::chrono::steady_clock;

// Read from capture and audio threads as well as the frame thread, hence atomics.
std::atomic<ClockMode> gMode{ClockMode::Real};
std::atomic<uint64_t> gVirtualMicros{0};
std::atomic<int64_t> gRealOriginMicros{
    std::chrono::duration_cast<std::chrono::microseconds>(SteadyClock::now().time_since_epoch()).count()};

int64_t SteadyMicros() {
  return std::chrono::duration_cast<std::chrono::microseconds>(SteadyClock::now().time_since_epoch()).count();
}

}  // namespace

void SetClockMode(ClockMode mode, uint64_t startMicros) {
  gVirtualMicros = startMicros;
  gRealOriginMicros = SteadyMicros() - int64_t(startMicros);
  gMode = mode;
}

ClockMode GetClockMode() { return gMode; }

uint64_t ClockMicros() {
  if (gMode == ClockMode::Virtual) return gVirtualMicros;
  return uint64_t(SteadyMicros() - gRealOriginMicros);
}

bool AdvanceClockMicros(uint64_t micros) {
  if (gMode != ClockMode::Virtual) return false;
  gVirtualMicros += micros;
  return true;
}

}  // namespace solva

namespace Vantrel {
namespace Solva {

CKernelSvc::CKernelSvc() = default;
CKernelSvc::~CKernelSvc() = default;

unsigned int CKernelSvc::GetElapsedTimeAsMSecs() const {
  return static_cast<unsigned int>(solva::ClockMicros() / 1000u);
}

}  // namespace Solva
}  // namespace Vantrel
