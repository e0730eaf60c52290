#include <gtest/gtest.h>

#include "Base/Timer.h"
#include "Tamarin/SolvaServices.h"
#include "support/TestSupport.h"

namespace {

using zvtest::VirtualClock;

TEST(Timer, StartsStoppedAtZero) {
  Timer timer;
  EXPECT_TRUE(timer.isStopped());
  EXPECT_EQ(0u, timer.getStartTime());
  EXPECT_EQ(0u, timer.getStopTime());
}

TEST(Timer, NeverStartedYieldsZero) {
  VirtualClock clock(5000);
  Timer timer;
  EXPECT_EQ(0.0f, timer.getElapsedTime());
}

TEST(Timer, StartTakesOneReadingForBothTimes) {
  VirtualClock clock(1234);
  Timer timer;
  timer.start();
  EXPECT_FALSE(timer.isStopped());
  EXPECT_EQ(1234u, timer.getStartTime());
  EXPECT_EQ(1234u, timer.getStopTime());
}

TEST(Timer, RunningTimerFollowsTheVirtualClock) {
  VirtualClock clock(100);
  Timer timer;
  timer.start();
  clock.advance(1500);
  EXPECT_FLOAT_EQ(1.5f, timer.getElapsedTime());
  clock.advance(250);
  EXPECT_FLOAT_EQ(1.75f, timer.getElapsedTime());
}

TEST(Timer, ElapsedTimeStaysTheSameAfterStop) {
  VirtualClock clock;
  Timer timer;
  timer.start();
  clock.advance(2000);
  timer.stop();
  EXPECT_FLOAT_EQ(2.0f, timer.getElapsedTime());
  clock.advance(5000);
  EXPECT_FLOAT_EQ(2.0f, timer.getElapsedTime());
  EXPECT_FLOAT_EQ(2.0f, timer.getElapsedTime());
}

TEST(Timer, StopOnAStoppedTimerLeavesStopTimeUnchanged) {
  VirtualClock clock;
  Timer timer;
  timer.start();
  clock.advance(300);
  timer.stop();
  EXPECT_EQ(300u, timer.getStopTime());
  clock.advance(700);
  timer.stop();
  EXPECT_EQ(300u, timer.getStopTime());
}

TEST(Timer, ResetReturnsToTheInitialState) {
  VirtualClock clock(10);
  Timer timer;
  timer.start();
  clock.advance(10);
  timer.reset();
  EXPECT_TRUE(timer.isStopped());
  EXPECT_EQ(0u, timer.getStartTime());
  EXPECT_EQ(0.0f, timer.getElapsedTime());
}

TEST(Timer, ElapsedIsTheUnsignedDifferenceAcrossTheClockWrap) {
  VirtualClock clock(0xFFFFFFFFull - 499);  // 500 ms before the 32-bit clock wraps
  Timer timer;
  timer.start();
  clock.advance(1000);
  EXPECT_FLOAT_EQ(1.0f, timer.getElapsedTime());
}

TEST(Timer, AbsoluteTimeIsInMillisecondsNotSeconds) {
  VirtualClock clock(4321);
  EXPECT_FLOAT_EQ(4321.0f, Timer::getAbsoluteTime());
}

TEST(TimerDeathTest, ReadingTheClockWithoutKernelServiceFailsTheAssertion) {
  ASSERT_EQ(nullptr, gKernelSvc);
  const zvtest::ChildResult result = zvtest::RunInChild([] {
    Timer timer;
    timer.start();
  });
  EXPECT_TRUE(result.died());
  EXPECT_EQ("Assertion failed: gKernelSvc\n", result.out);
}

}  // namespace
