#ifndef SRC_BASE_TIMER_H
#define SRC_BASE_TIMER_H
// A stopwatch on the device's millisecond clock (gKernelSvc).

class Timer {
 public:
  Timer();

  void reset();
  void start();
  void stop();
  // Seconds from start() to stop(), or to now while running; 0 if never started.
  float getElapsedTime();
  // The clock in milliseconds, not seconds, as a float.
  static float getAbsoluteTime();

  bool isStopped() const { return mStopped != 0; }
  unsigned getStartTime() const { return mStartTime; }
  unsigned getStopTime() const { return mStopTime; }

 private:
  int mStopped;
  unsigned mStopTime;
  unsigned mStartTime;
};

#endif
