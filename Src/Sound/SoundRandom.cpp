#include "Sound/SoundRandom.h"

namespace {
unsigned int s_RandomSeed = 0;
}

unsigned int gAdvanceRandomSeed() {
  s_RandomSeed = s_RandomSeed * 214013u + 2531011u;
  return s_RandomSeed;
}

void gSetRandomSeed(unsigned int seed) { s_RandomSeed = seed; }
