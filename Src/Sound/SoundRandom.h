#ifndef SRC_SOUND_SOUNDRANDOM_H
#define SRC_SOUND_SOUNDRANDOM_H
// The sound system's one random sequence. The seed starts at 0, so a run draws
// the same sequence every time.

// Advances the shared seed (seed * 214013 + 2531011, 32-bit) and returns it.
unsigned int gAdvanceRandomSeed();
// Puts the seed to `seed`; for tests, which need a known start.
void gSetRandomSeed(unsigned int seed);

// A number from `from` towards `to`, drawn in single precision from the high
// half of the advanced seed, and cut to T.
template <class T>
T gRandom(T from, T to) {
  const unsigned int seed = gAdvanceRandomSeed();
  return (T)((float)from + (float)(seed >> 16) * (1.0f / 65536.0f) * (float)(to - from));
}

#endif
