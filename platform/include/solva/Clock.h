#pragma once
// Device-control API: the device clock. Only the host and tests use this header.
#include <cstdint>

namespace solva {

enum class ClockMode {
  Real,     // follows the host's steady clock
  Virtual,  // stands still until AdvanceClock moves it
};

// From now on the clock reads `startMicros` and runs in `mode`.
void SetClockMode(ClockMode mode, uint64_t startMicros = 0);
ClockMode GetClockMode();

// The device time in microseconds; CKernelSvc reports it in whole milliseconds.
uint64_t ClockMicros();

// Moves the virtual clock forward; ignored (and returns false) in real mode.
bool AdvanceClockMicros(uint64_t micros);
inline bool AdvanceClock(uint32_t millis) { return AdvanceClockMicros(uint64_t(millis) * 1000u); }

}  // namespace solva
