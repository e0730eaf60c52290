#include "Canvas/ColorBlendTable.h"

unsigned char gColorBlendTable[65536];

void InitColorBlendTable() {
  for (int i = 0; i < 256; ++i) {
    unsigned sum = 0;
    for (int j = 0; j < 256; ++j) {
      gColorBlendTable[i * 256 + j] = static_cast<unsigned char>(sum / 255);
      sum += i;
    }
  }
}

namespace {
// Filled before any layer can exist.
struct FillAtStart {
  FillAtStart() { InitColorBlendTable(); }
} sFillAtStart;
}  // namespace
