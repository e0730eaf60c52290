#include <gtest/gtest.h>

#include "Canvas/ColorBlendTable.h"

namespace {

TEST(ColorBlendTable, HoldsTheFlooredProductOverTwoHundredFiftyFive) {
  for (int i = 0; i < 256; ++i) {
    for (int j = 0; j < 256; ++j) {
      ASSERT_EQ((i * j) / 255, gColorBlendTable[i * 256 + j]) << i << " x " << j;
    }
  }
}

TEST(ColorBlendTable, HandPickedEntries) {
  EXPECT_EQ(255, gColorBlendTable[255 * 256 + 255]);
  EXPECT_EQ(0, gColorBlendTable[0 * 256 + 255]);
  EXPECT_EQ(0, gColorBlendTable[1 * 256 + 254]);    // 254 / 255
  EXPECT_EQ(1, gColorBlendTable[1 * 256 + 255]);    // 255 / 255
  EXPECT_EQ(64, gColorBlendTable[128 * 256 + 128]); // 16384 / 255 = 64.25
  EXPECT_EQ(78, gColorBlendTable[100 * 256 + 200]); // 20000 / 255 = 78.43
  EXPECT_EQ(254, gColorBlendTable[255 * 256 + 254]);
  EXPECT_EQ(127, gColorBlendTable[255 * 256 + 127]);
}

TEST(ColorBlendTable, IsFilledWithoutAnyoneAskingAndRefillsTheSame) {
  // Filled while the program's static objects were built.
  EXPECT_EQ(255, gColorBlendTable[65535]);
  gColorBlendTable[200 * 256 + 100] = 7;
  InitColorBlendTable();
  EXPECT_EQ(78, gColorBlendTable[200 * 256 + 100]);
}

}  // namespace
