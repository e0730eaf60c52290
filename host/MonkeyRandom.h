#pragma once
// The monkey's own random numbers: SplitMix64, a fixed and published algorithm
// done in 64-bit integer arithmetic only, so that a seed gives the same numbers
// on every machine and with every compiler (the standard library's
// distributions do not promise that).
//
//   state += 0x9E3779B97F4A7C15
//   z = state
//   z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9
//   z = (z ^ (z >> 27)) * 0x94D049BB133111EB
//   next = z ^ (z >> 31)
//
// A number below n is drawn by rejection: draws at or above the largest multiple
// of n that fits in 64 bits are thrown away, and the rest taken modulo n, so
// every value is equally likely.
#include <cstdint>

class MonkeyRandom {
 public:
  explicit MonkeyRandom(uint64_t seed) : mState(seed) {}

  uint64_t Next() {
    uint64_t z = (mState += 0x9E3779B97F4A7C15u);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
    return z ^ (z >> 31);
  }

  // 0 <= result < n; n must be at least 1.
  uint64_t Below(uint64_t n) {
    const uint64_t limit = UINT64_MAX - UINT64_MAX % n;
    uint64_t draw = Next();
    while (draw >= limit) draw = Next();
    return draw % n;
  }

  // low <= result <= high.
  int64_t Between(int64_t low, int64_t high) { return low + int64_t(Below(uint64_t(high - low) + 1)); }

  // True `per` times in `outOf`.
  bool Chance(uint64_t per, uint64_t outOf) { return Below(outOf) < per; }

 private:
  uint64_t mState;
};
