#include "MonkeyRandom.h"

#include <gtest/gtest.h>

#include <set>

namespace {

TEST(MonkeyRandom, ASeedGivesSplitMix64sPublishedSequence) {
  // The reference values of the algorithm for the seed 1234567.
  MonkeyRandom random(1234567);
  EXPECT_EQ(6457827717110365317u, random.Next());
  EXPECT_EQ(3203168211198807973u, random.Next());
  EXPECT_EQ(9817491932198370423u, random.Next());
  EXPECT_EQ(4593380528125082431u, random.Next());
  EXPECT_EQ(16408922859458223821u, random.Next());
}

TEST(MonkeyRandom, BelowStaysBelowAndReachesEveryValue) {
  MonkeyRandom random(7);
  std::set<uint64_t> seen;
  for (int i = 0; i < 1000; ++i) {
    const uint64_t value = random.Below(10);
    ASSERT_LT(value, 10u);
    seen.insert(value);
  }
  EXPECT_EQ(10u, seen.size());
  for (int i = 0; i < 100; ++i) EXPECT_EQ(0u, random.Below(1));
}

TEST(MonkeyRandom, BelowThrowsAwayTheDrawsThatWouldFavourSomeValues) {
  // Below 2^63 + 1 only draws under that bound are fair (a remainder of the others
  // would make the low half twice as likely): they are taken as they are, the
  // others thrown away.
  const uint64_t n = (uint64_t(1) << 63) + 1;
  MonkeyRandom raw(99), random(99);
  for (int i = 0; i < 20; ++i) {
    uint64_t draw = raw.Next();
    while (draw >= n) draw = raw.Next();
    EXPECT_EQ(draw, random.Below(n));
  }
}

TEST(MonkeyRandom, BetweenIncludesBothEnds) {
  MonkeyRandom random(3);
  std::set<int64_t> seen;
  for (int i = 0; i < 500; ++i) {
    const int64_t value = random.Between(-2, 2);
    ASSERT_GE(value, -2);
    ASSERT_LE(value, 2);
    seen.insert(value);
  }
  EXPECT_EQ(5u, seen.size());
}

TEST(MonkeyRandom, ChanceComesAsOftenAsItSays) {
  MonkeyRandom random(11);
  int hits = 0;
  for (int i = 0; i < 30000; ++i) hits += random.Chance(1, 3) ? 1 : 0;
  EXPECT_NEAR(10000, hits, 400);
}

}  // namespace
