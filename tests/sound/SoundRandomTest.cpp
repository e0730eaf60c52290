#include <gtest/gtest.h>

#include "Sound/SoundRandom.h"

namespace {

TEST(SoundRandom, SeedAdvancesByTheLinearCongruence) {
  gSetRandomSeed(0);
  EXPECT_EQ(2531011u, gAdvanceRandomSeed());
  EXPECT_EQ(uint32_t(2531011u * 214013u + 2531011u), gAdvanceRandomSeed());
}

TEST(SoundRandom, DrawUsesTheHighHalfOfTheSeedInSinglePrecision) {
  gSetRandomSeed(0);
  uint32_t seed = 0;
  for (int i = 0; i < 1000; ++i) {
    seed = seed * 214013u + 2531011u;
    const float expected = 10.0f + float(seed >> 16) / 65536.0f * 90.0f;
    ASSERT_EQ(int(expected), gRandom<int>(10, 100)) << i;
  }
}

TEST(SoundRandom, DrawsStayInTheirRange) {
  gSetRandomSeed(12345);
  for (int i = 0; i < 10000; ++i) {
    const int v = gRandom<int>(0, 2);
    ASSERT_TRUE(v == 0 || v == 1) << v;
  }
}

TEST(SoundRandom, SameSeedSameSequence) {
  gSetRandomSeed(7);
  std::vector<int> first;
  for (int i = 0; i < 20; ++i) first.push_back(gRandom<int>(0, 1000));
  gSetRandomSeed(7);
  for (int i = 0; i < 20; ++i) EXPECT_EQ(first[i], gRandom<int>(0, 1000));
}

}  // namespace
