#include "Base/Timer.h"

#include "Base/XAssert.h"
#include "CKernelSvc.h"
#include "Tamarin/SolvaServices.h"

namespace {
unsigned ClockNow() {
  XASSERT(gKernelSvc);
  return gKernelSvc->GetElapsedTimeAsMSecs();
}
}  // namespace

Timer::Timer() { reset(); }

void Timer::reset() {
  mStopped = 1;
  mStopTime = 0;
  mStartTime = 0;
}

void Timer::start() {
  mStopped = 0;
  mStopTime = mStartTime = ClockNow();
}

void Timer::stop() {
  if (mStopped) return;
  mStopped = 1;
  mStopTime = ClockNow();
}

float Timer::getElapsedTime() {
  const unsigned t = mStopped ? mStopTime : ClockNow();
  return static_cast<float>(t - mStartTime) / 1000.0f;
}

float Timer::getAbsoluteTime() { return static_cast<float>(ClockNow()); }
