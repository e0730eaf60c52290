#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "CKernelSvc.h"
#include "solva/Clock.h"

namespace {

using Vantrel::Solva::CKernelSvc;

class ClockTest : public testing::Test {
 protected:
  void TearDown() override { solva::SetClockMode(solva::ClockMode::Real); }
};

TEST_F(ClockTest, VirtualClockStandsStillUntilAdvanced) {
  solva::SetClockMode(solva::ClockMode::Virtual, 2500000);
  CKernelSvc kernel;
  EXPECT_EQ(2500u, kernel.GetElapsedTimeAsMSecs());
  std::this_thread::sleep_for(std::chrono::milliseconds(5));
  EXPECT_EQ(2500u, kernel.GetElapsedTimeAsMSecs());
  EXPECT_TRUE(solva::AdvanceClock(40));
  EXPECT_EQ(2540u, kernel.GetElapsedTimeAsMSecs());
}

TEST_F(ClockTest, MicrosecondStepsAddUpToWholeMilliseconds) {
  solva::SetClockMode(solva::ClockMode::Virtual);
  CKernelSvc kernel;
  // Three frames at 30 per second: 33.333 ms each, 100 ms together.
  for (int i = 0; i < 3; ++i) solva::AdvanceClockMicros(33333);
  EXPECT_EQ(99u, kernel.GetElapsedTimeAsMSecs());
  solva::AdvanceClockMicros(1);
  EXPECT_EQ(100u, kernel.GetElapsedTimeAsMSecs());
}

TEST_F(ClockTest, RealClockRunsAndCannotBeAdvanced) {
  solva::SetClockMode(solva::ClockMode::Real, 1000000);
  CKernelSvc kernel;
  const unsigned first = kernel.GetElapsedTimeAsMSecs();
  EXPECT_GE(first, 1000u);
  EXPECT_FALSE(solva::AdvanceClock(100000));
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  const unsigned second = kernel.GetElapsedTimeAsMSecs();
  EXPECT_GE(second - first, 20u);
  EXPECT_LT(second - first, 100000u);
}

TEST_F(ClockTest, MillisecondClockWrapsAt32Bits) {
  solva::SetClockMode(solva::ClockMode::Virtual, (0xFFFFFFFFull) * 1000u);
  CKernelSvc kernel;
  EXPECT_EQ(0xFFFFFFFFu, kernel.GetElapsedTimeAsMSecs());
  solva::AdvanceClock(1);
  EXPECT_EQ(0u, kernel.GetElapsedTimeAsMSecs());
}

}  // namespace
